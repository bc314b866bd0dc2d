// Shows, sorts, filters and draws what the page holds. It computes no figures:
// all of them come from the page's data, and their texts from its tables.
"use strict";

(() => {
  // How many rows a table begins with, and how many points of a log a chart
  // has at most. Beyond these a browser becomes slow.
  const FIRST_ROWS = 200;
  const MOST_POINTS = 1000;

  const data = JSON.parse(document.getElementById("data").textContent);
  const sides = data.logs.length === 2 ? ["before", "after"] : ["before"];
  const sideNames = {before: "Before", after: "After"};
  const byId = (id) => document.getElementById(id);

  // What the reader has chosen: the number of a series, and a graph.
  let chosen = null;
  let graph = null;
  let chart = null;

  // Returns a new element with this text in it, never with markup.
  function makeElement(tag, text = "", className = "") {
    const element = document.createElement(tag);
    element.textContent = text;
    element.className = className;
    return element;
  }

  function nameOf(series) {
    return series.name + (series.is_damaged ? " (not valid UTF-8)" : "");
  }

  // Returns a number as a text with two decimals at most.
  function numberText(number) {
    return number.toLocaleString(
        "en-US", {useGrouping: false, maximumFractionDigits: 2});
  }

  // ---- The chart ----

  function color(name) {
    return getComputedStyle(document.documentElement).getPropertyValue(name);
  }

  // Returns the values as points. Of more than fit, the least and the greatest
  // of each group of neighbors stay, so that no outlier is lost.
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
      const runs = least === greatest ? [least] : [least, greatest];
      runs.sort((a, b) => a - b);
      points.push(...runs.map((run) => ({x: run, y: values[run]})));
    }
    return points;
  }

  // How many neighboring values share two points; 1 if every value has its own.
  function groupSize(values) {
    return values.length <= MOST_POINTS
        ? 1 : Math.ceil(2 * values.length / MOST_POINTS);
  }

  function makeDataset(series, side, number) {
    return {
      label: sides.length === 2 ? sideNames[side] : data.logs[0],
      data: makePoints(series[side].values),
      borderColor: color("--" + side),
      backgroundColor: color("--" + side),
      borderWidth: 2,
      borderDash: number === 0 ? [] : [6, 3],
      pointStyle: number === 0 ? "circle" : "rect",
      pointRadius: series[side].values.length > 100 ? 0 : 4,
      pointHitRadius: 8,
    };
  }

  // Shades the runs that the figures exclude.
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

  function chartNote(series) {
    const notes = [];
    const excluded = excludedRuns(series);
    if (excluded > 0) {
      notes.push(excluded === 1
          ? "The first run (shaded) is excluded as warm-up."
          : `The first ${excluded} runs (shaded) are excluded as warm-up.`);
    }
    for (const side of sides) {
      const size = series[side] ? groupSize(series[side].values) : 1;
      if (size > 1) {
        notes.push(`Of the ${series[side].values.length} values ` +
            `${sideNames[side].toLowerCase()}, the chart shows the least and ` +
            `the greatest of each ${size}.`);
      }
    }
    return notes.join(" ");
  }

  function excludedRuns(series) {
    return Math.max(...sides.map((side) => series[side]?.excluded ?? 0));
  }

  function drawChart() {
    const series = data.series[chosen];
    const excluded = excludedRuns(series);
    const isZoomed = byId("zoom").checked;
    const shown = sides.filter((side) => series[side]);
    const longest = Math.max(...shown.map((side) => series[side].values.length));
    const title = `${nameOf(series)}, ${series.kind} runs`;
    const axis = (text) => ({
      title: {display: true, text, color: color("--quiet")},
      ticks: {color: color("--quiet")},
      grid: {color: color("--line")},
    });
    byId("chart-title").textContent = title;
    byId("chart-note").textContent = chartNote(series);
    byId("chart").setAttribute("aria-label",
        `Chart of ${title}, in ${series.unit}. The tables have the figures.`);
    chart?.destroy();
    chart = new Chart(byId("chart"), {
      type: "line",
      data: {datasets: shown.map((side) =>
          makeDataset(series, side, sides.indexOf(side)))},
      options: {
        animation: false,
        parsing: false,
        maintainAspectRatio: false,
        interaction: {mode: "x", intersect: false},
        scales: {
          x: {
            type: "linear",
            min: isZoomed ? Math.min(excluded, longest - 1) - 0.5 : -0.5,
            max: longest - 0.5,
            ...axis("run"),
            ticks: {color: color("--quiet"), precision: 0, includeBounds: false},
          },
          y: {beginAtZero: !isZoomed, grace: "5%", ...axis(series.unit)},
        },
        plugins: {
          legend: {
            display: sides.length === 2,
            labels: {
              color: color("--text"), usePointStyle: true, boxHeight: 7,
            },
          },
          tooltip: {callbacks: {
            title: (items) => items.length ? `run ${items[0].parsed.x}` : "",
            label: (item) => `${item.dataset.label}: ` +
                `${numberText(item.parsed.y)} ${series.unit}`,
          }},
        },
      },
      plugins: [{
        id: "warmUp",
        beforeDatasetsDraw: (drawn) => shadeWarmUp(drawn, excluded),
      }],
    });
  }

  // ---- The chosen series ----

  // Returns the lines below an operation in one run of a log.
  function makeDetails(side, figures) {
    const part = document.createElement("div");
    const run = figures.details ? `, details in run ${figures.run}` : "";
    const count = figures.n === 1 ? "1 value" : `${figures.n} values`;
    part.append(makeElement("h3", sides.length === 2
        ? `${sideNames[side]}: figures of ${count}${run}`
        : `Figures of ${count}${run}`));
    if (figures.details) {
      const list = document.createElement("ul");
      for (const [depth, text] of figures.details) {
        list.append(makeElement("li", "\u2003".repeat(depth) + text));
      }
      part.append(figures.details.length > 0
          ? list : makeElement("p", "The log has no details of it."));
    }
    return part;
  }

  const detailsRow = makeElement("tr", "", "details-row");

  // Shows the details of the chosen series below its row.
  function showDetails(row) {
    const series = data.series[chosen];
    const cell = makeElement("td", "", "details");
    cell.colSpan = row.cells.length;
    for (const side of sides) {
      if (series[side]) {
        cell.append(makeDetails(side, series[side]));
      }
    }
    if (series.p_adjusted !== undefined) {
      cell.append(makeElement("p", `Adjusted p-value of the difference: ` +
          `${Number(series.p_adjusted.toPrecision(2))}`));
    }
    detailsRow.replaceChildren(cell);
    row.after(detailsRow);
  }

  // Chooses the series of a row; the one chosen before loses its details.
  function choose(row) {
    document.querySelector("tr.chosen")?.classList.remove("chosen");
    chosen = Number(row.dataset.series);
    row.classList.add("chosen");
    showDetails(row);
    drawChart();
  }

  // ---- The tables ----

  // Returns what a column sorts by: the part of a series at a path such as
  // "before.mean".
  function valueAt(series, path) {
    return path.split(".").reduce((part, field) => part?.[field], series);
  }

  // Orders numbers and texts; what does not exist comes last either way.
  function compareValues(a, b, direction) {
    const isMissing = (value) => value === undefined || value === null;
    if (isMissing(a) || isMissing(b)) {
      return isMissing(a) - isMissing(b);
    }
    return direction * (typeof a === "number"
        ? a - b : a.localeCompare(b, "en", {numeric: true}));
  }

  // Makes the name in a row a button, for the keyboard.
  function addButton(row) {
    const heading = row.querySelector("th");
    if (heading.querySelector("button") === null) {
      const button = makeElement("button");
      button.type = "button";
      button.append(...heading.childNodes);
      heading.append(button);
    }
  }

  // Puts those rows into a table that fit its filter, sorted, as many as it
  // shows.
  function renderTable(table) {
    const text = table.isFiltered ? byId("filter").value.toLowerCase() : "";
    const found = table.rows.filter((row) =>
        data.series[row.dataset.series].name.toLowerCase().includes(text));
    if (table.key !== null) {
      found.sort((a, b) => compareValues(
          valueAt(data.series[a.dataset.series], table.key),
          valueAt(data.series[b.dataset.series], table.key), table.direction));
    }
    const shown = found.slice(0, table.limit);
    shown.forEach(addButton);
    detailsRow.remove();
    table.body.replaceChildren(...shown);
    const chosenRow = document.querySelector("tr.chosen");
    if (chosenRow !== null) {
      chosenRow.after(detailsRow);
    }
    table.count.textContent = found.length === table.rows.length
        ? `${found.length}` : `${found.length} of ${table.rows.length}`;
    table.more.hidden = shown.length === found.length;
    table.moreText.textContent =
        `The first ${shown.length} of ${found.length} rows. `;
    table.moreButton.textContent = `Show all ${found.length}`;
  }

  function sortTable(table, heading) {
    const isSame = table.key === heading.dataset.key;
    const isNumber = heading.classList.contains("number");
    table.key = heading.dataset.key;
    table.direction = isSame ? -table.direction : isNumber ? -1 : 1;
    for (const other of heading.parentNode.cells) {
      other.removeAttribute("aria-sort");
    }
    heading.setAttribute(
        "aria-sort", table.direction === 1 ? "ascending" : "descending");
    renderTable(table);
  }

  function addSortButtons(table, headings) {
    for (const heading of headings) {
      if (heading.dataset.key !== "") {
        const button = makeElement("button", heading.textContent);
        button.type = "button";
        button.addEventListener("click", () => sortTable(table, heading));
        heading.replaceChildren(button);
      }
    }
  }

  // Takes over a table of the page.
  function setUpTable(element) {
    const table = {
      body: element.tBodies[0],
      rows: [...element.tBodies[0].rows],
      count: element.querySelector(".count"),
      isFiltered: element.dataset.level === "operation",
      key: null,
      direction: 1,
      limit: FIRST_ROWS,
      more: makeElement("p", "", "more"),
      moreText: makeElement("span"),
      moreButton: makeElement("button"),
    };
    table.more.append(table.moreText, table.moreButton);
    table.moreButton.type = "button";
    table.moreButton.addEventListener("click", () => {
      table.limit = Infinity;
      renderTable(table);
    });
    element.parentNode.after(table.more);
    addSortButtons(table, element.tHead.rows[0].cells);
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

  // ---- The graphs ----

  // Shows a graph alone, and of it at first the time of a whole run.
  function chooseGraph(number) {
    graph = number;
    for (const section of document.querySelectorAll("section.graph")) {
      section.hidden = Number(section.dataset.graph) !== graph;
    }
    const rows = tables.flatMap((table) => table.rows).filter((row) =>
        data.series[row.dataset.series].graph === graph);
    const run = rows.find((row) => data.series[row.dataset.series].is_run);
    choose(run ?? rows[0]);
  }

  function setUpGraphs() {
    const numbers = [...new Set(data.series.map((series) => series.graph))];
    for (const number of numbers) {
      byId("graph").append(new Option(number, number));
    }
    byId("graph-choice").hidden = numbers.length < 2;
    byId("graph").addEventListener(
        "change", (event) => chooseGraph(Number(event.target.value)));
    chooseGraph(numbers[0]);
  }

  if (data.series.length > 0) {
    byId("runs").hidden = false;
    byId("filter-choice").hidden = !tables.some((table) => table.isFiltered);
    byId("zoom").addEventListener("change", drawChart);
    byId("filter").addEventListener("input", () =>
        tables.filter((table) => table.isFiltered).forEach(renderTable));
    matchMedia("(prefers-color-scheme: dark)")
        .addEventListener("change", drawChart);
    setUpGraphs();
  }
})();
