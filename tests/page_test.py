"""Tests pages in a headless browser, by what is seen: positions, computed styles, the
data and pixels of the chart, and the text of printed pages.

  page_test.py BUILD_DIR FLATC SCHEMA

BUILD_DIR has the programs, the sample logs and the logs of the test cases.
"""

import base64
import csv
import io
import json
import os
import random
import re
import shutil
import statistics
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


def write_log(path, messages, schema=SCHEMA, **fields):
    """Writes a log, for which `path` ends in .bin."""
    with open(path[:-3] + "json", "w") as file:
        json.dump({**fields, "messages": messages}, file)
    folder = os.path.dirname(path) or "."
    subprocess.run([FLATC, "-b", "-o", folder, schema, path[:-3] + "json"], check=True)
    os.remove(path[:-3] + "json")


def message(time, operations):
    """Returns an execute run with a time in us and the cycles of operations."""
    return {"events": [
        {"name": "Net (execute)", "unit": 1, "value": time},
        {"name": "Cycles", "unit": 3, "sub_events": [
            {"name": name, "type": 404, "unit": 3, "value": value}
            for name, value in operations]}]}


def write_model(path, sizes=(70, 40, 10), runs=12, changes=(), absent=(), added=(), seed=1,
                date="2026-03-04 11:02:45"):
    """Writes a log of graphs with `sizes` operations. `changes` multiplies the times of
    operations (graph, number); `absent` ones are left out, `added` ones are new."""
    noise, changes, messages = random.Random(seed), dict(changes), []
    for number in range(runs):
        for graph, size in enumerate(sizes):
            shape, nodes, total = random.Random(graph), [], 0
            for i in range(size + len(added)):
                base = int(2 ** shape.uniform(9, 17) * changes.get((graph, i), 1))
                if (graph, i) in absent or i >= size and graph > 0:
                    continue
                name = f"node_id_{3 * i}:net_{graph}/op_{i}" if i < size else added[i - size]
                value = int(base * (1.4 if number == 0 else 1) * noise.gauss(1, 0.01))
                total += value
                nodes.append({"name": name, "type": 404, "unit": 3, "value": value,
                              "sub_events": [
                    {"name": name + " wait", "unit": 3, "value": value // 20},
                    {"name": name + " resources", "type": 5004, "value": 5}]})
            parts = [{"name": name, "unit": 1, "value": int(value * noise.gauss(1, 0.02))}
                     for name, value in (("Queue wait", 300), ("Device", total // 100))]
            whole = sum(part["value"] for part in parts) + total // 200 + 200
            parts.append({"name": "Sent", "unit": 2, "value": 4096})
            messages.append({"graph_index": graph, "delegate_type": 7, "events": [
                {"name": f"Net {graph} (execute)", "unit": 1, "sub_events": parts,
                 "value": whole},
                {"name": "Cycles", "unit": 3, "value": total, "sub_events": nodes}]})
    write_log(path, messages, log_date=date)


def number(value):
    """Returns a figure as pages write it."""
    decimals = 2 if abs(value) < 999.995 else 1 if abs(value) < 9999.95 else 0
    return f"{value:,.{decimals}f}"


def start_order(row):
    """Returns what the rows of operations are sorted by at the start."""
    means = [row["mean_before"], row["mean_after"]]
    size = abs(float(means[1] or 0) - float(means[0] or 0)) if any(means) else -1
    ranks = {"higher": 0, "lower": 0, "only_before": 1, "only_after": 1}
    return ranks.get(row["verdict"], 2), -size


def cells_of(row, rows):
    """Returns name, share, means, difference, change and verdict of a row of the
    comparison as pages write them. `rows` are those of the same graph."""
    keys = ("kind", "level", "name", "unit")
    alike = [other for other in rows if all(other[key] == row[key] for key in keys)]
    name = row["name"] + f" (occurrence {row['occurrence']})" * (len(alike) > 1)
    means, texts = [], []
    for side in ("before", "after"):
        text = number(float(row["mean_" + side])) if row["mean_" + side] else ""
        decimals = len(text.partition(".")[2])
        means.append(text and float(row["mean_" + side]))
        deviation = row["stdev_" + side]
        texts.append(text + (f" ± {float(deviation):,.{decimals}f}" if deviation else ""))
    difference, share = "", None
    if "" not in means:
        decimals = len(texts[0].partition(" ")[0].partition(".")[2])
        difference = f"{means[1] - means[0]:+,.{decimals}f}".replace("-", "−")
        difference = difference.lstrip("+−" * (re.search("[1-9]", difference) is None))
    if row["level"] == "operation":
        side = "after" if row["verdict"] == "only_after" else "before"
        total = sum(float(other["mean_" + side] or 0) for other in rows if
                    (other["level"], other["unit"]) == ("operation", row["unit"]))
        share = f"{100 * float(row['mean_' + side]) / total:.1f}%" if (
            row["mean_" + side] and total) else ""
    change = row["change_percent"] and f"{100 * (means[1] - means[0]) / means[0]:+.2f}%"
    sign = {"higher": "▲ ", "lower": "▼ "}.get(row["verdict"], "")
    verdict = sign + row["verdict"].replace("_", " ").replace("no difference", "~")
    return [name, share, *texts, difference, change.replace("-", "−"), verdict]


def rgb(color):
    """Returns the parts of a color as in a style sheet or a computed style."""
    return tuple(map(int, re.findall(r"\d+", color)) if color.startswith("rgb") else
                 (int(color[i:i + 2], 16) for i in (1, 3, 5)))


def contrast(*colors):
    def luminance(color):
        red, green, blue = (part / 12.92 if part <= 0.04045 else
                            ((part + 0.055) / 1.055) ** 2.4
                            for part in (part / 255 for part in rgb(color)))
        return 0.2126 * red + 0.7152 * green + 0.0722 * blue
    dark, light = sorted(map(luminance, colors))
    return (light + 0.05) / (dark + 0.05)


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
        cls.changes = {(0, 28): 0.7, (0, 4): 1.22, (0, 17): 1.5, (1, 10): 1.31}
        write_model("a.bin", absent=[(0, 60)])
        write_model("b.bin", changes=cls.changes, added=["node_id_999:fused"], seed=2,
                    absent=[(0, 61)], date="2026-03-05 09:40:00")
        write_model("graphs.bin", [1] * 9, 2)
        for folder, factor in (("old", 1), ("new", 1.3)):
            os.mkdir(folder)
            for i in range(5):
                write_model(f"{folder}/log_{i}.bin", (6, 3), 4, {(0, 2): factor},
                            [(0, 3)] if (folder, i) == ("old", 2) else [],
                            seed=f"{folder} {i}", date=f"2026-03-0{i + 1} 03:00:00")
        # The longest runs are in the middle; an operation is absent from some runs; a
        # series has a single value on one side; and a value is beyond 2^31.
        times = {700: 9999, 701: 1, 1499: 7000}
        write_log("long.bin", [message(times.get(n, 500 + n % 7), [
            (f"op_{i}", 2 ** 33 + n + i) for i in range(300)
            if n % 500 == i % 2 or i == 0]) for n in range(1500)])
        write_log("short.bin", [message(600, [("op_1", 9)] * (n == 2)) for n in range(3)])
        for name, ids in (("renamed", (3, 8)), ("other", (4, 8))):
            write_log(name + ".bin", [message(5, [(f"node_id_{n}:op", 7) for n in ids])] * 3)
        options = webdriver.ChromeOptions()
        for word in ("headless", "no-sandbox", "disable-gpu", "disable-quic",
                     "no-first-run", "disable-background-networking",
                     "disable-component-update", "disable-sync",
                     "window-size=1440,900", f"user-data-dir={cls.work}/browser"):
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

    def setUp(self):
        self.emulate()
        self.resize(1440, 780)

    def tearDown(self):
        """Checks that only the page was requested and that the console is empty."""
        for entry in self.browser.get_log("performance"):
            event = json.loads(entry["message"])["message"]
            if event["method"] == "Network.requestWillBeSent":
                url = event["params"]["request"]["url"]
                self.assertRegex(url, r"^(file:///.*/page\.html(#.*)?|data:,)$")
        self.assertEqual(self.browser.get_log("browser"), [])
        self.assertIsNone(self.js("return window.hacked"))

    # Verbs.

    def cdp(self, command, **arguments):
        return self.browser.execute_cdp_cmd(command, arguments)

    def emulate(self, media="", scheme="light"):
        self.cdp("Emulation.setEmulatedMedia", media=media, features=[
            {"name": "prefers-color-scheme", "value": scheme}])

    def resize(self, width, height):
        self.cdp("Emulation.setDeviceMetricsOverride", width=width, height=height,
                 deviceScaleFactor=1, mobile=False)

    def open(self, *logs):
        run("lumo-profile-page", "--output", "page.html", *logs)
        self.load("page.html")

    def load(self, name):
        self.browser.get("about:blank")
        self.browser.get(f"file://{self.work}/{name}")
        WebDriverWait(self.browser, 60).until(lambda _: self.js(
            "return location.href.includes(arguments[0])"
            " && document.readyState === 'complete'", name))

    def all(self, selector):
        return self.browser.find_elements(By.CSS_SELECTOR, selector)

    def text(self, selector):
        return self.js("return document.querySelector(arguments[0]).innerText", selector)

    def click(self, selector, event="click"):
        self.js("document.querySelector(arguments[0]).dispatchEvent(new PointerEvent("
                "arguments[1], {bubbles: true, cancelable: true}))", selector, event)

    def style(self, selector, name):
        return self.js("return getComputedStyle(document.querySelector(arguments[0]))"
                       "[arguments[1]]", selector, name)

    def boxes(self, selector):
        """Returns the left, top, right and bottom edges of the visible elements."""
        return self.js("""
            return [...document.querySelectorAll(arguments[0])]
                .map((element) => element.getBoundingClientRect())
                .filter((box) => box.height > 0)
                .map((box) => [box.left, box.top, box.right, box.bottom]);""", selector)

    def layout(self):
        """Returns what must not move."""
        return (self.boxes("tr[data-series], .strip, .tables .note"),
                self.js("return document.documentElement.scrollHeight"))

    def color(self, name):
        return self.js("return getComputedStyle(document.documentElement)"
                       ".getPropertyValue(arguments[0]).trim()", name)

    def css_color(self, name):
        return "rgb({}, {}, {})".format(*rgb(self.color(name)))

    def copied(self, button):
        """Returns what a button copies."""
        self.js("document.addEventListener('copy', () => {"
                "window.copied = getSelection().toString()})")
        self.all(button)[0].click()  # only users may copy
        return self.js("return window.copied")

    def tables(self):
        """Returns the shown tables, as dictionaries of the texts in a row by the keys of
        the columns."""
        return self.js("""
            return [...document.querySelectorAll("section:not([hidden]) table.series")]
                .map((table) => [...table.tBodies[0].rows].map((row) =>
                    Object.fromEntries([...table.tHead.rows[0].cells].map((head, i) =>
                        [head.dataset.key || "bar", row.cells[i].innerText])
                    .filter(([key]) => key !== "bar"))));""")

    def names(self):
        return [row["name"] for row in self.tables()[0]]

    def chart(self):
        """Returns the points, mean and deviation of each dataset, and the scales."""
        return self.js("""
            const {data, scales} = Chart.getChart("chart");
            return [data.datasets.map((set) => ({...set, points: set.data.map(({x, y}) =>
                        [x, Number.isNaN(y) ? null : y])})),
                    [scales.x.min, scales.x.max, scales.y.min, scales.y.max]];""")

    def choose(self, name):
        self.js("""
            [...document.querySelectorAll("section:not([hidden]) tr[data-series]")].find(
                (row) => row.querySelector("bdi").textContent === arguments[0]
                    && !row.classList.contains("chosen"))
                .querySelector("[role=button]").click();""", name)

    def comparison(self, *logs):
        return list(csv.DictReader(io.StringIO(
            run("lumo-profile-compare", "--csv", *logs), newline="")))

    def pair(self, rows, graph, name):
        """Returns the row of a series of the execute runs in a comparison."""
        return next(row for row in rows if (row["graph"], row["kind"], row["name"]) ==
                    (graph, "execute", name))

    def values(self, log, name, graph="0"):
        """Returns the runs and values of an event as exported."""
        rows = csv.DictReader(io.StringIO(run("lumo-profile-export", log)))
        return [[int(row["run"]), int(row["value"])] for row in rows
                if row["name"] == name and row["kind"] == "execute"
                and row["graph_index"] == graph]

    # Tests.

    def test_first_screen(self):
        self.open("a.bin", "b.bin")
        for width, height, least in ((1440, 780, 10), (1366, 650, 5), (1240, 650, 5)):
            self.resize(width, height)
            seen = [box for box in self.boxes("tbody tr[data-series]") if box[3] <= height]
            self.assertGreaterEqual(len(seen), least)
            self.assertEqual(len(self.boxes(".overview tbody tr")), 3)
            # The chosen operation is beside the table.
            self.assertGreater(self.boxes("#panel")[0][0], self.boxes("td.verdict")[0][2])
        self.resize(1000, 780)
        for cell in self.boxes("section:not([hidden]) .series .verdict"):
            self.assertLess(cell[2], 1000)
        self.resize(400, 780)
        heads = [head.text for head in self.all(".series thead th") if head.is_displayed()]
        self.assertEqual(heads[:3], ["Operation", "Change", "Verdict"])

        self.resize(1440, 780)
        compared = self.comparison("a.bin", "b.bin")
        overview = [[cell.text for cell in row.find_elements(By.CSS_SELECTOR, "th, td")]
                    for row in self.all(".overview tbody tr")]
        for graph, row in enumerate(overview):
            rows = [pair for pair in compared if pair["graph"] == str(graph)]
            verdicts = [pair["verdict"] for pair in rows if pair["level"] == "operation"]
            counts = [verdicts.count("higher"), verdicts.count("lower"),
                      verdicts.count("only_before") + verdicts.count("only_after")]
            name, _, *means, _, change, verdict = cells_of(
                self.pair(compared, str(graph), f"Net {graph} (execute)"), rows)
            self.assertEqual(row[:9], [
                f"{graph} {name}", *means, "us", change, verdict.replace("~", "no difference"),
                *(str(count or "–") for count in counts)])
        self.assertEqual(overview[0][6:9], ["2", "1", "3"])
        self.assertEqual([link.get_attribute("textContent").split()[0] for link in
                          self.all(".overview tr:nth-child(2) .operation")], ["net_1/op_10"])
        self.assertRegex(self.text("header .summary"),
                         "124 pairs compared, . differ .*1 series only before, 2 only after")
        # Beyond four graphs, the overview scrolls.
        self.open("graphs.bin")
        self.assertTrue(self.js("const overview = document.querySelector('.overview');"
                                "return overview.clientHeight < 150"
                                " && overview.scrollHeight > overview.clientHeight"))

    def test_a_change_of_one_run_cannot_be_tested(self):
        write_model("single.bin", (2,), runs=2)
        self.open("single.bin", "single.bin")
        self.assertRegex(self.text("header .summary"), "^1 run before and 1 run after the change"
                                                       r".*: nothing can be tested\.[^0]*$")
        self.assertIn("not tested", self.text(".overview tbody"))
        self.assertNotIn("±", self.text(".series"))  # one value has no deviation

    def test_figures_equal_the_comparison(self):
        for logs in (["detailed.bin", "tuned.bin"], ["tuned.bin", "basic.bin"],
                     self.hostile, ["a.bin", "b.bin"], ["old", "new"], ["old", "a.bin"]):
            self.open(*logs)
            self.assertEqual(self.browser.title, " → ".join(logs))
            compared = self.comparison(*logs)
            for graph in sorted({row["graph"] for row in compared}):
                self.click(f".overview a[href='#graph-{graph}']")
                rows = [row for row in compared if row["graph"] == graph]
                want = [cells_of(row, rows) for row in sorted(rows, key=start_order)]
                keys = ("share", "before", "after", "difference", "change", "verdict")
                seen = [[f"node_id_{cells.get('node')}:" * bool(cells.get("node")) +
                         cells["name"], *(cells.get(key) for key in keys)]
                        for table in self.tables() for cells in table]
                operations = [cells for cells in want if cells[1] is not None]
                self.assertEqual(seen[:len(operations)], operations)
                self.assertCountEqual(seen, want)
            self.assertEqual(self.all("main :is(script, img)"), [])

    def test_columns_sort_both_ways(self):
        for logs in (["detailed.bin"], ["a.bin", "b.bin"], self.hostile, ["old"]):
            self.open(*logs)
            start = self.names()
            for heading in self.all("section:not([hidden]) table.series:first-of-type "
                                    "th[data-key]"):
                key = heading.get_attribute("data-key")
                is_number = "number" in heading.get_attribute("class")
                seen = []
                for _ in range(2):
                    self.js("arguments[0].querySelector('button').click()", heading)
                    seen.append(heading.get_attribute("aria-sort"))
                    arrow = self.js("return getComputedStyle(arguments[0].querySelector("
                                    "'button'), '::after').content", heading)
                    self.assertEqual(arrow, '" ▼"' if seen[-1] == "descending" else '" ▲"')
                    texts = [row[key] for row in self.tables()[0]]
                    values = [float(re.sub(r"[,%]| ±.*| of.*", "", text).replace("−", "-"))
                              if is_number else
                              [int(part) if part.isdigit() else part.lower()
                               for part in re.split(r"(\d+)", text.lstrip("▲▼ "))]
                              for text in texts if text]
                    with self.subTest(logs=logs, column=key, order=seen[-1]):
                        self.assertEqual(texts[len(values):], [""] * texts.count(""))
                        if key != "verdict":
                            self.assertEqual(values, sorted(
                                values, reverse=seen[-1] == "descending"))
                self.assertEqual(seen, ["descending", "ascending"] if is_number
                                 else ["ascending", "descending"])
            self.click("#start-order")
            self.assertEqual(self.names(), start)
            self.assertEqual(self.all("[aria-sort$=ending]"), [])
            self.assertFalse(self.all("#start-order")[0].is_displayed())

    def test_find_and_switch(self):
        self.open("a.bin", "b.bin")
        find = self.all("#find")[0]
        for graph in (0, 1):
            self.click(f".overview a[href='#graph-{graph}']")
            rows = self.tables()[0]
            self.assertIn(f"net_{graph}/", self.text("#chosen-name"))
            find.send_keys("3 OP_")
            self.assertEqual(self.names(), [row["name"] for row in rows if "op_" in
                             row["name"] and "3" in row["name"] + row["node"]])
            self.assertIn(self.text("section:not([hidden]) .count"),
                          [f"{len(self.names())} of {len(rows)}", f"{len(rows)}"])
            find.send_keys(Keys.CONTROL + "a", Keys.NULL, "EXEC net")
            self.assertEqual([[row["name"] for row in table] for table in self.tables()],
                             [[], [f"Net {graph} (execute)"]])
            find.send_keys("nowhere")
            self.assertEqual(self.names(), [])
            self.assertIn("No row is found.", self.text("section:not([hidden])"))
            find.send_keys(Keys.CONTROL + "a", Keys.DELETE)
            self.assertEqual(self.tables()[0], rows)
            for value, verdicts in (("different", {"▲ higher", "▼ lower"}),
                                    ("one", {"only before", "only after"}), ("", None)):
                self.click(f"#show button[value='{value}']")
                want = [row for row in rows
                        if verdicts is None or row["verdict"] in verdicts]
                self.assertEqual(self.tables()[0], want)
                self.assertEqual([button.get_attribute("value") for button in
                                  self.all("#show [aria-pressed=true]")], [value])

        self.open("long.bin")
        self.assertEqual(len(self.tables()[0]), 100)
        self.assertIn("The first 100 of 300 rows.", self.text("section"))
        self.click(".more button")
        self.assertEqual(len(self.tables()[0]), 300)
        self.assertEqual(self.text(".count"), "300")

    def test_state_is_in_the_address(self):
        self.open("a.bin", "b.bin")
        self.click(".overview a[href='#graph-1']")
        self.assertTrue(self.browser.current_url.endswith("page.html#graph=1"))
        self.click("section:not([hidden]) th[data-key=change] button")
        self.choose("net_1/op_4")
        self.assertEqual(self.text("#chosen-name"), "12 net_1/op_4")
        self.all("#find")[0].send_keys("op_")
        self.click("#show button[value=different]")
        self.click("#from-zero")

        def seen():
            return (self.browser.current_url, self.tables(), self.text("#panel"),
                    self.chart()[1], self.js("return document.getElementById('find').value"))
        first = seen()
        self.assertRegex(first[0], r"#graph=1&operation=\d+&sort=-change&find=op_"
                                   "&show=different&from=0$")
        self.assertEqual(self.copied("#copy-link"), first[0])
        self.browser.refresh()
        self.assertEqual(seen(), first)
        self.browser.get("about:blank")
        self.browser.get(first[0])
        self.assertEqual(seen(), first)
        self.open("a.bin", "b.bin")
        first = self.text("#chosen-name")
        buttons = self.all("tr[data-series] [role=button]")
        buttons[2].click()
        second = self.text("#chosen-name")
        buttons[4].click()
        self.browser.back()
        self.assertEqual(self.text("#chosen-name"), second)
        self.browser.back()
        self.assertEqual(self.text("#chosen-name"), first)
        self.load("page.html#graph=9&operation=length&sort=x&show=constructor")
        self.assertEqual((len(self.tables()[0]), self.text("#chosen-name")), (71, first))

    def test_choosing(self):
        self.open("a.bin", "b.bin")
        for width, graph in ((1440, 2), (1000, 0), (1440, 0)):  # choosing moves nothing
            self.resize(width, 780)
            self.click(f".overview a[href='#graph-{graph}']")
            before = self.layout()
            for row in (-1, 3):  # with sub-events and without
                button = self.all("section:not([hidden]) [role=button]")[row]
                button.send_keys(Keys.ENTER)
                self.js("window.scrollTo(0, 0)")
                self.assertEqual(self.layout(), before)
        self.assertEqual(self.all("[aria-expanded=true]"), [button])
        self.assertEqual(self.style("tr.chosen th", "backgroundColor"),
                         self.css_color("--chosen"))
        button.click()
        self.assertEqual(self.all("[aria-expanded=true]"), [])
        self.assertFalse(self.all("#chosen")[0].is_displayed())
        self.assertEqual(self.layout(), before)
        # Dragging over a name selects it, and chooses nothing.
        left, top, right, bottom = self.boxes("tr[data-series] bdi")[1]
        for kind, x in (("mousePressed", left + 1), ("mouseMoved", right - 1),
                        ("mouseReleased", right - 1)):
            self.cdp("Input.dispatchMouseEvent", type=kind, x=x, y=(top + bottom) / 2,
                     button="left", buttons=1, clickCount=1)
        self.assertGreater(len(self.js("return getSelection().toString()")), 5)
        self.assertEqual(self.all("[aria-expanded=true]"), [])
        self.js("getSelection().removeAllRanges()")
        # A link of the overview chooses its graph and row, a piece of a strip its row.
        self.click(".overview tr:nth-child(2) a.operation")
        self.assertEqual((len(self.boxes("#graph-0")), len(self.boxes("#graph-1"))), (0, 1))
        self.assertIn("net_1/op_10", self.text("#chosen-name"))
        self.assertEqual(len(self.all(".overview tr.chosen [href='#graph-1']")), 1)
        self.choose("net_1/op_7")
        row = self.all("tr.chosen[id]")[0].get_attribute("id")
        piece = f"#graph-1 .strip [href='#{row}'] rect"
        self.click(".overview tr:nth-child(2) a.operation")
        heading = self.text("#graph-1 h2")
        self.click(piece, "pointerover")
        self.assertIn("op_7: ", self.text("#graph-1 h2"))
        self.click("#graph-1 h2", "pointerover")
        self.assertEqual(self.text("#graph-1 h2"), heading)
        self.click(piece)
        self.assertIn("op_7", self.text("#chosen-name"))

    def test_chart_of_runs(self):
        self.open("a.bin", "b.bin")
        compared = self.comparison("a.bin", "b.bin")
        for graph, name in (("0", "node_id_84:net_0/op_28"), ("1", "Net 1 (execute)")):
            self.click(f".overview a[href='#graph-{graph}']")
            self.choose(name.partition(":")[2] or name)
            row = self.pair(compared, graph, name)
            sets, (left, right, bottom, top) = self.chart()
            want = [self.values(log, name, graph) for log in ("a.bin", "b.bin")]
            self.assertEqual([data["points"] for data in sets], want)
            self.assertEqual(len(self.boxes("#figures .key")), 2)
            self.assertEqual(self.js("return Chart.getChart('chart').options.scales.y"
                                     ".title.text"), row["unit"])
            for data, side in zip(sets, ("before", "after")):
                self.assertEqual([data["mean"], data["stdev"]],
                                 [float(row["mean_" + side]), float(row["stdev_" + side])])
                self.assertEqual(data["borderColor"], self.color("--" + side))
                self.assertEqual(self.style(f"#figures .key.{side}", "backgroundColor"),
                                 self.css_color("--" + side))
                # Only the warm-up run is hollow.
                self.assertEqual([color == "transparent" for color in
                                  data["pointBackgroundColor"]], [True] + [False] * 11)
                # The line, the band, and the point that is farthest from them.
                mean, stdev = data["mean"], data["stdev"]
                far = max(data["points"][1:], key=lambda point: abs(point[1] - mean))
                for x, y, least, most in ((0.5, mean, 100, 255), (*far, 250, 255),
                                          (0.5, mean + stdev / 2, 30, 45),
                                          (0.5, mean - stdev / 2, 30, 45),
                                          (0.5, mean + 1.5 * stdev, 0, 0)):
                    *color, alpha = self.pixel(x, y)
                    self.assertTrue(least <= alpha <= most, (x, y, alpha))
                    for got, wanted in zip(color, rgb(data["borderColor"])):
                        self.assertTrue(alpha == 0 or abs(got - wanted) < 8, (x, y, color))
            # The scale fits the values after the warm-up.
            counted = [value for values in want for _, value in values[1:]]
            room = 0.12 * (max(counted) - min(counted))
            self.assertTrue(min(counted) - room <= bottom <= min(counted) and
                            max(counted) <= top <= max(counted) + room)
            self.assertEqual([left, right], [-0.5, 11.5])
            if graph == "0":  # a warm-up run above the scale
                red, _, blue, _ = self.pixel(0, top, down=6)
                self.assertGreater(blue - red, 150)
        self.click("#from-zero")
        self.assertEqual(self.chart()[1][2], 0)
        self.point_at(3)
        lines = self.js("const {title, body} = Chart.getChart('chart').tooltip;"
                        "return [title, body].flat().flatMap((part) => part.lines || part)")
        self.assertEqual(lines, ["run 3", *(f"{side} {values[3][1]:,} us" for side, values in
                                            zip(("Before", "After"), want))])

    def pixel(self, x, y, down=0):
        """Returns the color of the chart at a run and a value, or some pixels below."""
        return tuple(self.js("""
            const {canvas, scales} = Chart.getChart("chart");
            const copy = document.createElement("canvas").getContext(
                "2d", {willReadFrequently: true});
            copy.drawImage(canvas, -Math.floor(scales.x.getPixelForValue(arguments[0])),
                -Math.floor(scales.y.getPixelForValue(arguments[1]) + arguments[2]));
            return [...copy.getImageData(0, 0, 1, 1).data];""", x, y, down))

    def point_at(self, x):
        left, top = self.js("""
            const {canvas, scales, chartArea} = Chart.getChart("chart");
            const box = canvas.getBoundingClientRect();
            return [box.left + scales.x.getPixelForValue(arguments[0]),
                    box.top + chartArea.top + 5];""", x)
        self.cdp("Input.dispatchMouseEvent", type="mouseMoved", x=left, y=top)
        self.js("return new Promise((done) => requestAnimationFrame(done))")

    def test_charts_of_unusual_series(self):
        self.open("long.bin", "short.bin")
        self.choose("Net (execute)")
        sets, (_, right, _, top) = self.chart()
        points = sets[0]["points"]
        self.assertLessEqual(len(points), 1000)
        for point in ([700, 9999], [701, 1], [1499, 7000]):
            self.assertIn(point, points)
        self.assertEqual(points, sorted(points))
        self.assertGreater(top, 9999)
        self.assertIn("The smallest and the largest of every 3 of 1500 values.",
                      self.text("#chart-note"))
        # The runs of an operation that not all runs have; each side has its warm-up.
        self.click(".more button")
        self.choose("op_1")
        sets, _ = self.chart()
        self.assertEqual(sets[0]["points"], [[n, 2 ** 33 + n + 1] for n in (1, 501, 1001)])
        self.assertEqual(sets[1]["points"], [[2, 9]])
        self.assertEqual([[color == "transparent" for color in data["pointBackgroundColor"]]
                          for data in sets], [[True, False, False], [False]])
        row = self.all("#figures tr")[1].text
        self.assertEqual(row.split()[1:], ["8,589,935,094", "8,589,935,344",
                                           "8,589,935,544", "8,589,935,594", "2"])
        # All values are excluded.
        self.open("detailed.bin", "--num_warmup=6")
        self.choose("ConvNet (execute)")
        self.assertEqual(self.all("#figures tr")[1].text.split(), ["0"])
        self.assertEqual(len(self.chart()[0][0]["points"]), 6)

    def test_panel(self):
        logs = ["detailed.bin", "tuned.bin"]
        self.open(*logs)
        row = self.pair(self.comparison(*logs), "0", "node_id_5:Conv2D_stem")
        self.choose("Conv2D_stem")
        self.assertEqual(self.text("#chosen-name"), "5 Conv2D_stem")
        low, high = (f"{float(row[key]):+.2f}".replace("-", "−")
                     for key in ("change_low", "change_high"))
        self.assertEqual(self.text("#chosen-verdict"), "~ {:+.2f}% ({}..{}%) p {:.2g}".format(
            float(row["change_percent"]), low, high, float(row["p_adjusted"])).replace(
                "-", "−"))
        lines = [line.text.split() for line in self.all("#figures tr")]
        self.assertEqual(lines[0], ["min", "median", "p90", "max", "n"])
        for log, side, line in zip(logs, ("Before", "After"), lines[1:]):
            counted = [value for _, value in self.values(log, "node_id_5:Conv2D_stem")[1:]]
            p90 = statistics.quantiles(counted, n=10, method="inclusive")[8]
            self.assertEqual(line, [side, f"{min(counted):,}", number(
                statistics.median(counted)), number(p90), f"{max(counted):,}",
                str(len(counted))])
        parts = {line.find_element(By.TAG_NAME, "th").text:
                 [cell.text for cell in line.find_elements(By.TAG_NAME, "td")]
                 for line in self.all("#parts tr")[1:]}
        for part in ("wait", "overlap", "wait overlap"):
            want = []
            for log, side in zip(logs, ("before", "after")):
                counted = self.values(log, "node_id_5:Conv2D_stem " + part)[1:]
                mean = statistics.mean(value for _, value in counted)
                want += [number(mean), f"{100 * mean / float(row['mean_' + side]):.1f}%"]
            self.assertEqual(parts[part], want)
        self.assertEqual(parts["resources"], ["VPU, TMU, DMA", ""] * 2)
        copied = self.copied("#copy-text")
        for text in ("node_id_5:Conv2D_stem", f"Before: {number(float(row['mean_before']))}",
                     "median", "wait\t" + parts["wait"][0]):
            self.assertIn(text, copied)
        # A sub-event in another unit; one of a sub-event is indented.
        self.open("a.bin")
        self.choose("Net 0 (execute)")
        self.assertEqual(self.all("#parts tr:last-child")[0].text, "Sent 4,096.0 bytes")
        self.open(*self.hostile)
        self.choose("slower")
        self.assertIn("\u2003<deep>", [line.get_attribute("textContent")
                                       for line in self.all("#parts th")])

    def test_folders(self):
        self.open("old", "new")
        compared = self.comparison("old", "new")
        self.assertIn("5 logs, 2026-03-01 03:00:00 to 2026-03-05 03:00:00",
                      self.text("summary"))
        rows = {row["name"]: row for row in self.tables()[0]}
        self.assertEqual(rows["net_0/op_2"]["verdict"], "▲ higher")
        self.assertEqual(rows["net_0/op_3"]["logs"], "4 of 5, 5 of 5")
        self.assertEqual(rows["net_0/op_2"]["logs"], "5 of 5")
        self.choose("net_0/op_3")
        sets, (left, right, _, _) = self.chart()
        self.assertEqual([left, right], [0.5, 5.5])
        for data, folder in zip(sets, ("old", "new")):
            want = []
            for i in range(5):
                counted = self.values(f"{folder}/log_{i}.bin", "node_id_9:net_0/op_3")[1:]
                want.append([i + 1, counted and statistics.mean(v for _, v in counted)
                             or None])
            for (x, y), (want_x, want_y) in zip(data["points"], want):
                self.assertEqual(x, want_x)
                self.assertAlmostEqual(y or 0, want_y or 0, 6)
        self.assertIsNone(sets[0]["points"][2][1])  # a gap
        top = self.js("const point = Chart.getChart('chart').data.datasets[1].data[4];"
                      "return point.y + 0.7 * point.stdev")
        red, _, blue, _ = self.pixel(5, top)  # orange, also above a line of the grid
        self.assertGreater(red - blue, 60)
        self.assertTrue(sets[0]["showLine"] and not sets[0].get("spanGaps"))
        self.point_at(2)
        self.assertIn("old/log_1.bin 2026-03-02 03:00:00", self.js(
            "return Chart.getChart('chart').tooltip.body[0].lines[0]"))
        self.assertEqual(len(compared), sum(len(t) for t in self.tables()) + 5)
        # A folder alone is a history.
        self.open("old")
        self.choose("Net 0 (execute)")
        self.assertEqual(len(self.chart()[0][0]["points"]), 5)
        # The notes of the comparison, and renumbered operations.
        self.open("renamed.bin", "other.bin")
        notes = re.findall("^Note: .*", run("lumo-profile-compare", "renamed.bin",
                                            "other.bin"), re.M)
        self.assertEqual([note.text for note in self.all("main > .note")], notes)
        self.assertEqual(len(notes), 2)
        self.open("renamed.bin", "other.bin", "--ignore_node_ids")
        self.assertEqual([row["node"] for row in self.tables()[0]], ["3→4", "8"])

    def test_strips_are_to_scale(self):
        self.open("a.bin", "b.bin")
        compared = self.comparison("a.bin", "b.bin")
        strips = self.js("""
            return [...document.querySelectorAll("#graph-0 .strip")].map((strip) =>
                [...strip.querySelectorAll("svg svg")].map((piece) =>
                    [piece.textContent, piece.className.baseVal,
                     getComputedStyle(piece.querySelector("rect")).fill,
                     piece.querySelector("rect").getBoundingClientRect().left,
                     piece.querySelector("rect").getBoundingClientRect().width,
                     piece.querySelector("text") &&
                         getComputedStyle(piece.querySelector("text")).fill]));""")
        self.assertEqual(len(strips), 4)
        whole = self.pair(compared, "0", "Net 0 (execute)")
        self.assertEqual([piece[0].partition(":")[0] for piece in strips[0]],
                         ["Queue wait", "Device", "not measured"])
        self.assertTrue(any(piece[5] for piece in strips[0]))
        for strip in strips:
            for last, (_, css_class, fill, _, _, ink) in zip([[None] * 3] + strip, strip):
                self.assertNotEqual(last[1:3], [css_class, fill])  # neighbors are told apart
                self.assertTrue(ink is None or contrast(ink, fill) >= 4.5, (ink, fill))
        widths = [sum(piece[4] for piece in strip) for strip in strips]
        self.assertAlmostEqual(widths[0] / widths[1], float(whole["mean_before"]) /
                               float(whole["mean_after"]), 2)
        inks = {self.css_color("--" + name.replace("only_", "")): name
                for name in ("higher", "lower", "only_before", "only_after")}
        for strip, side, whole in zip(strips[2:], ("before", "after"), widths[2:]):
            rows = {row["name"].partition(":")[2]: row for row in compared if row["mean_" + side]
                    and (row["graph"], row["level"]) == ("0", "operation")}
            total = sum(float(row["mean_" + side]) for row in rows.values())
            for title, css_class, fill, _, width, _ in strip:
                name = title.partition(":")[0]
                if "operations" not in name:
                    self.assertAlmostEqual(
                        width / whole, float(rows[name]["mean_" + side]) / total, 2)
                    self.assertEqual(rows[name]["verdict"], css_class)
                    self.assertEqual(inks.get(fill, "no_difference"), css_class)
            # In the order of execution.
            self.assertEqual(strip, sorted(strip, key=lambda piece: piece[3]))
            numbers = [int(re.match(r"net_0/op_(\d+):", piece[0])[1]) for piece in strip
                       if piece[0].startswith("net_0")]
            self.assertEqual(numbers, sorted(numbers))

    def test_styles(self):
        for scheme in ("light", "dark"):
            self.emulate(scheme=scheme)
            self.open("a.bin", "b.bin")
            looks = [("tbody .number", "textAlign", "end"),
                     ("tbody .number", "fontVariantNumeric", "tabular-nums"),
                     ("tr.no_difference .change", "color", "--quiet"),
                     ("thead .key.before", "backgroundColor", "--before"),
                     ("thead .key.after", "backgroundColor", "--after")]
            for verdict, sign, side in (("higher", "▲", 0), ("lower", "▼", 2)):
                row = f"section:not([hidden]) tr.{verdict} "
                looks += [(row + ".bar rect", "fill", "--" + verdict)] + [
                    (row + cell, "color", "--" + verdict)
                    for cell in (".verdict", ".change", ".difference")]
                self.assertEqual(self.text(row + ".verdict")[0], sign)
                cell, bar = (self.boxes(row + part)[0] for part in (".bar svg", ".bar rect"))
                self.assertAlmostEqual(bar[side], (cell[0] + cell[2]) / 2, 0)
            for selector, name, want in looks:
                self.assertEqual(self.style(selector, name), self.css_color(want)
                                 if want.startswith("--") else want, selector)
            for name, least, main in (("text", 7, 0), ("quiet", 4.5, 0), ("higher", 4.5, 0),
                                      ("lower", 4.5, 1), ("before", 3, 2), ("after", 3, 0)):
                ink = self.color("--" + name)
                # Higher is red, lower green, before blue and after orange.
                self.assertEqual(rgb(ink)[main], max(rgb(ink)))
                for ground in ("--paper", "--chosen")[:1 + (name != "quiet")]:
                    self.assertGreaterEqual(contrast(ink, self.color(ground)), least,
                                            (scheme, name, ground))
            self.assertEqual(self.chart()[0][0]["borderColor"], self.color("--before"))
        # Heads stay when the page is scrolled.
        self.js("document.querySelectorAll('tr[data-series]')[60].scrollIntoView()")
        self.assertEqual(self.boxes("section:not([hidden]) .series thead th")[0][1], 0)
        # The widest bar is that of the largest difference.
        widths = [box[2] - box[0] for box in self.boxes("#graph-0 .tables table:first-of-type"
                                                        " .bar rect")]
        self.assertEqual(widths[0], max(widths))

    def test_narrow_screens(self):
        for width in (360, 700, 1000, 1240):
            self.resize(width, 740)
            for logs in (self.hostile, ["texts.bin"], ["old", "new"]):
                self.open(*logs)
                for row in self.all("tr[data-series]")[:12]:
                    self.js("arguments[0].click()", row)
                    self.assertTrue(self.js("const page = document.documentElement;"
                                            "return page.scrollWidth === page.clientWidth"),
                                    (width, logs))

    def print(self, **options):
        pdf = base64.b64decode(self.cdp("Page.printToPDF", **options)["data"])
        with open("page.pdf", "wb") as file:
            file.write(pdf)
        return subprocess.run(["pdftotext", "-layout", "page.pdf", "-"], check=True,
                              capture_output=True, text=True).stdout.split("\f")[:-1]

    def test_paper(self):
        for width in (500, 1000, 1440):
            self.resize(width, 780)
            self.emulate(scheme="dark" if width == 1000 else "light")
            self.open("a.bin", "b.bin")
            for paper in ((8.27, 11.69), (8.5, 11)):
                for landscape in (False, True):
                    pages = self.print(paperWidth=paper[0], paperHeight=paper[1],
                                       landscape=landscape, printBackground=True)
                    # The node ids of all operations of the graph: 70, and a new one.
                    nodes = re.findall(r"^ *(\d+) .*%", "\f".join(pages), re.M)
                    wanted = {str(3 * i) for i in range(70)} | {"999"}
                    self.assertLessEqual(wanted, set(nodes), (width, paper, landscape))
                    for page in pages[1:]:
                        self.assertRegex(page, "Verdict|overlap: do not add")
                    self.assertNotIn("Find", "".join(pages))
                    self.assertIn("net_1/op_10", pages[0])  # the last column of the overview
        self.open("graphs.bin")  # paper does not scroll
        self.emulate("print")
        self.assertLess(self.boxes(".overview tbody tr")[8][3], self.boxes("#graph-0 h2")[0][1])
        # Paper is light, and the chart on it, even with a dark color scheme.
        self.emulate(scheme="dark")
        self.open("long.bin")
        self.js("""
            addEventListener("beforeprint", () => {
              const {data} = Chart.getChart("chart");
              window.printed = [data.datasets[0].borderColor,
                  getComputedStyle(document.body).backgroundColor,
                  document.querySelectorAll("tr[data-series]").length];
            });""")
        dark = self.color("--before")
        self.print()
        color, paper, rows = self.js("return window.printed")
        self.assertEqual(paper, "rgb(255, 255, 255)")
        self.assertNotEqual(color, dark)
        self.assertGreater(rows, 300)
        self.assertEqual(len(self.tables()[0]), 100)  # afterwards
        self.assertEqual(self.chart()[0][0]["borderColor"], dark)

    def test_without_scripts(self):
        self.open("a.bin", "b.bin")
        with open("page.html") as file:
            page = file.read()
        # As after changes by a mail filter, to the page's script and to Chart.js.
        for name, old, new in (("broken.html", '"use strict";\n\n(() => {', "(( => {"),
                               ("no_chart.html", "Chart.js", "Chart.JS")):
            with open(name, "w") as file:
                file.write(page.replace(old, new, 1))
        for name in ("page.html", "broken.html", "no_chart.html"):
            if name == "page.html":
                self.cdp("Emulation.setScriptExecutionDisabled", value=True)
            self.load(name)
            self.assertEqual(len(self.boxes("section.graph")), 3)
            self.assertEqual(len(self.boxes("tr[data-series]")), 71 + 40 + 10 + 6)
            self.assertIn("The script of this page did not run", self.text("main"))
            self.assertEqual(self.boxes("#panel, #tools"), [])
            self.cdp("Emulation.setScriptExecutionDisabled", value=False)
        self.assertIn("Content Security Policy",
                      self.browser.get_log("browser")[0]["message"])
        self.browser.get_log("performance")
        self.open("a.bin")
        self.assertNotIn("did not run", self.text("main"))

    def test_policy_and_head(self):
        self.open("detailed.bin")
        head = self.js("return document.head.innerHTML")
        self.assertIn('<meta charset="utf-8">', head)
        self.assertEqual(self.js("return document.characterSet"), "UTF-8")
        self.assertEqual(self.all("meta[name=viewport]")[0].get_attribute("content"),
                         "width=device-width, initial-scale=1")
        policy = self.all("meta[http-equiv=Content-Security-Policy]")[0].get_attribute(
            "content")
        self.assertRegex(policy, r"^default-src 'none'; script-src( 'sha256-\S{44}'){3}; "
                                 r"style-src 'sha256-\S{44}'; base-uri 'none'; "
                                 r"form-action 'none'$")
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
        self.assertNotEqual(self.style("#bad", "color"), "rgb(255, 0, 0)")
        refused = [line["message"] for line in self.browser.get_log("browser")
                   if "Content Security Policy" in line["message"]]
        self.assertGreaterEqual(len(refused), 5)
        self.assertEqual(len(self.all("tr[data-series].chosen")), 1)  # the page's own script runs
        self.assertIsNone(self.js("return window.hacked"))
        self.browser.get_log("performance")

    def test_bounds(self):
        def check(problem, count, limit, messages, schema=SCHEMA):
            write_log("many.bin", messages, schema)
            done = subprocess.run([f"{BUILD}/lumo-profile-page", "many.bin"],
                                  capture_output=True, text=True)
            limit = limit or 1000000 + 10 * os.path.getsize("many.bin")
            self.assertEqual(done.returncode, count > limit)
            self.assertRegex(done.stderr, f"^lumo-profile-page: too {problem}, more than {limit}"
                                          "( bytes)?\n$" if count > limit else "^$")
        event = {"name": "(execute)"}
        # All events have the same name, which the log has once.
        with open(SCHEMA) as file, open("shared.fbs", "w") as shared:
            shared.write(file.read().replace("name:string", "name:string (shared)"))
        for n in (0, 1):
            check(f"many different events for a page: {100000 + n}", 100000 + n, 100000,
                  [{"events": [event] + [{}] * (99999 + n)}])
            check(f"many graphs for a page: {1000 + n}", 1000 + n, 1000,
                  [{"graph_index": i, "events": [event]} for i in range(1000 + n)])
            check(r"(much text|many bytes of text) .*for a page: \d+", 1050000 + 150000 * n, None,
                  [{"events": [{"name": "(execute)" + "x" * 991}] * (1050 + 150 * n)}],
                  "shared.fbs")

    def test_accessibility(self):
        for logs in (["tuned.bin", "basic.bin"], ["old"]):
            self.open(*logs)
            for selector, problem in (
                    ("th:not([scope])", "a heading without a scope"),
                    ("table.series:not(:has(caption))", "a table without a caption"),
                    ("button:not([type=button])", "a button that submits"),
                    ("main svg:not([aria-hidden=true], [aria-hidden=true] svg)",
                     "a bar or strip that is read aloud"),
                    ("canvas:not([role=img][aria-label])", "a chart without a label"),
                    ("section:not([hidden]) tr[data-series]:not(:has(th [role=button][tabindex='0']"
                     "[aria-expanded]))", "a row that the keyboard does not reach")):
                self.assertEqual(self.all(selector), [], problem)
            for control in self.all("main input"):
                self.assertNotEqual("", self.js(
                    "return arguments[0].labels[0].textContent.trim()", control))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[4:], verbosity=2)
