#include "page/page_columns.h"

#include <cstdint>
#include <optional>
#include <string_view>

#include "model/event_fields.h"
#include "page/display_text.h"
#include "text/figure_text.h"

namespace lumo {
namespace {

std::string MeanCell(const std::optional<SeriesFigures>& figures) {
  return HasMean(figures) ? FixedText(figures->mean) : "";
}

std::string DeviationCell(const std::optional<SeriesFigures>& figures) {
  return HasMean(figures) ? FixedText(figures->stdev) : "";
}

std::string ShareCell(const PageLog& log, const Row& row,
                      const std::optional<SeriesFigures>& figures) {
  const std::optional<float> share =
      figures ? ShareOf(log, row.runs.graph, *figures) : std::nullopt;
  return share ? FixedText(*share) + "%" : "";
}

std::string VerdictCell(const Row& row) {
  const char* const sign = row.pair.verdict == Verdict::kHigher  ? "▲ "
                           : row.pair.verdict == Verdict::kLower ? "▼ "
                                                                 : "";
  return "<span class=\"" + std::string(VerdictText(row.pair.verdict)) + "\">" +
         sign + VerdictWords(row.pair.verdict) + "</span>";
}

// A bar as SVG, because the page's policy blocks style attributes.
std::string Bar(const std::optional<SeriesFigures>& figures, float largest_mean,
                const char* css_class, int top) {
  if (!HasMean(figures) || largest_mean <= 0.0F) {
    return "";
  }
  return "<rect class=\"" + std::string(css_class) + "\" y=\"" +
         std::to_string(top) + "\" height=\"4\" width=\"" +
         FixedText(100.0 * figures->mean / largest_mean) + "\"/>";
}

std::string BarsCell(const Row& row) {
  return "<svg viewBox=\"0 0 100 8\" preserveAspectRatio=\"none\" "
         "aria-hidden=\"true\">" +
         Bar(row.pair.before, row.largest_mean, "before",
             row.page.after ? 0 : 2) +
         Bar(row.pair.after, row.largest_mean, "after", 4) + "</svg>";
}

std::string NodeCell(const Row& row) {
  const std::int32_t id = ParseNodeId(row.pair.name);
  return id == -1 ? "" : std::to_string(id);
}

std::string NameCell(const Row& row) { return TextHtml(row.pair.name); }
std::string UnitCell(const Row& row) { return std::string(row.pair.unit); }
std::string BeforeCell(const Row& row) { return MeanCell(row.pair.before); }
std::string AfterCell(const Row& row) { return MeanCell(row.pair.after); }

std::string BeforeDeviationCell(const Row& row) {
  return DeviationCell(row.pair.before);
}

std::string AfterDeviationCell(const Row& row) {
  return DeviationCell(row.pair.after);
}

std::string BeforeShareCell(const Row& row) {
  return ShareCell(row.page.before, row, row.pair.before);
}

std::string AfterShareCell(const Row& row) {
  return ShareCell(*row.page.after, row, row.pair.after);
}

std::string ChangeCell(const Row& row) {
  return row.pair.change_percent ? ChangeText(*row.pair.change_percent) : "";
}

constexpr Column kNode = {"Node", "node_id", "number", false, NodeCell};
constexpr Column kOperation = {"Operation", "name", "name", true, NameCell};
constexpr Column kEvent = {"Event", "name", "name", true, NameCell};
constexpr Column kMean = {"Mean", "before.mean", "number", false, BeforeCell};
constexpr Column kDeviation = {"Std. dev.", "before.stdev", "number", false,
                               BeforeDeviationCell};
constexpr Column kShare = {"Share", "before.share", "number", false,
                           BeforeShareCell};
// The squares are the legend of the bars and of the chart.
constexpr Column kBefore = {"<span class=\"key before\"></span>Before",
                            "before.mean", "number", false, BeforeCell};
constexpr Column kAfter = {"<span class=\"key after\"></span>After",
                           "after.mean", "number", false, AfterCell};
constexpr Column kAfterDeviation = {"Std. dev.", "after.stdev", "number", false,
                                    AfterDeviationCell};
constexpr Column kAfterShare = {"Share", "after.share", "number", false,
                                AfterShareCell};
constexpr Column kUnit = {"Unit", "unit", "unit", false, UnitCell};
constexpr Column kChange = {"Change", "change_percent", "number", false,
                            ChangeCell};
constexpr Column kVerdict = {"Verdict", "verdict", "verdict", false,
                             VerdictCell};
constexpr Column kBars = {"", "", "bars", false, BarsCell};

}  // namespace

std::vector<Column> ColumnsOf(const Page& page, Level level, bool has_unit) {
  const bool is_operation = level == Level::kOperation;
  std::vector<Column> columns;
  const auto append_if = [&columns](bool condition, const Column& column) {
    if (condition) {
      columns.push_back(column);
    }
  };
  append_if(is_operation, kNode);
  columns.push_back(is_operation ? kOperation : kEvent);
  columns.push_back(page.after ? kBefore : kMean);
  columns.push_back(kDeviation);
  append_if(is_operation, kShare);
  if (page.after) {
    columns.push_back(kAfter);
    columns.push_back(kAfterDeviation);
    append_if(is_operation, kAfterShare);
  }
  append_if(has_unit, kUnit);
  if (page.after) {
    columns.push_back(kChange);
    columns.push_back(kVerdict);
  }
  append_if(is_operation, kBars);
  return columns;
}

}  // namespace lumo
