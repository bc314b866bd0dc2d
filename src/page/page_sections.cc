#include "page/page_sections.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "compare/comparison_text.h"
#include "page/page_strips.h"
#include "page/page_tables.h"
#include "page/page_text.h"
#include "text/figure_text.h"

namespace lumo {
namespace {

// Links to the first `count` operations, three at most.
std::string LargestHtml(const std::vector<Row>& operations, std::size_t count) {
  constexpr std::size_t kMaxLinks = 3;
  std::string html;
  for (std::size_t i = 0; i < std::min(count, kMaxLinks); ++i) {
    const Row& row = operations[i];
    html += "<a href=\"#row-" + std::to_string(row.number) +
            "\" class=\"operation " + row.verdict +
            "\"><span><bdi dir=\"ltr\">" + NameHtml(row) + "</bdi></span> <b>" +
            (row.pair == nullptr        ? PercentText(row.share)
             : row.pair->change_percent ? ChangeHtml(row.pair->change_percent)
                                        : VerdictHtml(*row.pair)) +
            "</b></a> ";
  }
  return count <= kMaxLinks ? html
                            : html + "<span class=\"quiet\">+ " +
                                  std::to_string(count - kMaxLinks) + "</span>";
}

// Appends how many operations have which verdict. Returns their sum.
std::size_t AppendCounts(const std::vector<Row>& operations,
                         std::vector<Cell>* cells) {
  constexpr const char* kHeadings[] = {"Operations ▲", "▼", "one side"};
  constexpr const char* kClasses[] = {"higher", "lower", ""};
  std::size_t counts[] = {0, 0, 0};
  bool is_tested = operations.empty();
  for (const Row& row : operations) {
    const SeriesPair& pair = *row.pair;
    counts[0] += pair.verdict == Verdict::kHigher ? 1 : 0;
    counts[1] += pair.verdict == Verdict::kLower ? 1 : 0;
    counts[2] += IsOnBothSides(pair) ? 0 : 1;
    is_tested |= pair.p_adjusted.has_value();
  }
  for (std::size_t i = 0; i < std::size(counts); ++i) {
    cells->push_back(
        {"", kHeadings[i], "number count",
         i < 2 && !is_tested
             ? "not tested"
             : "<span class=\"count " + std::string(kClasses[i]) + "\">" +
                   (counts[i] == 0 ? "–" : std::to_string(counts[i])) +
                   "</span>"});
  }
  return counts[0] + counts[1] + counts[2];
}

// Returns the cells of the row of a graph.
std::vector<Cell> CellsOf(const std::string& number, const Graph& graph) {
  const Row& run = *graph.whole_run;
  const std::vector<Row>& operations = graph.operations.rows;
  std::vector<Cell> cells = {{"", "Graph and whole run", "name",
                              "<a href=\"#graph-" + number +
                                  "\"><span class=\"quiet\">" + number +
                                  "</span> " + NameHtml(run) + "</a>"}};
  for (std::size_t i = 0; i < run.sides.size(); ++i) {
    cells.push_back({"", run.pair == nullptr ? "Mean" : kSideNames[i],
                     "number mean", MeanHtml(run.sides[i].figures)});
  }
  cells.push_back({"", "", "unit", std::string(run.series->unit)});
  std::size_t count = operations.size();
  if (run.pair == nullptr) {
    const Figures& all = run.sides.front().figures;
    cells.push_back(
        {"", "Std. dev.", "number",
         all.n < 2 ? "" : PercentText(PercentOf(all.stdev, all.mean))});
  } else {
    cells.push_back(
        {"", "Change", "number change", ChangeHtml(run.pair->change_percent)});
    cells.push_back({"", "Verdict", "verdict", VerdictHtml(*run.pair)});
    count = AppendCounts(operations, &cells);
  }
  cells.push_back({"", "The largest operations", "largest",
                   LargestHtml(operations, count)});
  return cells;
}

// The totals of the comparison, or why nothing could be tested.
std::string SummaryText(const Page& page) {
  std::int32_t before = 0;
  std::int32_t after = 0;
  for (const Block& block : page.comparison->blocks) {
    for (const SeriesPair& pair : block.pairs) {
      if (pair.p_adjusted) {
        return TotalsText(*page.comparison);
      }
      before = std::max(before, pair.before.figures.n);
      after = std::max(after, pair.after.figures.n);
    }
  }
  const char* const noun = page.sample == Sample::kRuns ? "run" : "log";
  return CountText(before, noun) + " before and " + CountText(after, noun) +
         " after the change have values after the warm-up: nothing can be "
         "tested.";
}

}  // namespace

void WriteOverview(std::ostream& stream, const Page& page) {
  if (page.graphs.empty()) {
    return;
  }
  stream << (page.comparison == nullptr
                 ? "<h2>Where the time goes"
                 : "<h2>What changed <span class=\"summary\">" +
                       SummaryText(page) + "</span>")
         << "</h2>\n<div class=\"overview\"><table>\n";
  WriteHeads(stream, CellsOf("", page.graphs.begin()->second));
  for (const auto& [number, graph] : page.graphs) {
    stream << "<tr class=\"" << graph.whole_run->verdict << "\">";
    WriteCells(stream, CellsOf(std::to_string(number), graph));
  }
  stream << "</tbody></table></div>\n";
}

void WriteSections(std::ostream& stream, const Page& page) {
  if (page.graphs.empty()) {
    stream << "<p>The runs have no events.</p>\n";
  }
  for (const auto& [number, graph] : page.graphs) {
    stream << "<section class=\"graph\" id=\"graph-" << number
           << "\">\n<h2>Graph " << number
           << " <span class=\"summary\">The time of a run, to scale: means "
              "after the warm-up. Point at a piece to read it, click to choose "
              "it.</span></h2>\n";
    WriteStrips(stream, page, graph);
    stream << "<div class=\"columns\"><div class=\"tables\">\n";
    WriteTable(stream, page, graph.operations, "Operations");
    WriteTable(stream, page, graph.execute_events,
               "Top-level events of the execute runs");
    WriteTable(stream, page, graph.finalize_events,
               "Top-level events of the finalize runs");
    stream << "</div></div>\n</section>\n";
  }
  if (page.comparison != nullptr) {
    for (const std::string& note : MakeNotes(*page.comparison)) {
      stream << "<p class=\"note\">Note: " << EscapeHtml(note) << "</p>\n";
    }
  }
}

void WritePageData(std::ostream& stream, const Page& page) {
  nlohmann::ordered_json data = {{"sides", page.sides.size()}};
  for (std::size_t i = 0; page.sample == Sample::kLogs && i < page.sides.size();
       ++i) {
    for (std::size_t log = 0; log < page.facts[i].size(); ++log) {
      data["logs"][i].push_back(
          {PlainText(page.sides[i].logs[log]), page.facts[i][log].date});
    }
  }
  stream << EmbedJson(data) << '\n';
}

}  // namespace lumo
