#include "page/page_columns.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "model/event_fields.h"
#include "page/display_text.h"
#include "page/figure_html.h"
#include "text/figure_text.h"

namespace lumo {
namespace {

// The name without the node id, unless that is longer than any real one.
std::string_view ShownName(const SideSeries& series) {
  const std::string_view start = series.name.substr(0, 100);
  const std::size_t id_size = start.size() - BareName(start).size();
  return series.level == Level::kOperation ? series.name.substr(id_size)
                                           : series.name;
}

// "14" for "node_id_14:Conv", otherwise an empty text.
std::string_view NodeText(const SideSeries& series) {
  constexpr std::size_t kPrefixSize = std::string_view("node_id_").size();
  const std::string_view shown = ShownName(series);
  return shown.size() == series.name.size()
             ? ""
             : series.name.substr(
                   kPrefixSize,
                   series.name.size() - shown.size() - kPrefixSize - 1);
}

const RowSide& SideOf(const Cell& cell) {
  return cell.row.sides[cell.column.side];
}

// The first side that has the row.
const RowSide& FirstSide(const Row& row) {
  return row.sides.front().series != nullptr ? row.sides.front()
                                             : row.sides.back();
}

std::string NodeCell(const Cell& cell) { return NodeHtml(cell.row); }

std::optional<double> NodeValue(const Cell& cell) {
  const std::int32_t id = ParseNodeId(SeriesOf(cell.row).name);
  return id == -1 ? std::nullopt : std::optional<double>(id);
}

std::string NameCell(const Cell& cell) { return NameHtml(cell.row); }

std::string ShareCell(const Cell& cell) {
  return PercentText(FirstSide(cell.row).share);
}

std::optional<double> ShareValue(const Cell& cell) {
  return FirstSide(cell.row).share;
}

std::string MeanCell(const Cell& cell) {
  return MeanHtml(SideOf(cell).figures);
}

std::optional<double> MeanValue(const Cell& cell) {
  const Figures& figures = SideOf(cell).figures;
  return figures.n == 0 ? std::nullopt : std::optional(figures.mean);
}

std::string DifferenceCell(const Cell& cell) {
  const std::optional<double> difference = DifferenceOf(cell.row);
  return difference
             ? DifferenceText(*difference, cell.row.sides.front().figures.mean)
             : "";
}

std::optional<double> DifferenceValue(const Cell& cell) {
  return DifferenceOf(cell.row);
}

std::string ChangeCell(const Cell& cell) {
  return ChangeHtml(cell.row.pair->change_percent);
}

std::optional<double> ChangeValue(const Cell& cell) {
  return cell.row.pair->change_percent;
}

std::string VerdictCell(const Cell& cell) {
  return cell.row.pair->verdict == Verdict::kNoDifference
             ? "<abbr title=\"no difference\">~</abbr>"
             : VerdictHtml(*cell.row.pair);
}

std::string UnitCell(const Cell& cell) {
  return std::string(SeriesOf(cell.row).unit);
}

// "5 of 5" for each side, or once if they are equal.
std::string LogsCell(const Cell& cell) {
  std::string text;
  for (std::size_t i = 0; i < cell.row.sides.size(); ++i) {
    const SideSeries* const series = cell.row.sides[i].series;
    const std::string count =
        std::to_string(series != nullptr ? series->logs.size() : 0) + " of " +
        std::to_string(cell.page.sides[i].logs.size());
    if (count != text) {
      text += (text.empty() ? "" : ", ") + count;
    }
  }
  return text;
}

std::optional<double> LogsValue(const Cell& cell) {
  std::size_t count = 0;
  for (const RowSide& side : cell.row.sides) {
    count += side.series != nullptr ? side.series->logs.size() : 0;
  }
  return static_cast<double>(count);
}

// A bar as SVG, because the page's policy blocks style attributes. It compares
// the sizes of the rows that have the same unit. Bars of differences begin in
// the middle.
std::string BarCell(const Cell& cell) {
  const double largest =
      cell.table.units.at(SeriesOf(cell.row).unit).largest_size;
  const std::optional<double> share = PercentOf(SizeOf(cell.row), largest);
  const std::optional<double> difference = DifferenceOf(cell.row);
  const bool has_bar =
      cell.row.pair == nullptr ? SizeOf(cell.row) >= 0 : difference.has_value();
  if (!share || !has_bar) {
    return "";
  }
  const double width = cell.row.pair == nullptr ? *share : *share / 2;
  const double left = cell.row.pair == nullptr ? 0
                      : *difference < 0        ? 50 - width
                                               : 50;
  return R"(<svg aria-hidden="true"><rect x=")" + FixedText(left) +
         R"(%" width=")" + FixedText(width) + R"(%" height="100%"/></svg>)";
}

constexpr Column kNode = {"node",   "Node",    "number quiet node",
                          NodeCell, NodeValue, 0};
constexpr Column kOperation = {"name",   "Operation", "name",
                               NameCell, nullptr,     0};
constexpr Column kEvent = {"name", "Event", "name", NameCell, nullptr, 0};
constexpr Column kShare = {"share",   "Share",    "number share",
                           ShareCell, ShareValue, 0};
constexpr Column kMean = {"mean",   "Mean",    "number mean",
                          MeanCell, MeanValue, 0};
// The squares are the legend of the chart.
constexpr Column kBefore = {
    "before",      "<span class=\"key before\"></span>Before",
    "number mean", MeanCell,
    MeanValue,     0};
constexpr Column kAfter = {
    "after",       "<span class=\"key after\"></span>After",
    "number mean", MeanCell,
    MeanValue,     1};
constexpr Column kUnit = {"unit", "Unit", "unit", UnitCell, nullptr, 0};
constexpr Column kLogs = {"logs",   "Logs",    "number quiet logs",
                          LogsCell, LogsValue, 0};
constexpr Column kDifference = {"difference",        "Difference",
                                "number difference", DifferenceCell,
                                DifferenceValue,     0};
constexpr Column kBar = {"", "", "bar", BarCell, nullptr, 0};
constexpr Column kChange = {"change",   "Change",    "number change",
                            ChangeCell, ChangeValue, 0};
constexpr Column kVerdict = {"verdict",   "Verdict", "verdict",
                             VerdictCell, nullptr,   0};

}  // namespace

std::vector<Column> ColumnsOf(const Page& page, const Table& table) {
  const bool is_operation = table.level == Level::kOperation;
  const bool is_compared = page.comparison != nullptr;
  std::vector<Column> columns;
  const auto append_if = [&columns](bool condition, const Column& column) {
    if (condition) {
      columns.push_back(column);
    }
  };
  append_if(std::any_of(table.rows.begin(), table.rows.end(),
                        [](const Row& row) { return !NodeHtml(row).empty(); }),
            kNode);
  columns.push_back(is_operation ? kOperation : kEvent);
  append_if(is_operation, kShare);
  append_if(is_operation && !is_compared, kBar);
  columns.push_back(is_compared ? kBefore : kMean);
  append_if(is_compared, kAfter);
  append_if(table.units.size() > 1, kUnit);
  append_if(is_compared, kDifference);
  append_if(is_compared, kBar);
  append_if(is_compared, kChange);
  append_if(is_compared, kVerdict);
  append_if(page.sample == Sample::kLogs, kLogs);
  return columns;
}

std::string NodeHtml(const Row& row) {
  const auto node_of = [](const RowSide& side) {
    const std::string_view text = NodeText(*side.series);
    return text.empty() ? "–" : MakeDisplayText(text).text;
  };
  const RowSide& first = FirstSide(row);
  std::string node = node_of(first);
  const RowSide& last = row.sides.back();
  if (last.series != nullptr && last.series->name != first.series->name) {
    node += "→" + node_of(last);
  }
  return node == "–" ? "" : node;
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
