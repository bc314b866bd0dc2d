// Shows one graph at a time, sorts and filters its tables, and draws the chart
// of the chosen row. It computes no figures: they come from the page.
"use strict";

(() => {
  // The number of rows that a table shows at first, and the most points of a
  // side in the chart or sub-events. With more, browsers become slow.
  const FIRST_ROWS = 100;
  const MAX_POINTS = 1000;

  const byId = (id) => document.getElementById(id);
  const data = JSON.parse(byId("data").textContent);
  const isCompared = data.sides === 2;
  const sideNames = isCompared ? ["Before", "After"] : [""];
  // What the points of a chart are.
  const noun = data.logs === undefined ? "run" : "log";
  const collator = new Intl.Collator("en", {numeric: true});

  // Returns a new element with this content: nodes, and texts, never markup.
  function makeElement(tag, className = "", ...content) {
    const element = document.createElement(tag);
    element.className = className;
    element.append(...content);
    return element;
  }

  function makeButton(onClick, ...content) {
    const button = makeElement("button", "", ...content);
    button.type = "button";
    button.addEventListener("click", onClick);
    return button;
  }

  // ---- The tables and their rows ----

  // All rows of the page, each at its number.
  const items = [];

  // Returns a table of the page, and adds its rows to `items`.
  function readTable(element) {
    const table = {
      section: element.closest("section"),
      body: element.tBodies[0],
      headings: [...element.tHead.rows[0].cells],
      count: element.querySelector(".count"),
      more: makeElement("p", "more"),
    };
    table.keys = table.headings.map(({dataset}) => dataset.key);
    table.items = [...table.body.rows].map((row) => readRow(row, table));
    table.items.forEach((item) => items.push(item));
    element.after(table.more);
    for (const heading of table.headings.filter(({dataset}) => dataset.key)) {
      heading.append(
          makeButton(() => sortBy(heading), ...heading.childNodes));
    }
    return table;
  }

  function readRow(row, table) {
    const item = {row, table, verdict: row.className};
    const node = textOf(item, "node");
    item.name = (node === "" ? "" : `node_id_${node}:`) + textOf(item, "name");
    return item;
  }

  // Returns the cell in the column with this key, if there is one.
  function cellOf({row, table}, key) {
    return row.cells[table.keys.indexOf(key)];
  }

  const textOf = (item, key) =>
      (cellOf(item, key) || {textContent: ""}).textContent;

  // Returns what a column sorts a row by: a number, a text, or nothing.
  function valueOf(item, key) {
    const cell = cellOf(item, key);
    return cell === undefined || cell.textContent === "" ? undefined
        : cell.dataset.value === undefined ? cell.textContent
        : Number(cell.dataset.value);
  }

  // Compares numbers or texts; missing values come last in both orders.
  function compareValues(a, b, direction) {
    if (a === undefined || b === undefined) {
      return (a === undefined) - (b === undefined);
    }
    return direction *
        (typeof a === "number" ? a - b : collator.compare(a, b));
  }

  // Returns rows in the order of the state; "" and unknown columns keep theirs.
  function sortItems(found) {
    const direction = state.sort.startsWith("-") ? -1 : 1;
    const key = state.sort.replace("-", "");
    return found.map((item) => [valueOf(item, key), item])
        .sort(([a], [b]) => compareValues(a, b, direction))
        .map(([, item]) => item);
  }

  // Returns the rows of a table that the state shows.
  function findItems(table) {
    const words = state.find.toLowerCase().split(/\s+/);
    const verdicts = new Map([["different", ["higher", "lower"]],
      ["one", ["only_before", "only_after"]]]).get(state.show);
    return table.items.filter(({verdict, name}) =>
        (verdicts === undefined || verdicts.includes(verdict)) &&
        words.every((word) => name.toLowerCase().includes(word)));
  }

  // Shows the rows of a table, at most `limit` of them.
  function renderTable(table, limit = FIRST_ROWS) {
    const found = findItems(table);
    const shown = sortItems(found).slice(0, limit);
    shown.forEach(prepareRow);
    table.body.replaceChildren(...shown.map(({row}) => row));
    const order = state.sort.startsWith("-") ? "descending" : "ascending";
    table.headings.forEach((heading, i) => heading.setAttribute("aria-sort",
        table.keys[i] === state.sort.replace("-", "") ? order : "none"));
    table.count.textContent = found.length === table.items.length
        ? `${found.length}` : `${found.length} of ${table.items.length}`;
    table.more.replaceChildren(found.length === 0 ? "No row is found." : "");
    if (found.length > limit) {
      const button = makeButton(() => renderTable(table, Infinity), "Show all");
      table.more.append(`The first ${limit} of ${found.length} rows. `, button);
    }
  }

  // Makes the name in a row a button for keyboard users, and marks the chosen
  // row. The text can be selected, unlike that of a button element.
  function prepareRow(item) {
    const heading = item.row.querySelector("th");
    if (item.button === undefined) {
      item.button = makeElement("span", "", ...heading.childNodes);
      item.button.setAttribute("role", "button");
      item.button.tabIndex = 0;
      heading.append(item.button);
    }
    item.button.setAttribute("aria-expanded", item === state.item);
    item.row.classList.toggle("chosen", item === state.item);
  }

  // ---- The state, which is also in the address of the page ----

  // The section of the graph, and the chosen row or null. Texts are the column
  // to sort by, after a "-" if descending, words, "different" or "one" for such
  // rows, and "0" if the scale of the chart begins there.
  const TEXTS = ["sort", "find", "show", "from"];
  const state = {section: null, item: null};

  const firstItemOf = (section) =>
      items.find(({table}) => table.section === section);

  // Returns the state at the address. Links of the page are addresses, too.
  function readAddress(address) {
    const link = /^#(graph|row)-(\d+)$/.exec(address);
    const fields = new URLSearchParams(link === null ? address.slice(1)
        : {[link[1] === "row" ? "operation" : "graph"]: link[2]});
    const operation = fields.get("operation");
    const item = items[parseInt(operation, 10)];
    const section = item !== undefined ? item.table.section
        : byId(`graph-${fields.get("graph") || ""}`) || sections[0];
    return {
      section,
      item: operation === "none" ? null : item || firstItemOf(section),
      ...Object.fromEntries(TEXTS.map((key) => [key, fields.get(key) || ""])),
    };
  }

  // Returns the address of a state, without what is so at the start.
  function addressOf({section, item, ...texts}) {
    const graph = section === sections[0] ? "" : section.id.split("-")[1];
    const operation = item === firstItemOf(section) ? ""
        : item === null ? "none" : items.indexOf(item);
    const fields = Object.entries({graph, operation, ...texts});
    return "#" + new URLSearchParams(fields.filter(([, text]) => text !== ""));
  }

  // Shows a changed state and puts it into the address, which becomes a new
  // entry of the history if `isNew`.
  function change(changes, isNew = true) {
    showState({...state, ...changes});
    const address = addressOf(state);
    if (address !== (location.hash || "#")) {
      location[isNew ? "assign" : "replace"](address);
    }
  }

  // Sorts by a column, numbers in descending order first; then reverses the
  // order.
  function sortBy(heading) {
    const {key} = heading.dataset;
    const orders = heading.classList.contains("number")
        ? [`-${key}`, key] : [key, `-${key}`];
    change({sort: state.sort === orders[0] ? orders[1] : orders[0]}, false);
  }

  // Shows a state.
  function showState(next) {
    const last = {...state};
    const isNew = (field) => state[field] !== last[field];
    Object.assign(state, next);
    const {section, item} = state;
    if (isNew("section")) {
      sections.forEach((other) => { other.hidden = other !== section; });
      section.querySelector(".tables").prepend(byId("tools"));
      section.querySelector(".columns").prepend(byId("panel"));
      for (const link of document.querySelectorAll(".overview th a")) {
        const isChosen = link.getAttribute("href") === `#${section.id}`;
        link.closest("tr").classList.toggle("chosen", isChosen);
        link.setAttribute("aria-current", isChosen);
      }
    }
    if (["section", "sort", "find", "show"].some(isNew)) {
      shownTables().forEach((table) => renderTable(table));
    }
    byId("find").value = state.find;
    byId("start-order").hidden = state.sort === "";
    for (const button of byId("show").querySelectorAll("button")) {
      button.setAttribute("aria-pressed", button.value === state.show);
    }
    byId("from-zero").checked = state.from === "0";
    if (["section", "item", "from"].some(isNew)) {
      [last.item, item].filter(Boolean).forEach(prepareRow);
      showPanel();
    }
  }

  const shownTables = () =>
      tables.filter((table) => table.section === state.section);

  // ---- The chart ----

  let chart;
  // Without Chart.js, this fails before anything on the page is changed.
  Chart.defaults.animation = false;
  const color = (name) => getComputedStyle(document.documentElement)
      .getPropertyValue(name).trim();
  const colorOf = (side) => color(side === 0 ? "--before" : "--after");

  // How many neighboring values share two points; 1 if every value has its own.
  function groupSize(values) {
    return values.length <= MAX_POINTS
        ? 1 : Math.ceil(2 * values.length / MAX_POINTS);
  }

  // Returns the values of runs as points. If there are too many, only the least
  // and the greatest of each group of neighbors are kept: no outlier is lost.
  function makeRunPoints({values, runs, excluded}) {
    const size = groupSize(values);
    const points = [];
    for (let begin = 0; begin < values.length; begin += size) {
      const end = Math.min(begin + size, values.length);
      let least = begin;
      let greatest = begin;
      for (let i = begin; i < end; ++i) {
        least = values[i] < values[least] ? i : least;
        greatest = values[i] > values[greatest] ? i : greatest;
      }
      for (const i of new Set([least, greatest].sort((a, b) => a - b))) {
        const x = runs === undefined ? i : runs[i];
        points.push({x, y: values[i], stdev: 0, isWarmUp: i < excluded});
      }
    }
    return points;
  }

  // Returns a point for each log of a side, without a value if it has none.
  function makeLogPoints({logs}, side) {
    const points = data.logs[side].map(
        (_, log) => ({x: log + 1, y: NaN, stdev: 0, isWarmUp: false}));
    for (const [log, mean, stdev] of logs) {
      Object.assign(points[log], {y: mean, stdev: stdev || 0});
    }
    return points;
  }

  // Returns the dataset of a side, with its mean and deviation if they exist.
  function makeDataset(series, side) {
    const points = data.logs === undefined
        ? makeRunPoints(series) : makeLogPoints(series, side);
    const own = colorOf(side);
    return {
      side,
      data: points,
      mean: valueOf(
          state.item, isCompared ? ["before", "after"][side] : "mean"),
      stdev: series.stdev || 0,
      showLine: data.logs !== undefined,
      borderColor: own,
      borderWidth: 1,
      clip: {left: 5, top: 0, right: 5, bottom: 0},
      // Warm-up runs are hollow.
      pointBackgroundColor: points.map((p) => p.isWarmUp ? "transparent" : own),
      pointStyle: side === 0 ? "circle" : "rect",
      pointRadius: points.length > 100 ? 1.5 : 3,
    };
  }

  // Returns the range of the means, the values after the warm-up, and their
  // deviations; of all values if there is none after the warm-up.
  function rangeOf(datasets) {
    const all = datasets.flatMap(({data: points}) => points)
        .filter(({y}) => !Number.isNaN(y));
    const counted = all.filter(({isWarmUp}) => !isWarmUp);
    const bands = datasets.filter(({mean}) => mean !== undefined)
        .map(({mean, stdev}) => ({y: mean, stdev}));
    const ends = [...bands, ...counted.length > 0 ? counted : all]
        .flatMap(({y, stdev}) => [y - stdev, y + stdev]);
    const least = Math.min(...ends);
    const greatest = Math.max(...ends);
    const room = 0.05 * (greatest - least) || 0.05 * greatest || 1;
    const min = byId("from-zero").checked ? 0 : Math.max(0, least - room);
    return {min, max: greatest + room};
  }

  // Draws the mean of each side with a band of one deviation, the deviations of
  // logs, and triangles for values beyond the scale.
  function drawMarks({ctx, chartArea: area, scales: {x, y}, data: {datasets}}) {
    const fill = (left, width, high, low) => ctx.fillRect(
        left, y.getPixelForValue(high), width,
        y.getPixelForValue(low) - y.getPixelForValue(high));
    ctx.save();
    ctx.beginPath();
    ctx.rect(area.left - 5, area.top, area.width + 10, area.height);
    ctx.clip();
    ctx.textAlign = "center";
    for (const {side, mean, stdev, data: points} of datasets) {
      ctx.fillStyle = colorOf(side);
      if (mean !== undefined) {
        ctx.globalAlpha = 0.15;
        fill(area.left, area.width, mean + stdev, mean - stdev);
        ctx.globalAlpha = 1;
        ctx.fillRect(
            area.left, y.getPixelForValue(mean) - 0.75, area.width, 1.5);
      }
      for (const point of points) {
        const left = x.getPixelForValue(point.x);
        fill(left - 0.5, 1, point.y + point.stdev, point.y - point.stdev);
        if (point.y > y.max) {
          ctx.fillText("▲", left, area.top + 10);
        } else if (point.y < y.min) {
          ctx.fillText("▼", left, area.bottom - 2);
        }
      }
    }
    ctx.restore();
  }

  // Returns what is read when a point is pointed at.
  function pointText({y, x, stdev, isWarmUp}, side, unit) {
    return [sideNames[side], y.toLocaleString("en-US"),
      stdev > 0 ? `± ${stdev.toLocaleString("en-US")}` : "", unit,
      isWarmUp ? "(warm-up)" : "",
      ...data.logs === undefined ? [] : data.logs[side][x - 1],
    ].filter(Boolean).join(" ");
  }

  function chartOptions(datasets, unit) {
    const axis = (text) => ({
      title: {display: true, text, color: color("--quiet")},
      ticks: {color: color("--quiet"), precision: 0, includeBounds: false},
      grid: {color: color("--line")},
    });
    const first = data.logs === undefined ? 0 : 1;
    const last = datasets.flatMap(({data: points}) => points)
        .reduce((most, {x}) => Math.max(most, x), first);
    return {
      parsing: false,
      maintainAspectRatio: false,
      interaction: {mode: "nearest", axis: "x", intersect: false},
      scales: {
        x: {type: "linear", min: first - 0.5, max: last + 0.5, ...axis(noun)},
        y: {...rangeOf(datasets), ...axis(unit)},
      },
      plugins: {
        legend: {display: false},
        tooltip: {callbacks: {
          title: ([point]) => point === undefined
              ? "" : `${noun} ${point.parsed.x}`,
          label: ({raw, dataset}) => pointText(raw, dataset.side, unit),
        }},
      },
    };
  }

  // What the chart shows.
  function chartNote(sides) {
    const hasWarmUp = sides.some(({excluded}) => excluded > 0);
    const groups = sides.map(({values = []}) => values)
        .filter((values) => groupSize(values) > 1)
        .map((values) => " The smallest and the largest of every " +
            `${groupSize(values)} of ${values.length} values.`);
    return (data.logs === undefined ? "" : "Each point is a log. ") +
        "Line and band: mean ± std. dev." +
        (hasWarmUp ? " Hollow or triangle: warm-up." : "") + groups.join("");
  }

  // Draws the chosen row.
  function drawChart() {
    if (state.item === null) {
      return;
    }
    const {sides, unit} = JSON.parse(state.item.row.dataset.series);
    const datasets = sides.map((side, i) => side && makeDataset(side, i))
        .filter(Boolean);
    byId("chart-note").textContent = chartNote(sides.filter(Boolean));
    if (chart !== undefined) {
      chart.destroy();
    }
    chart = new Chart(byId("chart"), {
      type: "scatter",
      data: {datasets},
      options: chartOptions(datasets, unit),
      plugins: [{id: "marks", beforeDatasetsDraw: drawMarks}],
    });
  }

  // ---- The panel of the chosen row ----

  // Returns a row of headings, or a heading with figures.
  function makeRow(heading, texts, tag = "td") {
    const row = makeElement("tr", "", makeElement("th", "", ...heading),
        ...texts.map((text) => makeElement(tag, "number", text)));
    row.querySelectorAll("th").forEach((cell) => cell.setAttribute(
        "scope", tag === "th" ? "col" : "row"));
    return row;
  }

  // The square with the color of a side in the chart, and its name.
  const keyOf = (side) => isCompared ? [makeElement("span",
      side === 0 ? "key before" : "key after"), sideNames[side]] : [];

  function showFigures(sides) {
    const keys = ["min", "median", "p90", "max"].filter((key) => sides.some(
        (side) => side !== null && side.figures && side.figures[key]));
    byId("figures").replaceChildren(makeRow([], [...keys, "n"], "th"));
    sides.forEach((side, i) => {
      if (side !== null) {
        const texts = keys.map((key) => (side.figures || {})[key] || "");
        byId("figures").append(makeRow(keyOf(i), [...texts, `${side.n}`]));
      }
    });
  }

  function showParts({unit: ownUnit, parts}) {
    byId("parts").hidden = parts.length === 0;
    byId("parts").replaceChildren(makeRow(["Sub-events"],
        sideNames.flatMap((name) => [name || "Mean", "Share"]), "th"));
    for (const [depth, name, unit, ...sides] of parts.slice(0, MAX_POINTS)) {
      const texts = sides.flatMap((side) => side === null ? ["", ""]
          : [side[0] + (unit === ownUnit ? "" : ` ${unit}`), side[1]]);
      byId("parts").append(makeRow(
          ["\u2003".repeat(depth), makeElement("bdi", "", name)], texts));
    }
    byId("parts-note").textContent = parts.length === 0 ? "No sub-events."
        : parts.length > MAX_POINTS ? `These are the first ${MAX_POINTS}.` : "";
  }

  // Shows the chosen row.
  function showPanel() {
    const {item} = state;
    byId("none-chosen").hidden = item !== null;
    byId("chosen").hidden = item === null;
    if (item === null) {
      return;
    }
    const series = JSON.parse(item.row.dataset.series);
    byId("chosen-name").replaceChildren(
        makeElement("span", "quiet", textOf(item, "node")), " ",
        ...item.button.cloneNode(true).childNodes);
    byId("chosen-verdict").replaceChildren(
        makeElement("b", item.verdict,
            `${textOf(item, "verdict")} ${textOf(item, "change")}`),
        series.interval === undefined ? "" : ` (${series.interval})`,
        series.p === undefined ? "" : ` p ${series.p.replace("-", "−")}`);
    byId("copy-text").textContent = "Copy as text";
    byId("copy-link").textContent = "Copy link";
    showFigures(series.sides);
    showParts(series);
    drawChart();
  }

  // Returns the chosen row and its panel as text.
  function chosenText() {
    const {item} = state;
    const lines = [item.name];
    for (const {dataset: {key}, textContent} of item.table.headings) {
      if (key && !["node", "name"].includes(key) && textOf(item, key) !== "") {
        lines.push(`${textContent}: ${textOf(item, key)}`);
      }
    }
    lines.push(byId("chosen-verdict").textContent);
    for (const row of byId("chosen").querySelectorAll("tr")) {
      lines.push([...row.cells].map((cell) => cell.textContent).join("\t"));
    }
    return lines.join("\n");
  }

  // Copies a text; the button says so until another row is chosen.
  function copy(text, button) {
    const area = makeElement("textarea", "", text);
    document.body.append(area);
    area.focus();
    area.select();
    document.execCommand("copy");
    area.remove();
    button.textContent = "Copied";
  }

  // ---- The page ----

  // Chooses a row, or closes its panel if it is chosen.
  function toggleRow(chosen) {
    const item = items.find(({row}) => row === chosen);
    change({item: item === state.item ? null : item});
  }

  // Follows a link, also of a row of the overview, or chooses a row, unless
  // text has been selected or the browser opens a new tab.
  function onClick(event) {
    const graph = event.target.closest(".overview tbody tr");
    const link = event.target.closest("a[href^='#']") ||
        (graph && graph.querySelector("th a"));
    const row = event.target.closest("tr[data-series]");
    if (event.ctrlKey || event.metaKey || !getSelection().isCollapsed) {
      return;
    }
    if (link !== null) {
      event.preventDefault();
      const {section, item} = readAddress(link.getAttribute("href"));
      change({section, item});
    } else if (row !== null) {
      toggleRow(row);
    }
  }

  function onKey(event) {
    const isPressed = [" ", "Enter"].includes(event.key);
    if (isPressed && event.target.matches("tr [role=button]")) {
      event.preventDefault();
      toggleRow(event.target.closest("tr"));
    }
  }

  // A piece of a strip is read in the heading of its graph.
  function onPoint(event) {
    const piece = event.target.closest(".strip svg svg");
    const heading = state.section.querySelector(".summary");
    heading.dataset.text = heading.dataset.text || heading.textContent;
    heading.textContent = piece === null
        ? heading.dataset.text : piece.querySelector("title").textContent;
  }

  // Shows all rows on paper, in the colors of paper.
  function setPaper(isPaper) {
    document.documentElement.classList.toggle("paper", isPaper);
    shownTables().forEach(
        (table) => renderTable(table, isPaper ? Infinity : FIRST_ROWS));
    drawChart();
  }

  function start() {
    document.addEventListener("click", onClick);
    document.addEventListener("keydown", onKey);
    document.addEventListener("pointerover", onPoint);
    for (const button of byId("show").querySelectorAll("button")) {
      button.addEventListener("click", () => change({show: button.value}));
    }
    byId("show").hidden = !isCompared;
    const on = (id, type, run) => byId(id).addEventListener(type, run);
    on("find", "input", () => change({find: byId("find").value}, false));
    on("start-order", "click", () => change({sort: ""}, false));
    on("from-zero", "change",
        ({target}) => change({from: target.checked ? "0" : ""}, false));
    on("copy-text", "click", ({target}) => copy(chosenText(), target));
    on("copy-link", "click", ({target}) => copy(location.href, target));
    matchMedia("(prefers-color-scheme: dark)")
        .addEventListener("change", drawChart);
    addEventListener("beforeprint", () => setPaper(true));
    addEventListener("afterprint", () => setPaper(false));
    addEventListener("hashchange", () => {
      if (addressOf(state) !== (location.hash || "#")) {
        showState(readAddress(location.hash));
      }
    });
    byId("tools").hidden = false;
    byId("panel").hidden = false;
    showState(readAddress(location.hash));
  }

  const tables =
      [...document.querySelectorAll("table.series")].map(readTable);
  const sections = [...document.querySelectorAll("section.graph")];
  if (sections.length > 0) {
    start();
  }
  byId("no-script").remove();
  document.documentElement.classList.remove("loading");
})();
