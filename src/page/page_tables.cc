#include "page/page_tables.h"

#include <cstddef>
#include <string_view>

#include "model/event_fields.h"
#include "page/page_data.h"
#include "page/page_text.h"
#include "text/figure_text.h"

namespace lumo {
namespace {

// "14" for "node_id_14:Conv", "–" for a name without an id.
std::string NodeOf(const SideSeries& series) {
  constexpr std::size_t kPrefixSize = std::string_view("node_id_").size();
  const std::size_t size = NodeIdSize(series);
  return size == 0 ? "–"
                   : std::string(series.name.substr(kPrefixSize,
                                                    size - kPrefixSize - 1));
}

// The node ids of a row on the sides, such as "14", "11→5" or "11→–".
std::string NodesText(const Row& row) {
  const std::string node = NodeOf(*row.series);
  const SideSeries* const last = row.sides.back().series;
  return last != nullptr && last->name != row.series->name
             ? node + "→" + NodeOf(*last)
         : node == "–" ? ""
                       : node;
}

// "5 of 5" for each side, or once if they are equal.
std::string LogsText(const Page& page, const Row& row) {
  std::vector<std::string> texts;
  for (std::size_t i = 0; i < row.sides.size(); ++i) {
    const SideSeries* const series = row.sides[i].series;
    texts.push_back(
        std::to_string(series != nullptr ? series->logs.size() : 0) + " of " +
        std::to_string(page.sides[i].logs.size()));
  }
  return texts.front() == texts.back() ? texts.front() : Join(texts, ", ");
}

// A bar as SVG, because the page's policy blocks style attributes. It compares
// the sizes of the rows that have the same unit. Bars of differences begin in
// the middle.
std::string BarHtml(const Table& table, const Row& row) {
  const auto size =
      PercentOf(row.size, table.units.at(row.series->unit).largest_size);
  const bool is_compared = row.pair != nullptr;
  if (!size || row.size < 0.0 || (is_compared && !row.pair->difference)) {
    return "";
  }
  const double width = is_compared ? *size / 2 : *size;
  const double left = !is_compared                  ? 0.0
                      : *row.pair->difference < 0.0 ? 50.0 - width
                                                    : 50.0;
  return "<svg aria-hidden=\"true\"><rect x=\"" + FixedText(left) +
         "%\" width=\"" + FixedText(width) + "%\" height=\"100%\"/></svg>";
}

// Returns the cells of a row. All rows of a table have the same columns.
std::vector<Cell> CellsOf(const Page& page, const Table& table,
                          const Row& row) {
  constexpr const char* kKeys[] = {"before", "after"};
  const SeriesPair* const pair = row.pair;
  const bool is_operation = row.series->level == Level::kOperation;
  std::vector<Cell> cells;
  if (table.has_nodes) {
    cells.push_back({"node", "Node", "number quiet node", NodesText(row),
                     ParseNodeId(row.series->name)});
  }
  cells.push_back(
      {"name", is_operation ? "Operation" : "Event", "name", NameHtml(row)});
  if (is_operation) {
    cells.push_back(
        {"share", "Share", "number share", PercentText(row.share), row.share});
  }
  if (is_operation && pair == nullptr) {
    cells.push_back({"", "", "bar", BarHtml(table, row)});
  }
  for (std::size_t i = 0; i < row.sides.size(); ++i) {
    const Figures& figures = row.sides[i].figures;
    cells.push_back({pair == nullptr ? "mean" : kKeys[i],
                     pair == nullptr ? "Mean" : kSideHeadings[i], "number mean",
                     MeanHtml(figures), figures.mean});
  }
  if (table.units.size() > 1) {
    cells.push_back({"unit", "Unit", "unit", std::string(row.series->unit)});
  }
  if (pair != nullptr) {
    cells.push_back(
        {"difference", "Difference", "number difference",
         DifferenceText(pair->difference, pair->before.figures.mean),
         pair->difference});
    cells.push_back({"", "", "bar", BarHtml(table, row)});
    cells.push_back({"change", "Change", "number change",
                     ChangeHtml(pair->change_percent), pair->change_percent});
    cells.push_back({"verdict", "Verdict", "verdict",
                     pair->verdict == Verdict::kNoDifference
                         ? "<abbr title=\"no difference\">~</abbr>"
                         : VerdictHtml(*pair)});
  }
  if (page.sample == Sample::kLogs) {
    cells.push_back({"logs", "Logs", "number quiet logs", LogsText(page, row)});
  }
  return cells;
}

}  // namespace

void WriteHeads(std::ostream& stream, const std::vector<Cell>& cells) {
  stream << "<thead><tr>";
  for (const auto& [key, heading, css_class, html, value] : cells) {
    if (*heading == '\0') {
      stream << "<td class=\"" << css_class << "\"></td>";
    } else {
      stream << "<th scope=\"col\" class=\"" << css_class
             << (*key == '\0' ? "" : "\" data-key=\"") << key << "\">"
             << heading << "</th>";
    }
  }
  stream << "</tr></thead>\n<tbody>\n";
}

void WriteCells(std::ostream& stream, const std::vector<Cell>& cells) {
  for (const auto& [key, heading, css_class, html, value] : cells) {
    const bool is_heading = std::string_view(css_class) == "name";
    stream << (is_heading ? "<th scope=\"row\" class=\"" : "<td class=\"")
           << css_class;
    if (value && !html.empty()) {
      stream << "\" data-value=\"" << ShortestText(*value);
    }
    stream << "\">" << html << (is_heading ? "</th>" : "</td>");
  }
  stream << "</tr>\n";
}

void WriteTable(std::ostream& stream, const Page& page, const Table& table,
                const char* caption) {
  if (table.rows.empty()) {
    return;
  }
  const Row& first = table.rows.front();
  const bool has_unit = table.units.size() == 1 && !first.series->unit.empty();
  stream << "<table class=\"series"
         << (page.sides.size() == 2 ? " compared" : "") << "\"><caption>"
         << caption << (has_unit ? ", " : "")
         << (has_unit ? first.series->unit : "") << " <span class=\"count\">"
         << table.rows.size() << "</span></caption>\n";
  WriteHeads(stream, CellsOf(page, table, first));
  for (const Row& row : table.rows) {
    if (!stream.good()) {
      return;
    }
    stream << "<tr id=\"row-" << row.number << "\" class=\"" << row.verdict
           << "\" data-series='" << RowJson(page, row) << "'>";
    WriteCells(stream, CellsOf(page, table, row));
  }
  stream << "</tbody></table>\n";
}

std::string NameHtml(const Row& row) {
  const SideSeries& series = *row.series;
  const bool is_repeated =
      row.pair != nullptr ? row.pair->is_repeated : series.is_repeated;
  return TextHtml(series.name.substr(NodeIdSize(series))) +
         (is_repeated ? " <span class=\"quiet\">(occurrence " +
                            std::to_string(series.occurrence) + ")</span>"
                      : "");
}

std::string VerdictHtml(const SeriesPair& pair) {
  const char* const sign = pair.verdict == Verdict::kHigher  ? "▲ "
                           : pair.verdict == Verdict::kLower ? "▼ "
                                                             : "";
  return sign + VerdictWords(pair.verdict);
}

}  // namespace lumo
