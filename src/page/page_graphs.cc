#include "page/page_graphs.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <string>
#include <string_view>
#include <vector>

#include "compare/comparison_text.h"
#include "page/page_data.h"
#include "page/page_tables.h"
#include "page/page_text.h"
#include "text/escape.h"
#include "text/figure_text.h"

namespace lumo {
namespace {

// A piece of a strip.
struct Piece {
  double mean;
  std::string_view name;
  std::string css_class;
  // The row that it leads to.
  const Row* row;
  // How many operations it stands for.
  std::int64_t count = 1;
};

// The strip of a side.
using Strip = std::vector<Piece>;

double SumOf(const Strip& strip) {
  return std::accumulate(
      strip.begin(), strip.end(), 0.0,
      [](double sum, const Piece& piece) { return sum + piece.mean; });
}

// The sub-events of a whole run in its unit on a side, and the rest of its
// time.
Strip SplitWholeRun(const Row& row, const PairSide& side, Sample sample) {
  Strip strip;
  for (std::size_t i = 0; side.figures.n > 0 && i < side.series->parts.size();
       ++i) {
    const SideSeries& part = side.runs->series[side.series->parts[i]];
    const Figures figures = MakePairSide(&part, *side.runs, sample).figures;
    if (part.unit == row.series->unit && figures.n > 0) {
      strip.push_back({figures.mean, ShortName(part.name, side.series->name),
                       "sub-event", &row});
    }
  }
  const double rest = side.figures.mean - SumOf(strip);
  if (!strip.empty() && rest > 0.0) {
    strip.push_back({rest, "not measured", "rest", &row});
  }
  return strip;
}

// The operations in this unit on a side in the order of execution, which is
// that of their series in memory. Narrow neighbors become one piece: they
// cannot be told apart, and a browser needs long for thousands of pieces. It
// leads to the one that comes first in the table.
Strip ListOperations(const Table& table, std::string_view unit, std::size_t i) {
  std::vector<const Row*> rows;
  for (const Row& row : table.rows) {
    if (row.series->unit == unit && row.sides[i].figures.n > 0) {
      rows.push_back(&row);
    }
  }
  std::ranges::sort(rows, {},
                    [i](const Row* row) { return row->sides[i].series; });
  const double narrow = table.units.at(unit).sums[i] / 1000;
  Strip strip;
  for (const Row* const row : rows) {
    const auto& [series, runs, figures] = row->sides[i];
    const Piece piece = {figures.mean, series->name.substr(NodeIdSize(*series)),
                         row->pair == nullptr ? "operation" : row->verdict,
                         row};
    if (!strip.empty() && piece.mean < narrow && strip.back().mean < narrow) {
      const Piece last = strip.back();
      strip.back() = last.row->number < row->number ? last : piece;
      strip.back().mean = last.mean + piece.mean;
      strip.back().count = last.count + 1;
    } else {
      strip.push_back(piece);
    }
  }
  return strip;
}

void WriteStrip(std::ostream& stream, const Strip& strip, double scale,
                std::string_view unit) {
  const double sum = SumOf(strip);
  double left = 0.0;
  for (const auto& [mean, whole_name, css_class, row, count] : strip) {
    const double width = 100.0 * mean / scale;
    const std::string name = EscapeHtml(
        PlainText(whole_name.substr(0, TruncatedSize(whole_name, 100))));
    stream << "<a href=\"#row-" << row->number
           << "\" tabindex=\"-1\"><svg class=\"" << css_class << "\" x=\""
           << FixedText(left) << "%\" width=\"" << FixedText(width)
           << "%\"><title>"
           << (count == 1 ? "" : CountText(count, "operation") + ", such as ")
           << name << ": " << NumberText(mean) << ' ' << unit << ", "
           << PercentText(PercentOf(mean, sum))
           << "</title><rect width=\"100%\" height=\"100%\"/>";
    // A character is about 0.6 percent wide.
    if (width > 1.0 + 0.6 * static_cast<double>(name.size())) {
      stream << "<text x=\"6\" y=\"1.1em\">" << name << "</text>";
    }
    stream << "</svg></a>";
    left += width;
  }
}

// Writes the strips of all sides, to the same scale.
void WriteStripsOf(std::ostream& stream, const std::vector<Strip>& strips,
                   const std::string& heading, std::string_view unit) {
  double scale = 0.0;
  for (const Strip& strip : strips) {
    scale = std::max(scale, SumOf(strip));
  }
  if (scale == 0.0) {
    return;
  }
  stream << "<p class=\"strip-heading\">" << heading
         << (unit.empty() ? "" : ", ") << unit << "</p>\n";
  for (std::size_t i = 0; i < strips.size(); ++i) {
    stream << "<div class=\"strip\"><span class=\"quiet\">"
           << (strips.size() == 1 ? "" : kSideNames[i])
           << "</span><svg aria-hidden=\"true\">";
    WriteStrip(stream, strips[i], scale, unit);
    stream << "</svg></div>\n";
  }
}

// Writes the strips of a graph for all sides.
void WriteStrips(std::ostream& stream, const Page& page, const Graph& graph) {
  const Row& run = *graph.whole_run;
  std::vector<Strip> strips;
  strips.reserve(run.sides.size());
  for (const PairSide& side : run.sides) {
    strips.push_back(SplitWholeRun(run, side, page.sample));
  }
  WriteStripsOf(stream, strips, "Sub-events of " + TextHtml(run.series->name),
                run.series->unit);
  for (const auto& [unit, rows] : graph.operations.units) {
    strips.clear();
    for (std::size_t i = 0; i < page.sides.size(); ++i) {
      strips.push_back(ListOperations(graph.operations, unit, i));
    }
    WriteStripsOf(stream, strips, "Operations in the order of execution", unit);
  }
}

}  // namespace

void WriteGraphs(std::ostream& stream, const Page& page) {
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

}  // namespace lumo
