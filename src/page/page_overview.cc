#include "page/page_overview.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include "compare/comparison_text.h"
#include "page/page_tables.h"
#include "page/page_text.h"
#include "text/figure_text.h"

namespace lumo {
namespace {

enum Fact { kDate = 1, kProfilerApi, kBackend = 5, kExecuteRuns };
constexpr const char* kHeadings[] = {
    "Log",     "Date",         "Profiler API", "ORX API", "ORX delegate API",
    "Backend", "Execute runs", "Finalize runs"};

// A line for each log of a side, or a single one if they are equal.
using Lines = std::vector<std::string>;

// Of each fact on each side.
using Facts = std::vector<std::vector<Lines>>;

Facts ListFacts(const Page& page) {
  Facts facts(std::size(kHeadings));
  for (const std::vector<LogFacts>& logs : page.facts) {
    for (std::size_t fact = 0; fact < facts.size(); ++fact) {
      Lines& lines = facts[fact].emplace_back();
      for (const LogFacts& log : logs) {
        lines.push_back(log.lines[fact]);
      }
      lines.resize(AreEqual(lines) ? 1 : lines.size());
    }
  }
  return facts;
}

// Returns whether a fact is the same for all logs of the page.
bool IsSame(const std::vector<Lines>& sides) {
  return sides.front().size() == 1 && AreEqual(sides);
}

// Writes the line about the logs, such as "2026-03-04 11:02:45" or "5 logs,
// 2026-03-04 11:02:45 to 2026-03-08 11:02:45" for each side, and what is equal
// in all logs.
void WriteSummary(std::ostream& stream, const Page& page, const Facts& facts) {
  const bool is_compared = page.sides.size() == 2;
  const std::vector<Lines>& runs = facts[kExecuteRuns];
  for (std::size_t i = 0; i < page.sides.size(); ++i) {
    const Lines& dates = facts[kDate][i];
    const std::size_t count = page.facts[i].size();
    stream << "<span class=\"log\">"
           << (is_compared ? kSideHeadings[i] + std::string(" ") : "")
           << (count > 1 ? std::to_string(count) + " logs, " : "") << "<b>"
           << dates.front() << "</b>"
           << (dates.size() > 1 ? " to <b>" + dates.back() + "</b>" : "");
    if (!IsSame(runs)) {
      stream << ", <b>"
             << (runs[i].size() == 1 ? runs[i].front()
                                     : "different numbers of runs")
             << "</b>";
    }
    stream << "</span>\n";
  }
  constexpr std::size_t kLongest = 100;
  const std::vector<Lines>& backends = facts[kBackend];
  stream << "<span class=\"log\">" << (is_compared ? "both: " : "");
  if (IsSame(runs)) {
    stream << "<b>" << runs[0].front()
           << (page.sample == Sample::kRuns ? "</b>, " : "</b> in each log, ");
  }
  stream << (!IsSame(backends)                        ? "<b>backends differ</b>"
             : backends[0].front().size() <= kLongest ? backends[0].front()
                                                      : "several backends")
         << ", warm-up " << CountText(page.sides.front().num_warmup, "run");
  if (AllLogs(page.sides).size() > 1) {
    stream << (std::all_of(&facts[kProfilerApi], &facts[kBackend], IsSame)
                   ? ", same versions"
                   : ", <b>versions differ</b>");
  }
  stream << "</span>\n<span class=\"all\">all</span>";
}

// Returns the paths of the sides as this kind of text.
std::string PathsText(const Page& page, std::string (*text)(std::string_view)) {
  Lines paths;
  for (const Side& side : page.sides) {
    paths.push_back(text(side.path));
  }
  return Join(paths, " → ");
}

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
  std::map<Verdict, std::size_t> counts;
  for (const Row& row : operations) {
    ++counts[row.pair->verdict];
  }
  const std::size_t higher = counts[Verdict::kHigher];
  const std::size_t lower = counts[Verdict::kLower];
  const std::size_t alone =
      counts[Verdict::kOnlyBefore] + counts[Verdict::kOnlyAfter];
  const bool is_tested =
      operations.empty() || higher + lower + counts[Verdict::kNoDifference] > 0;
  const auto append = [&](const char* heading, const char* css_class,
                          std::size_t count, bool is_known) {
    const std::string text = count == 0 ? "–" : std::to_string(count);
    cells->push_back({"", heading, "number count",
                      !is_known
                          ? "not tested"
                          : "<span class=\"count " + std::string(css_class) +
                                "\">" + text + "</span>"});
  };
  append("Operations ▲", "higher", higher, is_tested);
  append("▼", "lower", lower, is_tested);
  append("one side", "", alone, true);
  return higher + lower + alone;
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

std::string MakeTitle(const Page& page) {
  return EscapeHtml(PathsText(page, PlainText));
}

void WriteHeading(std::ostream& stream, const Page& page) {
  const Facts facts = ListFacts(page);
  stream << "<h1>" << PathsText(page, TextHtml)
         << "</h1>\n<details class=\"logs\"><summary>";
  WriteSummary(stream, page, facts);
  stream << "</summary>\n<table>\n";
  if (page.sides.size() == 2) {
    stream << "<thead><tr><td></td><th scope=\"col\">" << kSideHeadings[0]
           << "</th><th scope=\"col\">" << kSideHeadings[1]
           << "</th></tr></thead>\n";
  }
  stream << "<tbody>\n";
  for (std::size_t fact = 0; fact < facts.size(); ++fact) {
    stream << "<tr><th scope=\"row\">" << kHeadings[fact] << "</th>";
    for (const Lines& lines : facts[fact]) {
      stream << "<td>" << Join(lines, "<br>") << "</td>";
    }
    stream << "</tr>\n";
  }
  stream << "</tbody></table></details>\n";
}

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

}  // namespace lumo
