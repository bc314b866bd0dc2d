#include "page/page_strips.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/event_fields.h"
#include "page/display_text.h"
#include "page/figure_html.h"
#include "page/row_data.h"
#include "text/escape.h"
#include "text/figure_text.h"

namespace lumo {
namespace {

// A piece of a strip.
struct Piece {
  double mean;
  // As text, not HTML.
  std::string name;
  std::string css_class;
  // The row that it is a link to. Null for what is not measured.
  const Row* row;
  // How many operations it stands for.
  std::size_t count = 1;
};

// The strip of a side.
struct Strip {
  double sum = 0.0;
  std::vector<Piece> pieces;
};

// Returns the shown text of a name, shortened.
std::string PieceName(std::string_view name) {
  return NotedText(MakeDisplayText(name.substr(0, TruncatedSize(name, 100))));
}

void WriteStrip(std::ostream& stream, const Strip& strip, double scale,
                std::string_view unit, std::string_view side) {
  stream << "<div class=\"strip\"><span class=\"quiet\">" << side
         << "</span><svg aria-hidden=\"true\">";
  double left = 0.0;
  for (const Piece& piece : strip.pieces) {
    const double width = 100.0 * piece.mean / scale;
    const std::string name = EscapeHtml(
        piece.count == 1
            ? piece.name
            : CountText(static_cast<std::int64_t>(piece.count), "operation") +
                  ", the largest is " + piece.name);
    if (piece.row != nullptr) {
      stream << "<a href=\"#row-" << piece.row->number << "\" tabindex=\"-1\">";
    }
    stream << "<svg class=\"" << piece.css_class << "\" x=\"" << FixedText(left)
           << "%\" width=\"" << FixedText(width) << "%\"><title>" << name
           << ": " << NumberText(piece.mean) << ' ' << unit << ", "
           << PercentText(PercentOf(piece.mean, strip.sum))
           << "</title><rect width=\"100%\" height=\"100%\"/>";
    // A character is about 0.6 percent wide.
    if (width > 1.0 + 0.6 * static_cast<double>(piece.name.size())) {
      stream << "<text x=\"6\" y=\"1.1em\">" << EscapeHtml(piece.name)
             << "</text>";
    }
    stream << "</svg>" << (piece.row != nullptr ? "</a>" : "");
    left += width;
  }
  stream << "</svg></div>\n";
}

// Writes the strips of all sides.
void WriteStripsOf(std::ostream& stream, const std::vector<Strip>& strips,
                   std::string_view heading, std::string_view unit) {
  const auto longest = std::max_element(
      strips.begin(), strips.end(),
      [](const Strip& a, const Strip& b) { return a.sum < b.sum; });
  if (longest->sum == 0.0) {
    return;
  }
  constexpr std::string_view kSides[] = {"Before", "After"};
  stream << "<p class=\"strip-heading\">" << heading << "</p>\n";
  for (std::size_t i = 0; i < strips.size(); ++i) {
    WriteStrip(stream, strips[i], longest->sum, unit,
               strips.size() == 1 ? "" : kSides[i]);
  }
}

// The sub-events of the whole run in us on a side, and the rest of its time.
Strip SplitWholeRun(const Page& page, const Graph& graph, std::size_t i) {
  Strip strip;
  const Row& row = *graph.whole_run;
  const auto& [series, figures, share] = row.sides[i];
  if (series == nullptr || figures.n == 0 ||
      graph.whole_run_kind != RunKind::kExecute) {
    return strip;
  }
  const std::span<const SideSeries> all =
      AllSeries(FindRuns(page.sides[i], RunKind::kExecute, graph.number));
  for (const std::size_t part : series->parts) {
    const SideSeries& sub_event = all[part];
    const Figures mean = SampleFigures(&sub_event, page.sample);
    if (sub_event.unit == series->unit && mean.n > 0) {
      strip.sum += mean.mean;
      strip.pieces.push_back(
          {mean.mean, PieceName(ShortName(sub_event.name, series->name)),
           "sub-event", &row});
    }
  }
  if (!strip.pieces.empty() && figures.mean > strip.sum) {
    strip.pieces.push_back(
        {figures.mean - strip.sum, "not measured", "rest", nullptr});
    strip.sum = figures.mean;
  }
  return strip;
}

// Adds an operation to the strip. Narrow neighbors become one piece: they
// cannot be told apart, and a browser needs long for thousands of pieces.
void AddOperation(const Piece& piece, double narrow, Strip* strip) {
  const bool joins = !strip->pieces.empty() && piece.mean < narrow &&
                     strip->pieces.back().mean < narrow;
  if (!joins) {
    strip->pieces.push_back(piece);
    return;
  }
  Piece& last = strip->pieces.back();
  const bool is_changed =
      last.row->pair != nullptr && IsDifferent(*last.row->pair);
  if (!is_changed && SizeOf(*piece.row) > SizeOf(*last.row)) {
    last.name = piece.name;
    last.css_class = piece.css_class;
    last.row = piece.row;
  }
  last.mean += piece.mean;
  ++last.count;
}

// The operations in this unit on a side, in the order of execution.
Strip ListOperations(const Page& page, const Graph& graph,
                     std::string_view unit, double sum, std::size_t i) {
  Strip strip = {sum, {}};
  for (const SideSeries& series :
       AllSeries(FindRuns(page.sides[i], RunKind::kExecute, graph.number))) {
    if (series.level != Level::kOperation || series.unit != unit) {
      continue;
    }
    const Row& row = *graph.rows_of.at(&series);
    if (row.sides[i].figures.n > 0) {
      AddOperation(
          {row.sides[i].figures.mean,
           PieceName(BareName(series.name.substr(0, 200))),
           row.pair != nullptr ? std::string(VerdictText(row.pair->verdict))
                               : "operation",
           &row},
          sum / 1000, &strip);
    }
  }
  return strip;
}

}  // namespace

void WriteStrips(std::ostream& stream, const Page& page, const Graph& graph) {
  std::vector<Strip> strips;
  for (std::size_t i = 0; i < page.sides.size(); ++i) {
    strips.push_back(SplitWholeRun(page, graph, i));
  }
  const SideSeries& whole_run = SeriesOf(*graph.whole_run);
  WriteStripsOf(stream, strips,
                TextHtml(MakeDisplayText(whole_run.name)) + ", " +
                    std::string(whole_run.unit) + ": its sub-events",
                whole_run.unit);
  const Table& operations = graph.tables.front();
  if (operations.level != Level::kOperation) {
    return;
  }
  for (const auto& [unit, rows] : operations.units) {
    strips.clear();
    for (std::size_t i = 0; i < page.sides.size(); ++i) {
      strips.push_back(ListOperations(page, graph, unit, rows.sums[i], i));
    }
    WriteStripsOf(stream, strips,
                  "Operations in the order of execution" +
                      (unit.empty() ? "" : ", " + std::string(unit)),
                  unit);
  }
}

}  // namespace lumo
