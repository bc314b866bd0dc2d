#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "compare/comparison_text.h"
#include "page/display_text.h"
#include "page/figure_html.h"
#include "page/page_columns.h"
#include "page/page_heading.h"
#include "text/figure_text.h"

namespace lumo {
namespace {

// How many operations have which verdict.
struct OperationCounts {
  std::int64_t higher = 0;
  std::int64_t lower = 0;
  std::int64_t one_sided = 0;
  std::int64_t tested = 0;
};

OperationCounts CountOperations(const Table& operations) {
  OperationCounts counts;
  for (const Row& row : operations.rows) {
    counts.higher += row.pair->verdict == Verdict::kHigher ? 1 : 0;
    counts.lower += row.pair->verdict == Verdict::kLower ? 1 : 0;
    counts.one_sided +=
        row.pair->before == nullptr || row.pair->after == nullptr ? 1 : 0;
    counts.tested += row.pair->p_adjusted ? 1 : 0;
  }
  return counts;
}

void WriteCount(std::ostream& stream, std::int64_t count,
                std::string_view css_class) {
  stream << "<td class=\"number count" << css_class << "\">"
         << (count == 0 ? "–" : std::to_string(count)) << "</td>";
}

// Writes links to the first operations, `count` in total, three at most.
void WriteLargest(std::ostream& stream, const Table& operations,
                  std::int64_t count) {
  constexpr std::int64_t kMaxLinks = 3;
  for (std::int64_t i = 0; i < std::min(count, kMaxLinks); ++i) {
    const Row& row = operations.rows[static_cast<std::size_t>(i)];
    stream << "<a href=\"#row-" << row.number << "\" class=\"operation "
           << (row.pair != nullptr ? VerdictText(row.pair->verdict) : "")
           << "\"><span><bdi dir=\"ltr\">" << NameHtml(row)
           << "</bdi></span> <b>"
           << (row.pair == nullptr        ? PercentText(row.sides.front().share)
               : row.pair->change_percent ? ChangeHtml(row.pair->change_percent)
                                          : VerdictHtml(*row.pair))
           << "</b></a> ";
  }
  if (count > kMaxLinks) {
    stream << "<span class=\"quiet\">+ " << count - kMaxLinks << "</span>";
  }
}

void WriteGraph(std::ostream& stream, const Graph& graph) {
  const Row& run = *graph.whole_run;
  const Table* const operations =
      graph.tables.front().level == Level::kOperation ? &graph.tables.front()
                                                      : nullptr;
  stream << "<tr class=\""
         << (run.pair != nullptr ? VerdictText(run.pair->verdict) : "")
         << "\"><th scope=\"row\" class=\"name\"><a href=\"#graph-"
         << graph.number << "\"><span class=\"quiet\">" << graph.number
         << "</span> " << NameHtml(run) << "</a></th>";
  for (const RowSide& side : run.sides) {
    stream << "<td class=\"number mean\">" << MeanHtml(side.figures) << "</td>";
  }
  stream << "<td class=\"unit\">" << SeriesOf(run).unit << "</td>";
  if (run.pair == nullptr) {
    stream << "<td class=\"number\">" << DeviationText(run.sides[0].figures)
           << "</td><td class=\"largest\">";
    if (operations != nullptr) {
      WriteLargest(stream, *operations, std::ssize(operations->rows));
    }
  } else {
    stream << "<td class=\"number change\">"
           << ChangeHtml(run.pair->change_percent)
           << "</td><td class=\"verdict\">" << VerdictHtml(*run.pair)
           << "</td>";
    const OperationCounts counts = operations != nullptr
                                       ? CountOperations(*operations)
                                       : OperationCounts();
    if (operations != nullptr && counts.tested == 0) {
      stream << "<td colspan=\"2\" class=\"number count\">not tested</td>";
    } else {
      WriteCount(stream, counts.higher, " higher");
      WriteCount(stream, counts.lower, " lower");
    }
    WriteCount(stream, counts.one_sided, "");
    stream << "<td class=\"largest\">";
    if (operations != nullptr) {
      WriteLargest(stream, *operations,
                   counts.higher + counts.lower + counts.one_sided);
    }
  }
  stream << "</td></tr>\n";
}

// The totals of the comparison, or why nothing could be tested.
std::string SummaryText(const Page& page) {
  std::int32_t most[] = {0, 0};
  for (const Block& block : page.comparison->blocks) {
    for (const SeriesPair& pair : block.pairs) {
      if (pair.p_adjusted) {
        return TotalsText(*page.comparison, kDefaultConfidence);
      }
      most[0] = std::max(most[0], pair.figures_before.n);
      most[1] = std::max(most[1], pair.figures_after.n);
    }
  }
  const bool are_runs = page.sample == Sample::kRuns;
  const char* const noun = are_runs ? "run" : "log";
  return CountText(most[0], noun) + " before and " + CountText(most[1], noun) +
         " after the change have values after the warm-up: nothing can be "
         "tested. " +
         (are_runs ? "Each side needs two."
                   : "Each side needs one, and both together three.");
}

}  // namespace

void WriteOverview(std::ostream& stream, const Page& page) {
  const bool is_compared = page.comparison != nullptr;
  stream << "<h2>" << (is_compared ? "What changed" : "Where the time goes");
  if (is_compared) {
    stream << " <span class=\"summary\">" << SummaryText(page) << "</span>";
  }
  stream << "</h2>\n<div class=\"overview\"><table>\n<thead><tr>"
            "<th scope=\"col\" class=\"name\">Graph and whole run</th>"
         << (is_compared
                 ? "<th scope=\"col\" class=\"number mean\">Before</th>"
                   "<th scope=\"col\" class=\"number mean\">After</th><td "
                   "class=\"unit\"></td>"
                   "<th scope=\"col\" class=\"number\">Change</th>"
                   "<th scope=\"col\">Verdict</th>"
                   "<th scope=\"col\" class=\"number count\">Operations ▲</th>"
                   "<th scope=\"col\" class=\"number count\">▼</th>"
                   "<th scope=\"col\" class=\"number count\">one side</th>"
                   "<th scope=\"col\" class=\"largest\">The largest</th>"
                 : "<th scope=\"col\" class=\"number mean\">Mean</th><td "
                   "class=\"unit\"></td>"
                   "<th scope=\"col\" class=\"number\">Std. dev.</th>"
                   "<th scope=\"col\" class=\"largest\">The largest "
                   "operations</th>")
         << "</tr></thead>\n<tbody>\n";
  for (const Graph& graph : page.graphs) {
    if (stream.good()) {
      WriteGraph(stream, graph);
    }
  }
  stream << "</tbody></table></div>\n";
}

}  // namespace lumo
