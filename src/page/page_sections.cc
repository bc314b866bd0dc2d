#include "page/page_sections.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "page/display_text.h"
#include "page/page_columns.h"
#include "page/page_strips.h"
#include "page/row_data.h"
#include "text/figure_text.h"

namespace lumo {
namespace {

void WriteHeadings(std::ostream& stream, const std::vector<Cell>& cells) {
  stream << "<thead><tr>";
  for (const Cell& cell : cells) {
    const auto& [key, heading, css_class] = cell.column;
    if (*key == '\0') {
      stream << "<td class=\"" << css_class << "\"></td>";
    } else {
      stream << "<th scope=\"col\" class=\"" << css_class << "\" data-key=\""
             << key << "\">" << heading << "</th>";
    }
  }
  stream << "</tr></thead>\n";
}

void WriteRow(std::ostream& stream, const Page& page, const Graph& graph,
              const Table& table, const Row& row) {
  stream << "<tr id=\"row-" << row.number << "\" class=\""
         << (row.pair != nullptr ? VerdictText(row.pair->verdict) : "")
         << "\" data-series='" << RowJson(page, graph, table, row) << "'>";
  for (const auto& [column, html, value] : CellsOf(page, table, row)) {
    const bool is_heading = std::string_view(column.key) == "name";
    stream << (is_heading ? "<th scope=\"row\" class=\"" : "<td class=\"")
           << column.css_class << '"';
    if (value) {
      stream << " data-value=\"" << ShortestText(*value) << '"';
    }
    stream << '>' << html << (is_heading ? "</th>" : "</td>");
  }
  stream << "</tr>\n";
}

// "Operations, cycles <span>13</span>"
std::string CaptionOf(const Table& table) {
  std::string caption = table.level == Level::kOperation ? "Operations"
                        : table.kind == RunKind::kExecute
                            ? "Top-level events of the execute runs"
                            : "Top-level events of the finalize runs";
  if (table.units.size() == 1 && !table.units.begin()->first.empty()) {
    caption += ", " + std::string(table.units.begin()->first);
  }
  return caption + " <span class=\"count\">" +
         std::to_string(table.rows.size()) + "</span>";
}

// The note below a table.
std::string NoteOf(const Page& page, const Table& table) {
  if (table.level == Level::kEvent) {
    return "These events overlap: do not add them up.";
  }
  std::string note =
      "A share is the mean in percent of the sum of the means of all "
      "operations";
  note += table.units.size() == 1 ? "" : " in the same unit";
  return note + (page.sides.size() == 1
                     ? "."
                     : ", before the change if both sides have the operation. "
                       "~ is no difference.");
}

void WriteTable(std::ostream& stream, const Page& page, const Graph& graph,
                const Table& table) {
  stream << "<table class=\"series"
         << (page.comparison != nullptr ? " compared" : "") << "\"><caption>"
         << CaptionOf(table) << "</caption>\n";
  WriteHeadings(stream, CellsOf(page, table, table.rows.front()));
  stream << "<tbody>\n";
  for (std::size_t i = 0; i < table.rows.size() && stream.good(); ++i) {
    WriteRow(stream, page, graph, table, table.rows[i]);
  }
  stream << "</tbody></table>\n<p class=\"note\">" << NoteOf(page, table)
         << "</p>\n";
}

}  // namespace

void WriteSections(std::ostream& stream, const Page& page) {
  if (page.graphs.empty()) {
    stream << "<p>The runs have no events.</p>\n";
  }
  for (const Graph& graph : page.graphs) {
    if (!stream.good()) {
      return;
    }
    stream << "<section class=\"graph\" id=\"graph-" << graph.number
           << "\">\n<h2>Graph " << graph.number
           << " <span class=\"summary\">The time of a run, to scale: means "
              "after the warm-up. Point at a piece to read it, click to choose "
              "it.</span></h2>\n";
    WriteStrips(stream, page, graph);
    stream << "<div class=\"columns\"><div class=\"tables\">\n";
    for (const Table& table : graph.tables) {
      WriteTable(stream, page, graph, table);
    }
    stream << "</div></div>\n</section>\n";
  }
  for (const std::string& note : page.notes) {
    stream << "<p class=\"note\">Note: " << EscapeHtml(note) << "</p>\n";
  }
}

void WritePageData(std::ostream& stream, const Page& page) {
  stream << "{\"sides\":" << page.sides.size()
         << ",\"num_warmup\":" << page.num_warmup;
  if (page.sample == Sample::kLogs) {
    const char* separator = ",\"logs\":[[";
    for (std::size_t i = 0; i < page.sides.size(); ++i) {
      for (std::size_t log = 0; log < page.sides[i].logs.size(); ++log) {
        stream << separator << "\n[" << JsonText(page.sides[i].logs[log]) << ","
               << QuoteJson(NotedText(page.logs[i].facts[log].date)) << "]";
        separator = ",";
      }
      separator = "],[";
    }
    stream << "]]";
  }
  stream << "}\n";
}

}  // namespace lumo
