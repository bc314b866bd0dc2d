// Shows one graph at a time, sorts and filters its tables, and draws the chart of
// the chosen row. It computes no figures: they come from the page.
"use strict";

(() => {
  // The number of rows that a table shows at first, and the maximum number of
  // points of a side in the chart. With more, browsers become slow.
  const FIRST_ROWS = 200;
  const MAX_POINTS = 1000;

  const byId = (id) => document.getElementById(id);
  const root = document.documentElement;
  const data = JSON.parse(byId("data").textContent);
  const sideNames = data.sides === 2 ? ["Before", "After"] : ["Values"];
  const collator = new Intl.Collator("en", {numeric: true});

  // Returns a new element with this content: texts, never markup, or nodes.
  function makeElement(tag, className = "", ...content) {
    const element = document.createElement(tag);
    element.className = className;
    element.append(...content);
    return element;
  }

  function makeButton(...content) {
    const button = makeElement("button", "", ...content);
    button.type = "button";
    return button;
  }

  // "1 run", "2 runs"
  function countText(count, noun) {
    return `${count} ${noun}${count === 1 ? "" : "s"}`;
  }

  // ---- The rows of all tables, by their numbers ----

  const rows = [...document.querySelectorAll("tr[data-series]")];
  const sections = [...document.querySelectorAll("section.graph")];
  const sectionOf = new Map();
  for (const section of sections) {
    for (const row of section.querySelectorAll("tr[data-series]")) {
      sectionOf.set(row, section);
    }
  }
  // The verdict, which other classes of a row do not change.
  const verdictOf = new Map(rows.map((row) => [row, row.className]));

  const headingsOf = (row) =>
      row.closest("table").tHead.rows[0].cells;

  // ---- The state, which is also in the address of the page ----

  // graph: the id of its section; row: the number of the chosen row, or -1;
  // sort: the key of a column, after a "-" if descending; find: words; show:
  // "different", "one" or everything.
  const state = {graph: "", row: 0, sort: "", find: "", show: ""};

  const firstRowOf = (section) =>
      rows.findIndex((row) => sectionOf.get(row) === section);

  // Returns the state at the address.
  function readAddress() {
    const link = /^#(row|graph)-(\d+)$/.exec(location.hash);
    const fields = new URLSearchParams(link === null
        ? location.hash.slice(1)
        : {[link[1] === "row" ? "operation" : "graph"]: link[2]});
    const operation = fields.get("operation");
    let row = operation === "none" ? -1 : Number.parseInt(operation, 10);
    let section = byId(`graph-${fields.get("graph")}`);
    if (row in rows && section === null) {
      section = sectionOf.get(rows[row]);
    }
    section = sections.includes(section) ? section : sections[0];
    if (row !== -1 && sectionOf.get(rows[row]) !== section) {
      row = firstRowOf(section);
    }
    return {
      graph: section.id,
      row,
      sort: fields.get("sort") || "",
      find: fields.get("find") || "",
      show: fields.get("show") || "",
    };
  }

  // Returns the address of the state, without what is so at the start.
  function addressOf({graph, row, sort, find, show}) {
    const fields = new URLSearchParams();
    if (graph !== sections[0].id) {
      fields.set("graph", graph.replace("graph-", ""));
    }
    if (row !== firstRowOf(byId(graph))) {
      fields.set("operation", row === -1 ? "none" : row);
    }
    for (const [key, value] of Object.entries({sort, find, show})) {
      if (value !== "") {
        fields.set(key, value);
      }
    }
    return `#${fields}`;
  }

  // Shows a state and puts it into the address: as a new entry of the history, or
  // in place of the last one.
  function change(changes, isNew = true) {
    const next = {...state, ...changes};
    if (next.graph !== state.graph && !("row" in changes)) {
      next.row = firstRowOf(byId(next.graph));
    }
    const address = addressOf(next);
    show(next);
    if (address !== (location.hash || "#")) {
      if (isNew) {
        location.hash = address;
      } else {
        location.replace(address);
      }
    }
  }

  // ---- The tables ----

  // The tables of each section, set up when it is first shown.
  const tablesOf = new Map();

  function setUpTable(element) {
    const body = element.tBodies[0];
    const table = {
      body,
      headings: [...element.tHead.rows[0].cells],
      rows: [...body.rows].map((row) => ({
        row,
        verdict: verdictOf.get(row),
        text: nameOf(row).toLowerCase(),
      })),
      count: element.querySelector(".count"),
      more: makeElement("p", "more"),
      moreText: makeElement("span"),
      moreButton: makeButton(),
    };
    table.more.append(table.moreText, " ", table.moreButton);
    table.moreButton.addEventListener(
        "click", () => renderTable(table, Infinity));
    element.after(table.more);
    for (const heading of element.tHead.querySelectorAll("th[data-key]")) {
      const button = makeButton(...heading.childNodes);
      button.addEventListener("click", () => sortBy(heading));
      heading.append(button);
    }
    return table;
  }

  // Returns the name of a row with its node id, as logs have it.
  function nameOf(row) {
    const name = row.querySelector("th").textContent;
    const headings = headingsOf(row);
    const node = headings[0].dataset.key === "node"
        ? row.cells[0].textContent : "";
    return node === "" ? name : `node_id_${node}:${name}`;
  }

  // Sorts by a column, numbers in descending order first; then reverses the
  // order.
  function sortBy(heading) {
    const {key} = heading.dataset;
    const first = heading.classList.contains("number") ? `-${key}` : key;
    const second = heading.classList.contains("number") ? key : `-${key}`;
    change({sort: state.sort === first ? second : first}, false);
  }

  // Returns what a column sorts a row by: a number or a text; nothing if it is
  // missing.
  function valueAt(row, index) {
    const cell = row.cells[index];
    if (cell.dataset.value !== undefined) {
      return Number(cell.dataset.value);
    }
    return cell.textContent === "" || cell.classList.contains("number")
        ? undefined : cell.textContent;
  }

  // Compares numbers or texts; missing values come last in both orders.
  function compareValues(a, b, direction) {
    if (a === undefined || b === undefined) {
      return (a === undefined) - (b === undefined);
    }
    return direction *
        (typeof a === "number" ? a - b : collator.compare(a, b));
  }

  // Returns the rows in the order of the state.
  function sortRows(found, headings) {
    const key = state.sort.replace("-", "");
    const index =
        headings.findIndex((heading) => heading.dataset.key === key);
    if (key === "" || index === -1) {
      return found;
    }
    const direction = state.sort.startsWith("-") ? -1 : 1;
    return found.map((item) => ({...item, value: valueAt(item.row, index)}))
        .sort((a, b) => compareValues(a.value, b.value, direction));
  }

  // Whether the state shows a row.
  function isShown({verdict, text}, words) {
    const isListed = state.show === "different"
        ? verdict === "higher" || verdict === "lower"
        : state.show !== "one" || verdict.startsWith("only");
    return isListed && words.every((word) => text.includes(word));
  }

  // Shows the rows of a table, at most `limit` of them.
  function renderTable(table, limit = FIRST_ROWS) {
    const words = state.find.toLowerCase().split(/\s+/);
    const found = table.rows.filter((item) => isShown(item, words));
    const shown = sortRows(found, table.headings).slice(0, limit);
    for (const {row} of shown) {
      addButton(row);
    }
    table.body.replaceChildren(...shown.map(({row}) => row));
    for (const heading of table.headings) {
      const {key} = heading.dataset;
      if (key !== undefined && key === state.sort.replace("-", "")) {
        heading.setAttribute("aria-sort",
            state.sort.startsWith("-") ? "descending" : "ascending");
      } else {
        heading.removeAttribute("aria-sort");
      }
    }
    table.count.textContent = found.length === table.rows.length
        ? `${found.length}` : `${found.length} of ${table.rows.length}`;
    table.more.hidden = found.length > 0 && found.length <= limit;
    table.moreText.textContent = found.length === 0
        ? "No row is found." : `The first ${limit} of ${found.length} rows.`;
    table.moreButton.hidden = found.length === 0;
    table.moreButton.textContent = `Show all ${found.length}`;
  }

  // Makes the name in a row a button, for keyboard users. Its text can still be
  // selected, which a button element does not allow.
  function addButton(row) {
    const heading = row.querySelector("th");
    if (heading.querySelector("[role=button]") === null) {
      const button = makeElement("span", "", ...heading.childNodes);
      button.setAttribute("role", "button");
      button.setAttribute("aria-expanded", "false");
      button.tabIndex = 0;
      heading.append(button);
    }
  }

  function markRow(number, isChosen) {
    if (number in rows) {
      addButton(rows[number]);
      rows[number].classList.toggle("chosen", isChosen);
      rows[number].querySelector("[role=button]")
          .setAttribute("aria-expanded", isChosen);
    }
  }

  // ---- The chart ----

  let chart = null;

  function color(name) {
    return getComputedStyle(root).getPropertyValue(name).trim();
  }

  const colorOf = (side) => color(side === 0 ? "--before" : "--after");

  // Returns the points of a series. If there are too many, only the least and the
  // greatest of each group of neighbors are kept, so that no outlier is lost.
  function makePoints({values, runs, excluded, logs}, side) {
    if (data.logs !== undefined) {
      const points =
          data.logs[side].map((_, log) => ({x: log + 1, y: NaN, stdev: null}));
      for (const [log, mean, stdev] of logs) {
        points[log] = {x: log + 1, y: mean, stdev};
      }
      return points;
    }
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
        points.push({x, y: values[i], isWarmUp: i < excluded});
      }
    }
    return points;
  }

  // How many neighboring values share two points; 1 if every value has its own.
  function groupSize(values) {
    return values.length <= MAX_POINTS
        ? 1 : Math.ceil(2 * values.length / MAX_POINTS);
  }

  function makeDataset(series, side) {
    const points = makePoints(series, side);
    const own = colorOf(side);
    return {
      label: sideNames[side],
      data: points,
      side,
      showLine: data.logs !== undefined,
      borderColor: own,
      borderWidth: 1,
      // Warm-up runs are hollow.
      backgroundColor: own,
      pointBackgroundColor:
          points.map((point) => point.isWarmUp ? "transparent" : own),
      pointBorderColor: own,
      pointStyle: side === 0 ? "circle" : "rect",
      pointRadius: points.length > 100 ? 1.5 : 3,
    };
  }

  // Returns the range of the values after the warm-up and their means and
  // deviations.
  function rangeOf(datasets, marks) {
    const values = marks.flatMap(
        ({mean, stdev}) => [mean - stdev, mean + stdev]);
    for (const {data: points} of datasets) {
      const counted = points.filter((point) => !point.isWarmUp);
      for (const {y, stdev} of counted.length > 0 ? counted : points) {
        if (!Number.isNaN(y)) {
          values.push(y - (stdev || 0), y + (stdev || 0));
        }
      }
    }
    const least = values.reduce((a, b) => Math.min(a, b), Infinity);
    const greatest = values.reduce((a, b) => Math.max(a, b), -Infinity);
    const room = 0.05 * (greatest - least) || 0.05 * greatest || 1;
    return {
      min: byId("from-zero").checked ? 0 : Math.max(0, least - room),
      max: greatest + room,
    };
  }

  // Draws the mean of each side with a band of one deviation, the deviations of
  // logs, and triangles for warm-up runs beyond the scale.
  function drawMarks(drawn, marks) {
    const {ctx, chartArea: area, scales: {x, y}} = drawn;
    ctx.save();
    ctx.beginPath();
    ctx.rect(area.left, area.top, area.width, area.height);
    ctx.clip();
    for (const {side, mean, stdev} of marks) {
      ctx.fillStyle = colorOf(side);
      const top = y.getPixelForValue(mean + stdev);
      ctx.globalAlpha = 0.15;
      ctx.fillRect(
          area.left, top, area.width, y.getPixelForValue(mean - stdev) - top);
      ctx.globalAlpha = 1;
      ctx.fillRect(area.left, y.getPixelForValue(mean) - 0.75, area.width, 1.5);
    }
    for (const dataset of drawn.data.datasets) {
      ctx.fillStyle = colorOf(dataset.side);
      for (const point of dataset.data) {
        const left = x.getPixelForValue(point.x);
        if (point.stdev) {
          const top = y.getPixelForValue(point.y + point.stdev);
          ctx.fillRect(left - 0.5, top, 1,
              y.getPixelForValue(point.y - point.stdev) - top);
        }
        const edge = point.y > y.max ? area.top : area.bottom;
        const height = point.y > y.max ? 8 : -8;
        if (point.y > y.max || point.y < y.min) {
          ctx.beginPath();
          ctx.moveTo(left, edge);
          ctx.lineTo(left - 5, edge + height);
          ctx.lineTo(left + 5, edge + height);
          ctx.fill();
        }
      }
    }
    ctx.restore();
  }

  // Returns what the chart counts: runs, or the logs of folders.
  const counted = data.logs === undefined ? "run" : "log";

  function pointText(point, side, unit) {
    const number = point.y.toLocaleString("en-US");
    if (data.logs === undefined) {
      return `${number} ${unit}${point.isWarmUp ? " (warm-up)" : ""}`;
    }
    const [path, date] = data.logs[side][point.x - 1];
    const stdev = point.stdev === null
        ? "" : ` ± ${point.stdev.toLocaleString("en-US")}`;
    return `${number}${stdev} ${unit}, ${path}, ${date}`;
  }

  function chartOptions(datasets, marks, unit) {
    const axis = (text) => ({
      title: {display: true, text, color: color("--quiet")},
      ticks: {color: color("--quiet"), precision: 0, includeBounds: false},
      grid: {color: color("--line")},
    });
    const last = datasets.flatMap((set) => set.data)
        .reduce((most, point) => Math.max(most, point.x), 0);
    return {
      animation: false,
      parsing: false,
      maintainAspectRatio: false,
      interaction: {mode: "nearest", axis: "x", intersect: false},
      scales: {
        x: {
          type: "linear",
          min: data.logs === undefined ? -0.5 : 0.5,
          max: last + 0.5,
          ...axis(counted),
        },
        y: {...rangeOf(datasets, marks), ...axis(unit)},
      },
      plugins: {
        legend: {
          display: data.sides === 2,
          labels: {
            color: color("--text"),
            usePointStyle: true,
            boxHeight: 7,
          },
        },
        tooltip: {
          callbacks: {
            title: (items) =>
                items.length > 0 ? `${counted} ${items[0].parsed.x}` : "",
            label: ({raw, dataset}) =>
                (data.sides === 2 ? `${dataset.label}: ` : "") +
                pointText(raw, dataset.side, unit),
          },
        },
      },
    };
  }

  // What the chart shows, besides the values.
  function chartNote(series) {
    const notes = [data.logs === undefined ? "Line and band: mean ± std. dev."
        : "Each point is the mean of a log ± std. dev."];
    const excluded =
        series.filter((side) => side !== null && side.excluded > 0);
    if (excluded.length > 0) {
      notes.push("Hollow or triangle: warm-up.");
    }
    series.forEach((side, i) => {
      if (side !== null && side.values !== undefined) {
        const name = data.sides === 2 ? `${sideNames[i]}: ` : "";
        const size = groupSize(side.values);
        if (size > 1) {
          notes.push(`${name}${side.values.length} values, of every ${size} ` +
              "the smallest and the largest.");
        }
      }
    });
    return notes.join(" ");
  }

  // Draws the chosen row.
  function drawChart() {
    if (state.row === -1) {
      return;
    }
    const row = rows[state.row];
    const {sides, unit} = JSON.parse(row.dataset.series);
    const means = [...row.querySelectorAll("td.mean")];
    const marks = sides.map((side, i) => side !== null && side.n > 0 && {
      side: i,
      mean: Number(means[i].dataset.value),
      stdev: side.stdev || 0,
    }).filter(Boolean);
    const datasets = sides.map((side, i) => side !== null &&
        makeDataset(side, i)).filter(Boolean);
    byId("chart-note").textContent = chartNote(sides);
    byId("chart").setAttribute("aria-label",
        `Chart of the values${unit === "" ? "" : ` in ${unit}`}. ` +
        "The tables have the figures.");
    if (chart !== null) {
      chart.destroy();
    }
    chart = new Chart(byId("chart"), {
      type: "scatter",
      data: {datasets},
      options: chartOptions(datasets, marks, unit),
      plugins: [{
        id: "marks",
        beforeDatasetsDraw: (drawn) => drawMarks(drawn, marks),
      }],
    });
  }

  // ---- The panel of the chosen row ----

  // Returns the cell of a row in the column with this key, or null.
  function cellOf(row, key) {
    const index = [...row.closest("table").tHead.rows[0].cells]
        .findIndex((heading) => heading.dataset.key === key);
    return index === -1 ? null : row.cells[index];
  }

  function makeRow(texts, isHeading) {
    const row = makeElement("tr");
    texts.forEach((text, i) => {
      const cell = makeElement(
          isHeading || i === 0 ? "th" : "td", i > 0 ? "number" : "", text);
      if (cell.tagName === "TH") {
        cell.scope = isHeading ? "col" : "row";
      }
      row.append(cell);
    });
    return row;
  }

  function showFigures({sides}) {
    const keys = ["min", "median", "p90", "max"].filter((key) => sides.some(
        (side) => side !== null && side.figures && side.figures[key]));
    byId("figures").replaceChildren(makeRow(["", ...keys, "n"], true));
    sides.forEach((side, i) => {
      if (side !== null) {
        const figures = side.figures || {};
        byId("figures").append(makeRow(
            [sideNames[i], ...keys.map((key) => figures[key] || ""),
              `${side.n}`], false));
      }
    });
  }

  function showParts({parts = [], is_cut: isCut}) {
    byId("parts").hidden = parts.length === 0;
    const headings = sideNames.flatMap((name) => [
      data.sides === 2 ? name : "Mean", "Share"]);
    byId("parts").replaceChildren(makeRow(["Sub-events", ...headings], true));
    for (const [depth, name, unit, ...sides] of parts) {
      const texts = sides.flatMap((side) => side === null ? ["", ""]
          : [`${side[0]} ${side[0] === "" ? "" : unit}`.trim(), side[1]]);
      const row = makeRow(["", ...texts], false);
      row.cells[0].append(
          "\u2003".repeat(depth), makeElement("bdi", "", name));
      byId("parts").append(row);
    }
    byId("parts-note").textContent = parts.length === 0 ? "No sub-events."
        : isCut ? `Only the first ${parts.length} sub-events are shown.` : "";
  }

  function showPanel() {
    byId("none-chosen").hidden = state.row !== -1;
    byId("chosen").hidden = state.row === -1;
    if (state.row === -1) {
      return;
    }
    const row = rows[state.row];
    const series = JSON.parse(row.dataset.series);
    byId("chosen-name").replaceChildren(
        ...[...row.querySelectorAll("th bdi, th .text-note, th .quiet")]
            .flatMap((part) => [part.cloneNode(true), " "]));
    const node = cellOf(row, "node");
    if (node !== null) {
      byId("chosen-name").prepend(
          makeElement("span", "quiet", node.textContent), " ");
    }
    byId("chosen-verdict").replaceChildren();
    if (data.sides === 2) {
      const change = cellOf(row, "change").textContent;
      byId("chosen-verdict").append(makeElement("b", verdictOf.get(row),
          cellOf(row, "verdict").textContent,
          change === "" ? "" : `, ${change}`));
      if (series.interval !== undefined) {
        byId("chosen-verdict").append(` (${series.interval})`);
      }
      if (series.p !== undefined) {
        byId("chosen-verdict").append(`, p ${series.p}`);
      }
    }
    showFigures(series);
    showParts(series);
    drawChart();
  }

  // Returns the chosen row and its panel as text.
  function chosenText() {
    const row = rows[state.row];
    const lines = [nameOf(row)];
    [...headingsOf(row)].forEach((heading, i) => {
      const text = row.cells[i].textContent;
      if (!["node", "name", undefined].includes(heading.dataset.key) &&
          text !== "") {
        lines.push(`${heading.textContent}: ${text}`);
      }
    });
    const series = JSON.parse(row.dataset.series);
    for (const key of ["interval", "p"]) {
      if (series[key] !== undefined) {
        lines.push(`${key}: ${series[key]}`);
      }
    }
    for (const table of [byId("figures"), byId("parts")]) {
      for (const line of table.hidden ? [] : table.rows) {
        lines.push([...line.cells].map((cell) => cell.textContent).join("\t"));
      }
    }
    return lines.join("\n");
  }

  // Copies a text; the button says so.
  function copy(text, button) {
    const area = makeElement("textarea");
    area.value = text;
    document.body.append(area);
    area.select();
    document.execCommand("copy");
    area.remove();
    const label = button.textContent;
    button.textContent = "Copied";
    setTimeout(() => {
      button.textContent = label;
    }, 1000);
  }

  // ---- The page ----

  // Shows a state, and what it changes.
  function show(next) {
    const last = {...state};
    Object.assign(state, next);
    const section = byId(state.graph);
    if (state.graph !== last.graph) {
      for (const other of sections) {
        other.hidden = other !== section;
      }
      if (!tablesOf.has(section)) {
        tablesOf.set(section, [...section.querySelectorAll("table.series")]
            .map(setUpTable));
      }
      section.querySelector(".tables").prepend(byId("tools"));
      section.querySelector(".columns").append(byId("panel"));
      for (const link of document.querySelectorAll(".overview th a")) {
        const isChosen = link.getAttribute("href") === `#${state.graph}`;
        link.closest("tr").classList.toggle("chosen", isChosen);
        link.setAttribute("aria-current", isChosen);
      }
    }
    if (["graph", "sort", "find", "show"].some(
        (key) => state[key] !== last[key])) {
      tablesOf.get(section).forEach((table) => renderTable(table));
    }
    if (byId("find").value !== state.find) {
      byId("find").value = state.find;
    }
    byId("start-order").hidden = state.sort === "";
    for (const button of byId("show").querySelectorAll("button")) {
      button.setAttribute("aria-pressed", button.value === state.show);
    }
    if (state.row !== last.row || state.graph !== last.graph) {
      markRow(last.row, false);
      markRow(state.row, true);
      showPanel();
    }
  }

  // Follows a link of the page to a graph or a row.
  function follow(address) {
    const number = Number(address.replace(/^#\w+-/, ""));
    if (address.startsWith("#row-")) {
      change({graph: sectionOf.get(rows[number]).id, row: number});
    } else {
      change({graph: address.slice(1)});
    }
  }

  // Chooses a row, or closes its panel if it is chosen.
  function toggleRow(row) {
    const number = rows.indexOf(row);
    change({row: number === state.row ? -1 : number});
  }

  function onClick(event) {
    const link = event.target.closest("a[href^='#']") ||
        (event.target.closest(".overview tbody tr") || document.createElement("p"))
            .querySelector("th a");
    const row = event.target.closest("tr[data-series]");
    if (event.ctrlKey || event.metaKey || event.shiftKey) {
      return;
    }
    if (link !== null) {
      event.preventDefault();
      follow(link.getAttribute("href"));
    } else if (row !== null && getSelection().isCollapsed) {
      toggleRow(row);
    }
  }

  function onKey(event) {
    const row = event.target.closest("tr[data-series]");
    const isButton = event.target.matches("[role=button]");
    if (row !== null && isButton && [" ", "Enter"].includes(event.key)) {
      event.preventDefault();
      toggleRow(row);
    }
  }

  // Shows all rows on paper, in the colors of paper.
  function setPaper(isPaper) {
    root.classList.toggle("paper", isPaper);
    for (const table of tablesOf.get(byId(state.graph))) {
      renderTable(table, isPaper ? Infinity : FIRST_ROWS);
    }
    drawChart();
  }

  function start() {
    document.addEventListener("click", onClick);
    document.addEventListener("keydown", onKey);
    for (const button of byId("show").querySelectorAll("button")) {
      button.addEventListener("click", () => change({show: button.value}));
    }
    byId("show").hidden = data.sides === 1;
    byId("find").addEventListener(
        "input", () => change({find: byId("find").value}, false));
    byId("start-order").addEventListener(
        "click", () => change({sort: ""}, false));
    byId("from-zero").addEventListener("change", drawChart);
    byId("copy-text").addEventListener(
        "click", (event) => copy(chosenText(), event.target));
    byId("copy-link").addEventListener(
        "click", (event) => copy(location.href, event.target));
    // Parts of strips are read below their heading.
    document.addEventListener("pointerover", (event) => {
      const part = event.target.closest(".strip svg svg");
      const readout = byId(state.graph).querySelector(".readout");
      if (part !== null && readout !== null) {
        readout.textContent = part.querySelector("title").textContent;
      }
    });
    matchMedia("(prefers-color-scheme: dark)").addEventListener(
        "change", drawChart);
    addEventListener("beforeprint", () => setPaper(true));
    addEventListener("afterprint", () => setPaper(false));
    addEventListener("hashchange", () => {
      if (addressOf(state) !== (location.hash || "#")) {
        show(readAddress());
      }
    });
    byId("tools").hidden = false;
    byId("panel").hidden = false;
    show(readAddress());
  }

  if (sections.length > 0) {
    start();
  }
  byId("no-script").remove();
  root.classList.remove("loading");
})();
