// Shows, sorts and filters the tables and draws the chart. It computes no
// figures: they come from the page's data, and their texts from its tables.
"use strict";

(() => {
  // The number of rows that a table shows at first, and the maximum number of
  // points per log in the chart. With more, browsers become slow.
  const FIRST_ROWS = 200;
  const MAX_POINTS = 1000;

  const byId = (id) => document.getElementById(id);
  const data = JSON.parse(byId("data").textContent);
  const sides = data.sides;
  const sideNames = {before: "Before", after: "After"};
  const collator = new Intl.Collator("en", {numeric: true});

  // The chosen row and its chart.
  let chosenRow = null;
  let chart = null;

  const seriesOf = (row) => data.series[row.dataset.series];
  // The sides that have a series, and its figures on each of them.
  const sidesOf = (series) => sides.filter((side) => series[side]);
  const figuresOf = (series) => sidesOf(series).map((side) => series[side]);

  // Returns a new element that contains this text, never markup.
  function makeElement(tag, text = "", className = "") {
    const element = document.createElement(tag);
    element.textContent = text;
    element.className = className;
    return element;
  }

  function makeButton(...content) {
    const button = makeElement("button");
    button.type = "button";
    button.append(...content);
    return button;
  }

  // ---- The chart ----

  function color(name) {
    return getComputedStyle(document.documentElement).getPropertyValue(name);
  }

  // How many neighboring values share two points; 1 if every value has its own.
  function groupSize(values) {
    return values.length <= MAX_POINTS
        ? 1 : Math.ceil(2 * values.length / MAX_POINTS);
  }

  // Returns the values as points. If there are too many, only the least and the
  // greatest of each group of neighbors are kept, so that no outlier is lost.
  function makePoints(values) {
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
        points.push({x: i, y: values[i]});
      }
    }
    return points;
  }

  function makeDataset(values, side) {
    const isFirst = side === sides[0];
    return {
      label: sideNames[side],
      data: makePoints(values),
      borderColor: color("--" + side),
      backgroundColor: color("--" + side),
      borderWidth: 2,
      borderDash: isFirst ? [] : [6, 3],
      // The dashed line is drawn over the other, so that both can be seen.
      order: isFirst ? 1 : 0,
      pointStyle: isFirst ? "circle" : "rect",
      pointRadius: values.length > 100 ? 0 : 4,
    };
  }

  // Shades the values that the figures exclude.
  function shadeWarmUp(drawn, excluded) {
    const area = drawn.chartArea;
    const left = drawn.scales.x.getPixelForValue(drawn.scales.x.min);
    const right = drawn.scales.x.getPixelForValue(excluded - 0.5);
    if (excluded > 0 && right > left) {
      drawn.ctx.fillStyle = color("--shade");
      drawn.ctx.fillRect(
          left, area.top, Math.min(right, area.right) - left, area.height);
    }
  }

  // Returns what the chart counts. Usually there is one value per run, but an
  // event may be absent from some runs, or occur twice.
  function countedBy(series) {
    return figuresOf(series).every(({values, runs}) => values.length === runs)
        ? "run" : "value";
  }

  // "1 run", "2 runs"
  function countText(count, noun) {
    return `${count} ${noun}${count === 1 ? "" : "s"}`;
  }

  function chartNote(series, excluded) {
    const counted = countedBy(series);
    const notes = [];
    if (excluded > 0) {
      notes.push(excluded === 1
          ? `The first ${counted} is excluded as warm-up.`
          : `The first ${excluded} ${counted}s are excluded as warm-up.`);
    }
    for (const side of sidesOf(series)) {
      const {values, runs} = series[side];
      const log = sides.length === 2 ? `${side} log` : "log";
      if (values.length !== runs) {
        notes.push(`The ${log} has ${countText(values.length, "value")} in ` +
            `${countText(runs, "run")}.`);
      }
      if (groupSize(values) > 1) {
        notes.push(`The ${log} has ${values.length} values: the chart shows ` +
            `the smallest and the largest of every ${groupSize(values)} ` +
            `values.`);
      }
    }
    return notes.join(" ");
  }

  function chartOptions(series, excluded) {
    const isZoomed = byId("zoom").checked;
    const counted = countedBy(series);
    const longest =
        Math.max(...figuresOf(series).map((figures) => figures.values.length));
    const axis = (text) => ({
      title: {display: true, text, color: color("--quiet")},
      ticks: {color: color("--quiet"), precision: 0, includeBounds: false},
      grid: {color: color("--line")},
    });
    return {
      animation: false,
      parsing: false,
      maintainAspectRatio: false,
      interaction: {mode: "nearest", axis: "x", intersect: false},
      scales: {
        x: {
          type: "linear",
          min: isZoomed ? Math.min(excluded, longest - 1) - 0.5 : -0.5,
          max: longest - 0.5,
          ...axis(counted),
        },
        y: {beginAtZero: !isZoomed, grace: "5%", ...axis(series.unit)},
      },
      plugins: {
        legend: {
          display: sides.length === 2,
          labels: {
            color: color("--text"),
            usePointStyle: true,
            boxHeight: 7,
            sort: (a, b) => a.datasetIndex - b.datasetIndex,
          },
        },
        tooltip: {
          itemSort: (a, b) => a.datasetIndex - b.datasetIndex,
          callbacks: {
            title: (items) =>
                items.length > 0 ? `${counted} ${items[0].parsed.x}` : "",
            label: (item) =>
                (sides.length === 2 ? item.dataset.label + ": " : "") +
                item.parsed.y.toLocaleString("en-US", {useGrouping: false}) +
                " " + series.unit,
          },
        },
      },
    };
  }

  // Draws the chosen series.
  function drawChart() {
    const series = seriesOf(chosenRow);
    const excluded =
        Math.max(...figuresOf(series).map((figures) => figures.excluded));
    byId("chart-title").replaceChildren(
        makeElement("bdi", series.name), `, ${series.kind} runs`);
    byId("chart-note").textContent = chartNote(series, excluded);
    const unit = series.unit === "" ? "" : ` in ${series.unit}`;
    byId("chart").setAttribute("aria-label",
        `Chart of the values${unit}. The tables have the figures.`);
    chart?.destroy();
    chart = new Chart(byId("chart"), {
      type: "line",
      data: {datasets: sidesOf(series)
          .map((side) => makeDataset(series[side].values, side))},
      options: chartOptions(series, excluded),
      plugins: [{
        id: "warmUp",
        beforeDatasetsDraw: (drawn) => shadeWarmUp(drawn, excluded),
      }],
    });
  }

  // ---- The details of the chosen series, in a row below its own ----

  const detailsRow = makeElement("tr");

  // Returns the lines below an operation in one run of a log.
  function makeLines(figures) {
    if (figures.details.length === 0) {
      return [makeElement(
          "p", `No sub-events in run ${figures.details_run}.`)];
    }
    const list = makeElement("ul");
    for (const [depth, name, value] of figures.details) {
      const line = makeElement("li", "\u2003".repeat(depth));
      line.append(makeElement("bdi", name), value);
      list.append(line);
    }
    const parts =
        [makeElement("p", `Sub-events in run ${figures.details_run}:`), list];
    if (figures.details.length < figures.details_count) {
      parts.push(makeElement("p", `These are the first ` +
          `${figures.details.length} of ${figures.details_count} lines.`));
    }
    return parts;
  }

  function makeDetails(side, series) {
    const part = makeElement("div");
    const figures = series[side];
    const mean = figures.n === 0 ? "No value after the warm-up"
        : `Mean of ${countText(figures.n, "value")}`;
    part.append(makeElement("h3", sides.length === 2
        ? `${sideNames[side]}: ${mean}` : mean));
    if (series.level === "operation") {
      part.append(...makeLines(figures));
    }
    return part;
  }

  function showDetails() {
    const series = seriesOf(chosenRow);
    const parts = makeElement("div");
    for (const side of sidesOf(series)) {
      parts.append(makeDetails(side, series));
    }
    if (series.p_adjusted !== undefined) {
      parts.append(makeElement("p",
          `Adjusted p-value of the difference: ${series.p_adjusted}`));
    }
    const cell = makeElement("td", "", "details");
    cell.colSpan = chosenRow.cells.length;
    cell.append(parts);
    detailsRow.replaceChildren(cell);
    chosenRow.after(detailsRow);
  }

  // Marks a row as chosen or not chosen.
  function markRow(row, isChosen) {
    row.classList.toggle("chosen", isChosen);
    row.querySelector("button")?.setAttribute("aria-expanded", isChosen);
  }

  function choose(row) {
    if (chosenRow !== null) {
      markRow(chosenRow, false);
    }
    chosenRow = row;
    markRow(chosenRow, true);
    showDetails();
    drawChart();
  }

  // ---- The tables ----

  // Returns the value that a column sorts by: the field of a series at a path
  // such as "before.mean".
  function valueAt(series, path) {
    const value =
        path.split(".").reduce((part, field) => part?.[field], series);
    return value === null ? Infinity : value;
  }

  // Compares numbers or texts; missing values come last in both orders.
  function compareValues(a, b, direction) {
    if (a === undefined || b === undefined) {
      return (a === undefined) - (b === undefined);
    }
    if (a === b) {
      return 0;
    }
    return direction *
        (typeof a === "number" ? a - b : collator.compare(a, b));
  }

  // Returns the rows sorted by a column.
  function sortRows(rows, path, direction) {
    return rows.map((row) => ({row, value: valueAt(seriesOf(row), path)}))
        .sort((a, b) => compareValues(a.value, b.value, direction))
        .map(({row}) => row);
  }

  // Turns the name in a row into a button, for keyboard users.
  function addButton(row) {
    const heading = row.querySelector("th");
    if (heading.querySelector("button") === null) {
      heading.append(makeButton(...heading.childNodes));
      markRow(row, row === chosenRow);
    }
  }

  // Shows the rows of a table that match its filter, sorted, at most `limit` of
  // them.
  function renderTable(table, limit = FIRST_ROWS) {
    const text = table.isFiltered ? byId("filter").value.toLowerCase() : "";
    const found = table.rows.filter(
        (row) => seriesOf(row).name.toLowerCase().includes(text));
    const sorted = table.heading === null
        ? found : sortRows(found, table.heading.dataset.key, table.direction);
    const shown = sorted.slice(0, limit);
    shown.forEach(addButton);
    if (shown.includes(chosenRow)) {
      shown.splice(shown.indexOf(chosenRow) + 1, 0, detailsRow);
    }
    table.body.replaceChildren(...shown);
    table.count.textContent = found.length === table.rows.length
        ? `${found.length}` : `${found.length} of ${table.rows.length}`;
    table.more.hidden = found.length <= limit;
    table.moreText.textContent =
        `The first ${limit} of ${found.length} rows. `;
    table.moreButton.textContent = `Show all ${found.length}`;
  }

  // Sorts by a column, and reverses the order the second time. Numbers are
  // sorted in descending order first. A long table shows only its first rows
  // again, because a browser needs seconds to lay out thousands of rows.
  function sortTable(table, heading) {
    if (table.heading === heading) {
      table.direction = -table.direction;
    } else {
      table.heading?.removeAttribute("aria-sort");
      table.heading = heading;
      table.direction = heading.classList.contains("number") ? -1 : 1;
    }
    heading.setAttribute(
        "aria-sort", table.direction === 1 ? "ascending" : "descending");
    renderTable(table);
  }

  // Sets up a table of the page, which may already be sorted by mean.
  function setUpTable(element) {
    const table = {
      body: element.tBodies[0],
      rows: [...element.tBodies[0].rows],
      count: element.querySelector(".count"),
      isFiltered: element.dataset.level === "operation",
      heading: element.querySelector("[aria-sort]"),
      direction: -1,
      more: makeElement("p"),
      moreText: makeElement("span"),
      moreButton: makeButton(),
    };
    table.more.append(table.moreText, table.moreButton);
    table.moreButton.addEventListener(
        "click", () => renderTable(table, Infinity));
    element.parentNode.after(table.more);
    for (const heading of element.tHead.querySelectorAll("th")) {
      const button = makeButton(...heading.childNodes);
      button.addEventListener("click", () => sortTable(table, heading));
      heading.append(button);
    }
    table.body.addEventListener("click", (event) => {
      const row = event.target.closest("tr[data-series]");
      if (row !== null) {
        choose(row);
      }
    });
    renderTable(table);
    return table;
  }

  const tables = [...document.querySelectorAll("table.series")].map(setUpTable);
  const filtered = tables.filter((table) => table.isFiltered);
  document.documentElement.classList.remove("loading");

  // ---- The graphs ----

  // Shows a single graph, initially with the time of its whole execute run.
  function chooseGraph(number) {
    for (const section of document.querySelectorAll("section.graph")) {
      section.hidden = section.dataset.graph !== number;
    }
    const rows = tables.flatMap((table) => table.rows)
        .filter((row) => `${seriesOf(row).graph}` === number);
    choose(rows.find((row) => seriesOf(row).is_run) ?? rows[0]);
  }

  const numbers = [...document.querySelectorAll("section.graph")]
      .map((section) => section.dataset.graph);
  if (numbers.length > 0) {
    byId("graph").append(...numbers.map((number) => new Option(number)));
    byId("graph-choice").hidden = numbers.length < 2;
    byId("graph").addEventListener(
        "change", (event) => chooseGraph(event.target.value));
    byId("filter-choice").hidden = filtered.length === 0;
    byId("filter").addEventListener(
        "input", () => filtered.forEach((table) => renderTable(table)));
    byId("zoom").addEventListener("change", drawChart);
    for (const query of ["(prefers-color-scheme: dark)", "print"]) {
      matchMedia(query).addEventListener("change", drawChart);
    }
    byId("runs").hidden = false;
    chooseGraph(numbers[0]);
  }
})();
