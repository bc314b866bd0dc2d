#include "page/page_html.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string_view>
#include <vector>

#include <flatbuffers/flatbuffers.h>

#include "compare/comparison_text.h"
#include "page/display_text.h"
#include "page/page_columns.h"
#include "text/figure_text.h"

namespace lumo {
namespace {

std::string FieldHtml(const flatbuffers::String* text) {
  return TextHtml(flatbuffers::GetStringView(text));
}

// "ORX_BACKEND_ID_GPU", or the number if it has no name.
std::string BackendText(BackendId backend) {
  const std::string name = EnumNameBackendId(backend);
  return name.empty() ? std::to_string(static_cast<std::uint32_t>(backend))
                      : name;
}

// The backends of all runs of a log.
std::string BackendsOf(const PageLog& log) {
  const MessageGroups& groups = log.source->groups;
  std::set<BackendId> backends;
  for (std::int32_t i = 0; i < groups.execute_runs.end; ++i) {
    backends.insert(MessageAt(*groups.messages, i).delegate_type());
  }
  std::string text;
  for (const BackendId backend : backends) {
    text += (text.empty() ? "" : ", ") + BackendText(backend);
  }
  return EscapeHtml(text);
}

// "10 execute runs, 1 finalize run"
std::string RunCountsText(const PageLog& log) {
  const auto& [first_execute, end_execute] = log.source->groups.execute_runs;
  const auto& [first_finalize, end_finalize] = log.source->groups.finalize_runs;
  return CountText(end_execute - first_execute, "execute run") + ", " +
         CountText(end_finalize - first_finalize, "finalize run");
}

// Writes a row of the table of the logs, with the result of `text` for each
// log.
template <typename Function>
void WriteLogRow(std::ostream& stream, const Page& page, const char* heading,
                 Function text) {
  stream << "<tr><th scope=\"row\">" << heading << "</th><td>"
         << text(page.before) << "</td>";
  if (page.after) {
    stream << "<td>" << text(*page.after) << "</td>";
  }
  stream << "</tr>\n";
}

void WriteLogs(std::ostream& stream, const Page& page) {
  stream << "<table class=\"logs\">\n";
  if (page.after) {
    stream << "<thead><tr><td></td>"
              "<th scope=\"col\"><span class=\"key before\"></span>Before</th>"
              "<th scope=\"col\"><span class=\"key after\"></span>After</th>"
              "</tr></thead>\n";
  }
  stream << "<tbody>\n";
  WriteLogRow(stream, page, "Log", [](const PageLog& log) {
    return TextHtml(log.source->log.path);
  });
  WriteLogRow(stream, page, "Date", [](const PageLog& log) {
    return FieldHtml(log.source->log.root->log_date());
  });
  WriteLogRow(stream, page, "Profiler API", [](const PageLog& log) {
    return FieldHtml(log.source->log.root->profiler_api_version());
  });
  WriteLogRow(stream, page, "ORX API", [](const PageLog& log) {
    return FieldHtml(log.source->log.root->orx_api_version());
  });
  WriteLogRow(stream, page, "ORX delegate API", [](const PageLog& log) {
    return FieldHtml(log.source->log.root->orx_delegate_api_version());
  });
  WriteLogRow(stream, page, "Backend", BackendsOf);
  WriteLogRow(stream, page, "Runs", RunCountsText);
  WriteLogRow(stream, page, "Warm-up", [&page](const PageLog&) {
    return CountText(page.num_warmup, "run");
  });
  stream << "</tbody></table>\n";
  if (page.after) {
    stream << "<p><strong>" << TotalsText(page.all_runs, kDefaultConfidence)
           << "</strong>. Verdicts are from Welch&#39;s t test, with p-values "
              "adjusted for the number of tests.</p>\n";
  }
}

// The units of a table, each with its largest mean, or 0 if it has none.
std::map<std::string_view, float> LargestMeans(const PageTable& table) {
  std::map<std::string_view, float> largest;
  for (const SeriesPair* pair : table.pairs) {
    float& mean = largest[pair->unit];
    for (const std::optional<SeriesFigures>& figures :
         {pair->before, pair->after}) {
      if (HasMean(figures)) {
        mean = std::max(mean, figures->mean);
      }
    }
  }
  return largest;
}

void WriteRow(std::ostream& stream, const std::vector<Column>& columns,
              const Row& row, std::size_t number) {
  stream << "<tr data-series=\"" << number << "\">";
  for (const Column& column : columns) {
    const char* const element = column.is_heading ? "th scope=\"row\"" : "td";
    stream << '<' << element << " class=\"" << column.css_class << "\">"
           << column.cell(row) << (column.is_heading ? "</th>" : "</td>");
  }
  stream << "</tr>\n";
}

// "Operations, cycles <span>13</span>". `unit` is the unit of all rows, or
// empty.
std::string CaptionOf(const PageTable& table, std::string_view unit) {
  std::string caption = table.level == Level::kOperation ? "Operations"
                        : table.runs.kind == RunKind::kExecute
                            ? "Top-level events of the execute runs"
                            : "Top-level events of the finalize runs";
  if (!unit.empty()) {
    caption += ", " + std::string(unit);
  }
  return caption + " <span class=\"count\">" +
         std::to_string(table.pairs.size()) + "</span>";
}

// The note below a table.
const char* NoteOf(const PageTable& table, bool has_one_unit) {
  if (table.level == Level::kEvent) {
    return "These events overlap: do not add them up.";
  }
  return has_one_unit
             ? "As in the report, a share is the operation&#39;s average over "
               "all runs, warm-up runs included, in percent of the sum of "
               "these averages."
             : "If the operations of a log have several units, they have no "
               "shares: values in different units do not add up.";
}

void WriteHeadingCell(std::ostream& stream, const PageTable& table,
                      const Column& column) {
  if (*column.heading == '\0') {
    stream << "<td></td>";
    return;
  }
  const bool is_sorted =
      table.is_sorted_by_mean && std::string_view(column.key) == "before.mean";
  stream << "<th scope=\"col\" class=\"" << column.css_class << "\" data-key=\""
         << column.key << '"'
         << (is_sorted ? " aria-sort=\"descending\">" : ">") << column.heading
         << "</th>";
}

// Writes a table whose first row has the number `first`.
void WriteTable(std::ostream& stream, const Page& page, const PageTable& table,
                std::size_t first) {
  const std::map<std::string_view, float> largest = LargestMeans(table);
  const bool has_one_unit = largest.size() == 1;
  const std::vector<Column> columns =
      ColumnsOf(page, table.level, !has_one_unit);
  stream << "<div class=\"scroll\"><table class=\"series\" data-level=\""
         << LevelText(table.level) << "\"><caption>"
         << CaptionOf(table, has_one_unit ? largest.begin()->first : "")
         << "</caption>\n<thead><tr>";
  for (const Column& column : columns) {
    WriteHeadingCell(stream, table, column);
  }
  stream << "</tr></thead>\n<tbody>\n";
  for (std::size_t i = 0; i < table.pairs.size() && stream.good(); ++i) {
    const SeriesPair& pair = *table.pairs[i];
    WriteRow(stream, columns, {page, table.runs, pair, largest.at(pair.unit)},
             first + i);
  }
  stream << "</tbody></table></div>\n";
  stream << "<p class=\"note\">" << NoteOf(table, has_one_unit) << "</p>\n";
}

}  // namespace

std::string MakeTitle(const Page& page) {
  std::string title = NotedText(page.before.source->log.path);
  if (page.after) {
    title += " → " + NotedText(page.after->source->log.path);
  }
  return EscapeHtml(title);
}

void WriteHeading(std::ostream& stream, const Page& page) {
  stream << "<header>\n<h1>" << TextHtml(page.before.source->log.path);
  if (page.after) {
    stream << " → " << TextHtml(page.after->source->log.path);
  }
  stream << "</h1>\n";
  WriteLogs(stream, page);
  stream << "</header>\n";
}

void WriteTables(std::ostream& stream, const Page& page) {
  if (page.graphs.empty()) {
    stream << "<p>The runs have no events.</p>\n";
  }
  std::size_t rows = 0;
  for (const PageGraph& graph : page.graphs) {
    stream << "<section class=\"graph\" data-graph=\"" << graph.number
           << "\">\n";
    if (page.graphs.size() > 1) {
      stream << "<h2>Graph " << graph.number << "</h2>\n";
    }
    for (const PageTable& table : graph.tables) {
      WriteTable(stream, page, table, rows);
      rows += table.pairs.size();
    }
    stream << "</section>\n";
  }
}

}  // namespace lumo
