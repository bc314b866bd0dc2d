#include "page/page_columns.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "model/event_fields.h"
#include "page/display_text.h"
#include "page/figure_html.h"
#include "text/figure_text.h"

namespace lumo {
namespace {

constexpr Column kNode = {"node", "Node", "number quiet node"};
constexpr Column kOperation = {"name", "Operation", "name"};
constexpr Column kEvent = {"name", "Event", "name"};
constexpr Column kShare = {"share", "Share", "number share"};
constexpr Column kBar = {"", "", "bar"};
constexpr Column kMean = {"mean", "Mean", "number mean"};
// The squares are the legend of the chart.
constexpr Column kSides[] = {
    {"before", "<span class=\"key before\"></span>Before", "number mean"},
    {"after", "<span class=\"key after\"></span>After", "number mean"}};
constexpr Column kUnit = {"unit", "Unit", "unit"};
constexpr Column kDifference = {"difference", "Difference",
                                "number difference"};
constexpr Column kChange = {"change", "Change", "number change"};
constexpr Column kVerdict = {"verdict", "Verdict", "verdict"};
constexpr Column kLogs = {"logs", "Logs", "number quiet logs"};

// The name without the node id, unless that is longer than any real one.
std::string_view ShownName(const SideSeries& series) {
  const std::string_view start = series.name.substr(0, 100);
  const std::size_t id_size = start.size() - BareName(start).size();
  return series.level == Level::kOperation ? series.name.substr(id_size)
                                           : series.name;
}

// "14" for "node_id_14:Conv", "–" for a name without an id.
std::string NodeText(const SideSeries& series) {
  constexpr std::size_t kPrefixSize = std::string_view("node_id_").size();
  const std::size_t id_size = series.name.size() - ShownName(series).size();
  return id_size == 0 ? "–"
                      : std::string(series.name.substr(
                            kPrefixSize, id_size - kPrefixSize - 1));
}

// The node ids of an operation on the sides, such as "14" or "11→5"; empty if
// its name has none.
std::string NodesText(const Row& row) {
  const SideSeries& first = SeriesOf(row);
  const SideSeries* const last = row.sides.back().series;
  const std::string node = NodeText(first);
  return last != nullptr && last->name != first.name
             ? node + "→" + NodeText(*last)
         : node == "–" ? ""
                       : node;
}

// "5 of 5" for each side, or once if they are equal.
std::string LogsText(const Page& page, const Row& row) {
  std::string text;
  for (std::size_t i = 0; i < row.sides.size(); ++i) {
    const SideSeries* const series = row.sides[i].series;
    const std::string count =
        std::to_string(series != nullptr ? series->logs.size() : 0) + " of " +
        std::to_string(page.sides[i].logs.size());
    if (count != text) {
      text += (text.empty() ? "" : ", ") + count;
    }
  }
  return text;
}

// A bar as SVG, because the page's policy blocks style attributes. It compares
// the sizes of the rows that have the same unit. Bars of differences begin in
// the middle.
std::string BarHtml(const Table& table, const Row& row) {
  const std::optional<double> share =
      PercentOf(SizeOf(row), table.units.at(SeriesOf(row).unit).largest_size);
  const double difference = DifferenceOf(row).value_or(0.0);
  if (!share || *share < 0.0 || (row.pair != nullptr && !DifferenceOf(row))) {
    return "";
  }
  const double width = row.pair == nullptr ? *share : *share / 2;
  const double left = row.pair == nullptr ? 0.0
                      : difference < 0.0  ? 50.0 - width
                                          : 50.0;
  return R"(<svg aria-hidden="true"><rect x=")" + FixedText(left) +
         R"(%" width=")" + FixedText(width) + R"(%" height="100%"/></svg>)";
}

}  // namespace

std::vector<Cell> CellsOf(const Page& page, const Table& table,
                          const Row& row) {
  const bool is_operation = table.level == Level::kOperation;
  const bool is_compared = row.pair != nullptr;
  std::vector<Cell> cells;
  if (table.has_nodes) {
    const std::int32_t id = ParseNodeId(SeriesOf(row).name);
    cells.push_back({kNode, NodesText(row),
                     id == -1 ? std::nullopt : std::optional<double>(id)});
  }
  cells.push_back({is_operation ? kOperation : kEvent, NameHtml(row), {}});
  if (is_operation) {
    const bool has_first = row.sides.front().series != nullptr;
    const auto& share =
        has_first ? row.sides.front().share : row.sides.back().share;
    cells.push_back({kShare, PercentText(share), share});
  }
  if (is_operation && !is_compared) {
    cells.push_back({kBar, BarHtml(table, row), {}});
  }
  for (std::size_t i = 0; i < row.sides.size(); ++i) {
    const Figures& figures = row.sides[i].figures;
    cells.push_back(
        {is_compared ? kSides[i] : kMean, MeanHtml(figures),
         figures.n == 0 ? std::nullopt : std::optional(figures.mean)});
  }
  if (table.units.size() > 1) {
    cells.push_back({kUnit, std::string(SeriesOf(row).unit), {}});
  }
  if (is_compared) {
    const std::optional<double> difference = DifferenceOf(row);
    cells.push_back({kDifference,
                     difference ? DifferenceText(*difference,
                                                 row.sides.front().figures.mean)
                                : "",
                     difference});
    cells.push_back({kBar, BarHtml(table, row), {}});
    cells.push_back({kChange, ChangeHtml(row.pair->change_percent),
                     row.pair->change_percent});
    cells.push_back({kVerdict,
                     row.pair->verdict == Verdict::kNoDifference
                         ? "<abbr title=\"no difference\">~</abbr>"
                         : VerdictHtml(*row.pair),
                     {}});
  }
  if (page.sample == Sample::kLogs) {
    double count = 0.0;
    for (const RowSide& side : row.sides) {
      count += static_cast<double>(
          side.series != nullptr ? side.series->logs.size() : 0);
    }
    cells.push_back({kLogs, LogsText(page, row), count});
  }
  return cells;
}

std::string NameHtml(const Row& row) {
  const SideSeries& series = SeriesOf(row);
  const std::string name = TextHtml(MakeDisplayText(ShownName(series)));
  return row.is_repeated ? name + " <span class=\"quiet\">(occurrence " +
                               std::to_string(series.occurrence) + ")</span>"
                         : name;
}

std::string VerdictHtml(const SeriesPair& pair) {
  const char* const sign = pair.verdict == Verdict::kHigher  ? "▲ "
                           : pair.verdict == Verdict::kLower ? "▼ "
                                                             : "";
  return sign + VerdictWords(pair.verdict);
}

}  // namespace lumo
