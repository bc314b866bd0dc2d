"""Tests pages in a headless browser.

  page_test.py BUILD_DIR FLATC SCHEMA

BUILD_DIR has the programs, the sample logs and the logs of the test cases.
"""

import base64
import csv
import io
import json
import os
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.support.ui import WebDriverWait

BUILD, FLATC, SCHEMA = (os.path.realpath(path) for path in sys.argv[1:4])


def run(program, *args):
    return subprocess.run([f"{BUILD}/{program}", *args], check=True,
                          capture_output=True).stdout.decode(errors="replace")


def to_float(text):
    """Returns a figure of the comparison in single precision."""
    return struct.unpack("f", struct.pack("f", float(text)))[0]


def escape(name):
    """Returns a name as it is escaped in messages and on pages."""
    special = {"\\": "\\\\", "\n": "\\n", "\t": "\\t"}
    return "".join(special.get(c, f"\\x{ord(c):02x}" if c < " " or c == "\x7f" else c)
                   for c in name)


class PageTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.work = tempfile.mkdtemp()
        os.chdir(cls.work)
        for name in ("basic", "detailed", "tuned"):
            shutil.copy(f"{BUILD}/samples/{name}.bin", ".")
        # Names of files may contain markup, too.
        cls.hostile = ["<img src=x onerror=window.hacked=1>.bin", "\"'&amp;.bin"]
        for side, name in zip(("before", "after"), cls.hostile):
            shutil.copy(f"{BUILD}/tests/logs/page_two_logs/{side}.bin", name)
        shutil.copy(f"{BUILD}/tests/logs/page_one_log/log.bin", "texts.bin")
        shutil.copy(f"{BUILD}/tests/logs/shares_of_a_zero_total/log.bin", "zero.bin")
        cls.make_large_log()
        options = webdriver.ChromeOptions()
        for word in ("headless", "no-sandbox", "disable-gpu", "disable-quic",
                     "no-first-run", "disable-background-networking",
                     "disable-component-update", "disable-sync",
                     "window-size=1200,1000", f"user-data-dir={cls.work}/browser"):
            options.add_argument("--" + word)
        options.set_capability("goog:loggingPrefs",
                               {"browser": "ALL", "performance": "ALL"})
        cls.browser = webdriver.Chrome(service=Service("/usr/bin/chromedriver"),
                                       options=options)
        cls.js = cls.browser.execute_script
        cls.browser.get("about:blank")
        cls.browser.get_log("performance")  # drop the entries of about:blank

    @classmethod
    def tearDownClass(cls):
        cls.browser.quit()
        shutil.rmtree(cls.work, ignore_errors=True)

    @classmethod
    def make_large_log(cls):
        """Writes a log with 1,500 runs, 300 operations and 1,001 details of one."""
        def message(n):
            nodes = [{"name": f"node_id_{i}:Op", "type": 404, "unit": 3, "value": 5 * i,
                      "sub_events": [{}] * (1001 if n == 1 and i == 299 else 0)}
                     for i in range(300 if n < 2 else 1)]
            time = {700: 9999, 701: 1}.get(n, 500)
            return {"events": [{"name": "Net (execute)", "unit": 1, "value": time},
                               {"name": "Cycles", "sub_events": nodes}]}
        with open("large.json", "w") as file:
            json.dump({"messages": [message(n) for n in range(1500)]}, file)
        subprocess.run([FLATC, "-b", SCHEMA, "large.json"], check=True)

    def setUp(self):
        self.cdp("Emulation.setEmulatedMedia", media="", features=[])
        self.cdp("Emulation.clearDeviceMetricsOverride")

    def tearDown(self):
        """Checks that only the page was requested and that the console is empty."""
        for entry in self.browser.get_log("performance"):
            event = json.loads(entry["message"])["message"]
            if event["method"] == "Network.requestWillBeSent":
                url = event["params"]["request"]["url"]
                self.assertRegex(url, r"^(file:///.*/page\.html|data:,)$")
        self.assertEqual(self.browser.get_log("browser"), [])
        self.assertIsNone(self.js("return window.hacked"))

    def cdp(self, command, **arguments):
        return self.browser.execute_cdp_cmd(command, arguments)

    def open(self, *logs):
        run("lumo-profile-page", "--output", "page.html", *logs)
        self.load("page.html")

    def load(self, name):
        self.browser.get("about:blank")
        self.browser.get(f"file://{self.work}/{name}")
        WebDriverWait(self.browser, 20).until(lambda _: self.js(
            "return location.href.endsWith(arguments[0])"
            " && document.readyState === 'complete'", name))

    def all(self, selector):
        return self.browser.find_elements(By.CSS_SELECTOR, selector)

    def tables(self):
        """Returns the texts of the visible tables by cell, without bars and details."""
        return self.js("""
            return [...document.querySelectorAll("table.series")]
                .filter((table) => table.offsetHeight > 0).map((table) =>
                [...table.tBodies[0].rows].filter((row) => row.dataset.series)
                .map((row) => [...row.cells]
                .filter((cell) => cell.className !== "bars")
                .map((cell) => cell.innerText)));""")

    def graphs(self):
        """Chooses each graph in turn and yields its tables."""
        for option in self.all("#graph option"):
            self.choose_graph(option.get_attribute("value"))
            yield option.get_attribute("value"), self.tables()

    def choose_graph(self, graph):
        self.js("const choice = document.getElementById('graph');"
                "choice.value = arguments[0];"
                "choice.dispatchEvent(new Event('change'))", graph)

    def expected(self, logs):
        """Yields the expected tables: the comparison, with the shares of the report."""
        rows = csv.DictReader(io.StringIO(
            run("lumo-profile-compare", "--csv", logs[0], logs[-1]), newline=""))
        shares = []
        for log in logs:
            text = run("lumo-profile-viewer", "--input_profile_data", log)
            text = text[text.find("Per-op Avg"):].split("---------Top")[0]
            shares.append(re.findall(r"^ +([0-9.]+%) \| (.*): \S+ \S+$", text, re.M))
        tables = {}
        for row in rows:
            key = (row["graph"], row["kind"] == "finalize", row["level"] == "event")
            tables.setdefault(key, []).append(row)
        for key, table in sorted(tables.items()):
            has_units = len({row["unit"] for row in table}) > 1
            if len(logs) == 1 and not key[2]:
                table.sort(key=lambda row: -float(row["mean_before"]))
            yield key[0], [self.expected_row(row, logs, shares, has_units)
                           for row in table]

    def expected_row(self, row, logs, shares, has_units):
        name = row["name"]
        cells = [escape(name)]
        if row["level"] == "operation":
            node = re.match(r"node_id_(\d+)", name)
            cells.insert(0, node[1] if node else "")
        for side, share in list(zip(("before", "after"), shares)):
            cells += [f"{to_float(text):.2f}" if text else ""
                      for text in (row["mean_" + side], row["stdev_" + side])]
            if row["level"] == "operation":
                found = [percent for percent, op in share if op == name]
                nth = int(row["occurrence"])
                cells.append(found[nth] if nth < len(found) else "")
        if has_units:
            cells.append(row["unit"])
        if len(logs) == 2:
            # Not from "change_percent", which is rounded to six digits.
            change = row["change_percent"] and 100 * (
                to_float(row["mean_after"]) / to_float(row["mean_before"]) - 1)
            sign = {"higher": "▲ ", "lower": "▼ "}.get(row["verdict"], "")
            cells += [f"{change:+.2f}%" if change != "" else "",
                      sign + row["verdict"].replace("_", " ")]
        return cells

    def test_figures_equal_the_report_and_the_comparison(self):
        for logs in (["basic.bin"], ["detailed.bin"], ["zero.bin"],
                     ["tuned.bin", "detailed.bin"], ["tuned.bin", "basic.bin"],
                     self.hostile):
            with self.subTest(logs=logs):
                self.open(*logs)
                got = [(graph, table) for graph, tables in self.graphs()
                       for table in tables]
                self.assertEqual(got, list(self.expected(logs)))
                self.assertEqual(self.browser.title, " → ".join(logs))
                self.assertEqual(self.all("h1")[0].text, " → ".join(logs))
                self.assertEqual(self.all("#graph-choice")[0].is_displayed(),
                                 len({graph for graph, _ in got}) > 1)
                for row in self.all("tr[data-series]"):
                    self.js("arguments[0].click()", row)
                    name = row.find_element(By.TAG_NAME, "th")
                    self.assertTrue(self.js(
                        "return document.getElementById('chart-title').textContent"
                        ".startsWith(arguments[0].textContent + ', ')", name))
                self.assertEqual(self.all("main :is(script, img, a)"), [])
                bars = [float(bar.get_attribute("width")) for bar in self.all("rect")]
                self.assertEqual(max(bars, default=100), 100)

    def test_columns_sort_both_ways(self):
        for logs in (["detailed.bin"], ["tuned.bin", "basic.bin"], ["texts.bin"],
                     self.hostile):
            self.open(*logs)
            graph = 1 if logs == ["texts.bin"] else 0
            self.choose_graph(graph)
            for column, heading in enumerate(self.all(
                    f"[data-graph='{graph}'] [data-level=operation] th[data-key]")):
                is_number = heading.get_attribute("class") == "number"
                button = heading.find_element(By.TAG_NAME, "button")
                seen = []
                for _ in range(2):
                    button.send_keys(Keys.ENTER)
                    seen.append(heading.get_attribute("aria-sort"))
                    texts = [row[column] for row in self.tables()[0]]
                    values = [float(text.rstrip("%")) if is_number else
                              [int(part) if part.isdigit() else part.lower()
                               for part in re.split(r"(\d+)", text.lstrip("▲▼ "))]
                              for text in texts if text]
                    with self.subTest(logs=logs, column=column, order=seen[-1]):
                        self.assertEqual(texts[len(values):], [""] * texts.count(""))
                        self.assertEqual(values, sorted(
                            values, reverse=seen[-1] == "descending"))
                self.assertEqual(seen, ["descending", "ascending"] if is_number
                                 else ["ascending", "descending"])
                self.assertEqual(len(self.all(
                    "section:not([hidden]) table[data-level=operation] [aria-sort]")), 1)

    def test_filter_and_large_logs(self):
        self.open("detailed.bin", "tuned.bin")
        rows = self.tables()[0]
        self.all("tr[data-series] button")[0].click()
        field = self.all("#filter")[0]
        field.send_keys("DEPTH")
        found = [row for row in rows if "Depth" in row[1]]
        self.assertEqual(self.tables()[0], found)
        self.assertEqual(self.all(".count")[0].text, f"{len(found)} of {len(rows)}")
        self.all("tr[data-series] button")[1].click()
        field.send_keys("wise")
        self.assertEqual(self.all(".count")[0].text, f"{len(found)} of {len(rows)}")
        field.send_keys(Keys.CONTROL + "a", Keys.DELETE)
        self.assertEqual(self.tables()[0], rows)
        self.assertEqual(len(self.all("tr.chosen")), 1)

        self.open("large.bin")
        self.assertEqual(len(self.tables()[0]), 200)
        self.assertIn("The first 200 of 300 rows.", self.all("main")[0].text)
        more = self.all("p > button")[0]
        self.assertEqual(more.text, "Show all 300")
        more.click()
        self.assertEqual(len(self.tables()[0]), 300)
        self.assertFalse(more.is_displayed())
        self.assertIn("The log has 1500 values: the chart shows the smallest and "
                      "the largest of every 3 values.", self.all("#chart-note")[0].text)
        drawn = self.chart()[0]
        self.assertLessEqual(len(drawn), 1000)
        self.assertIn([700, 9999], drawn)
        self.assertIn([701, 1], drawn)
        self.js("arguments[0].click()", self.all("tr[data-series]")[0])
        self.assertIn("These are the first 1000 of 1001 lines.",
                      self.all(".details")[0].text)
        self.assertIn("The log has 2 values in 1500 runs.",
                      self.all("#chart-note")[0].text)

    def test_a_page_has_100000_rows_at_most(self):
        for events in (99999, 100000):
            with open("many.json", "w") as file:
                json.dump({"messages": [{"events": [{"name": "(execute)"}] +
                                         [{}] * events}]}, file)
            subprocess.run([FLATC, "-b", SCHEMA, "many.json"], check=True)
            done = subprocess.run([f"{BUILD}/lumo-profile-page", "many.bin"],
                                  capture_output=True, text=True)
            self.assertEqual(done.stderr, "" if events == 99999 else
                             "lumo-profile-page: too many different events for a page: "
                             "100001, more than 100000\n")
            self.assertEqual(done.returncode, events - 99999)

    def chart(self):
        return self.js("return Chart.getChart('chart').data.datasets.map("
                       "(set) => set.data.map((point) => [point.x, point.y]))")

    def values(self, log, row):
        """Returns the values of an event for each run, as exported."""
        rows = csv.DictReader(io.StringIO(
            run("lumo-profile-export", "--input_profile_data", log)))
        return [[int(event["run"]), int(event["value"])] for event in rows
                if event["name"] == row and event["kind"] == "execute"
                and (event["level"] == "0" or event["type"].endswith("_NODE"))]

    def test_choosing_an_event(self):
        logs = ["detailed.bin", "tuned.bin"]
        self.open(*logs)
        self.assertEqual(self.all("#chart-title")[0].text,
                         "ConvNet (execute), execute runs")
        report = run("lumo-profile-viewer", "--input_profile_data", logs[0])
        p_values = {row["name"]: float(row["p_adjusted"] or 0) for row in
                    csv.DictReader(io.StringIO(run("lumo-profile-compare", "--csv", *logs)))}
        for name in ("ConvNet (execute)", "node_id_5:Conv2D_stem", "VPU threads",
                     "node_id_38:Softmax"):
            button = next(button for button in self.all("tr[data-series] button")
                          if button.text == name)
            self.js("arguments[0].scrollIntoView({block: 'center'})", button)
            button.send_keys(Keys.ENTER)
            self.assertEqual(button.get_attribute("aria-expanded"), "true")
            self.assertEqual(self.all("#chart-title")[0].text, f"{name}, execute runs")
            self.assertIn(f"p-value of the difference: {p_values[name]:.2g}",
                          self.all(".details")[0].text)
            want = [self.values(log, name) for log in logs]
            self.assertEqual(self.chart(), want)
            for k in (0, 3, 8):
                title, lines = self.point_at(k)
                self.assertEqual(title, [f"run {k}"])
                self.assertEqual([re.sub(r" \S+$", "", line) for line in lines],
                                 [f"{side}: {values[k][1]}" for side, values in
                                  zip(("Before", "After"), want) if k < len(values)])
            if name.startswith("node"):
                run_1 = report.split("ConvNet (execute): ")[2]
                lines = run_1.split(f"| {name}: ")[1].split("\n")[1:]
                wanted = [line.strip() for line in lines if line.startswith(" " * 20)]
                part = self.all(".details > div > div")[0]
                got = [line.text for line in part.find_elements(By.TAG_NAME, "li")]
                self.assertGreaterEqual(len(got), 4)
                self.assertEqual(got, wanted[:len(got)])
                self.assertTrue(len(wanted) == len(got) or
                                name not in wanted[len(got)])
                self.assertIn("Mean of 5 values", part.text)

        self.all("th[data-key=name]")[0].find_element(By.TAG_NAME, "button").send_keys(
            Keys.ENTER)
        self.assertEqual(len(self.all("tr.chosen + tr > .details")), 1)

        # A detail of a detail is indented.
        self.open(*self.hostile)
        next(button for button in self.all("tr[data-series] button")
             if button.text == "node_id_1:slower").click()
        self.assertIn("\u2003<deep>: 1 cycles", [
            line.get_attribute("textContent") for line in self.all(".details li")])

    def point_at(self, k):
        """Moves the mouse to a run of the chart and returns the texts of the tooltip."""
        x, y = self.js("""
            window.scrollTo(0, 0);
            const chart = Chart.getChart("chart");
            const box = chart.canvas.getBoundingClientRect();
            return [box.left + chart.scales.x.getPixelForValue(arguments[0]),
                    box.top + chart.chartArea.top + 5];""", k)
        self.cdp("Input.dispatchMouseEvent", type="mouseMoved", x=x, y=y)
        self.js("return new Promise((done) => requestAnimationFrame(done))")
        return self.js("const tooltip = Chart.getChart('chart').tooltip;"
                       "return tooltip.opacity === 0 ? null : [tooltip.title,"
                       "tooltip.body.flatMap((part) => part.lines)]")

    def test_warm_up_is_shaded_and_can_be_hidden(self):
        self.open("detailed.bin")
        is_shaded = """
            const chart = Chart.getChart("chart");
            const copy = document.createElement("canvas").getContext(
                "2d", {willReadFrequently: true});
            copy.drawImage(chart.canvas,
                -chart.scales.x.getPixelForValue(arguments[0]) - 12,
                7 - chart.chartArea.bottom);
            return copy.getImageData(0, 0, 1, 1).data[3] > 0"""
        self.assertTrue(self.js(is_shaded, 0))
        self.assertFalse(self.js(is_shaded, 1))
        self.assertEqual(self.all("#chart-note")[0].text,
                         "The first run is excluded as warm-up.")
        self.all("#zoom")[0].click()
        self.assertEqual(self.js("return Chart.getChart('chart').scales.x.min"), 0.5)
        self.open("detailed.bin", "--num_warmup=6")
        self.assertIn("The first 6 runs are excluded", self.all("#chart-note")[0].text)
        self.assertIn("No value after the warm-up", self.all(".details")[0].text)

    def test_policy_blocks_injected_markup(self):
        self.open("detailed.bin")
        planted = ("<main><script>window.hacked = 1</script>"
                   "<img src=x onerror=window.hacked=1>"
                   "<img src=data:, onerror=window.hacked=1>"
                   "<p style=color:red onclick=window.hacked=1 id=bad>bad</p>")
        with open("page.html") as file:
            page = file.read()
        with open("planted.html", "w") as file:
            file.write(page.replace("<main>", planted, 1))
        self.load("planted.html")
        self.all("#bad")[0].click()
        self.assertNotEqual(self.all("#bad")[0].value_of_css_property("color"),
                            "rgba(255, 0, 0, 1)")
        refused = [line["message"] for line in self.browser.get_log("browser")
                   if "Content Security Policy" in line["message"]]
        self.assertGreaterEqual(len(refused), 5)
        self.assertEqual(len(self.all("tr.chosen")), 1)  # the page's own script runs
        self.assertIsNone(self.js("return window.hacked"))
        self.browser.get_log("performance")

    def test_without_scripts(self):
        self.open("detailed.bin", "tuned.bin")
        with_scripts = self.tables()
        self.cdp("Emulation.setScriptExecutionDisabled", value=True)
        self.load("page.html")
        self.assertEqual(self.tables(), with_scripts)
        self.assertIn("Scripts are off.", self.all("main")[0].text)
        self.assertFalse(self.all("#runs")[0].is_displayed())
        self.assertEqual(self.all(".graph h2"), [])  # there is only one graph
        self.cdp("Emulation.setScriptExecutionDisabled", value=False)

    def test_narrow_dark_and_printed(self):
        self.cdp("Emulation.setDeviceMetricsOverride", width=360, height=740,
                 deviceScaleFactor=1, mobile=False)
        self.open(*self.hostile)
        self.assertTrue(self.js("const page = document.documentElement;"
                                "return page.scrollWidth === page.clientWidth"))
        papers = []
        for scheme in ("light", "dark"):
            self.cdp("Emulation.setEmulatedMedia",
                     features=[{"name": "prefers-color-scheme", "value": scheme}])
            papers.append(self.color("--paper"))
            for ink, least in (("text", 7), ("quiet", 4.5), ("higher", 4.5),
                               ("lower", 4.5), ("before", 3), ("after", 3)):
                for ground in ("--paper", "--chosen")[:1 + (ink != "quiet")]:
                    self.assertGreaterEqual(
                        self.contrast("--" + ink, ground), least, (scheme, ink, ground))
            self.assertEqual(self.js("return Chart.getChart('chart').data"
                                     ".datasets[0].borderColor"),
                             self.color("--before"))
        self.assertEqual(len(set(papers)), 2)

        # A printed page is light, even with a dark color scheme, and complete.
        self.cdp("Emulation.clearDeviceMetricsOverride")
        self.open("large.bin")
        self.cdp("Emulation.setEmulatedMedia", media="print", features=[
            {"name": "prefers-color-scheme", "value": "dark"}])
        self.assertEqual(self.color("--paper"), papers[0])
        self.assertFalse(self.all("p > button")[0].is_displayed())
        with open("page.pdf", "wb") as file:
            file.write(base64.b64decode(self.cdp("Page.printToPDF")["data"]))
        text = subprocess.run(["pdftotext", "-layout", "page.pdf", "-"], check=True,
                              capture_output=True, text=True).stdout
        for part in ("large.bin", "node_id_299:Op", "1495.00", "Net (execute)",
                     "The first 200 of 300 rows."):
            self.assertIn(part, text)

    def color(self, name):
        return self.js("return getComputedStyle(document.documentElement)"
                       ".getPropertyValue(arguments[0]).trim()", name)

    def contrast(self, *names):
        def luminance(color):
            parts = [int(color[i:i + 2], 16) / 255 for i in (1, 3, 5)]
            red, green, blue = (part / 12.92 if part <= 0.04045 else
                                ((part + 0.055) / 1.055) ** 2.4 for part in parts)
            return 0.2126 * red + 0.7152 * green + 0.0722 * blue
        dark, light = sorted(luminance(self.color(name)) for name in names)
        return (light + 0.05) / (dark + 0.05)

    def test_accessibility(self):
        self.open("tuned.bin", "basic.bin")
        for selector, problem in (
                ("th:not([scope])", "a heading without a scope"),
                ("table.series:not(:has(caption))", "a table without a caption"),
                ("button:not([type=button])", "a button that submits"),
                ("svg:not([aria-hidden=true])", "a bar that is read aloud"),
                ("canvas:not([role=img][aria-label])", "a chart without a label"),
                ("tbody tr[data-series]:not(:has(th[scope=row] button[aria-expanded]))",
                 "a row that the keyboard does not reach")):
            self.assertEqual(self.all(selector), [], problem)
        for control in self.all("#runs input, #runs select"):
            self.assertNotEqual("", self.js(
                "return arguments[0].labels[0].firstChild.textContent.trim() ||"
                "arguments[0].labels[0].lastChild.textContent.trim()", control))


unittest.main(argv=sys.argv[:1])
