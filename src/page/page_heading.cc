#include "page/page_heading.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include <flatbuffers/flatbuffers.h>

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

// Returns whether all lines, or all lists of lines, are equal.
bool AreEqual(const auto& all) {
  return std::ranges::count(all, all.front()) == std::ssize(all);
}

// "ORX_BACKEND_ID_GPU", or "graph 0: ORX_BACKEND_ID_GPU; graph 1: 9" if graphs
// have different backends. A backend without a name is a number.
std::string BackendsText(const MessageGroups& groups) {
  std::vector<Lines> graphs(static_cast<std::size_t>(groups.graph_count));
  for (std::int32_t i = 0; i < groups.execute_runs.end; ++i) {
    const ProfilingMessage& message = MessageAt(*groups.messages, i);
    const BackendId backend = message.delegate_type();
    std::string name = EnumNameBackendId(backend);
    if (name.empty()) {
      name = std::to_string(static_cast<std::uint32_t>(backend));
    }
    Lines& known = graphs[*GraphOf(message, groups.graph_count)];
    if (std::ranges::find(known, name) == known.end()) {
      known.push_back(name);
    }
  }
  if (AreEqual(graphs)) {
    return Join(graphs.front(), ", ");
  }
  Lines texts;
  for (std::size_t i = 0; i < graphs.size(); ++i) {
    texts.push_back("graph " + std::to_string(i) + ": " +
                    Join(graphs[i], ", "));
  }
  return Join(texts, "; ");
}

// "60 runs of each graph", or "10 to 60 runs of each graph".
std::string RunsText(const MessageGroups& groups, RunKind kind) {
  const std::vector<std::int32_t> counts = CountRuns(groups, kind);
  const auto [least, most] = std::ranges::minmax(counts);
  return (least == most ? "" : std::to_string(least) + " to ") +
         CountText(most, "run") + (counts.size() == 1 ? "" : " of each graph");
}

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

}  // namespace

LogFacts ReadFacts(const InputLog& log) {
  const ProfilingLog& root = *log.log.root;
  const auto text = [](const flatbuffers::String* field) {
    return TextHtml(flatbuffers::GetStringView(field));
  };
  return {log.log.bytes.size(),
          PlainText(flatbuffers::GetStringView(root.log_date())),
          {TextHtml(log.log.path), text(root.log_date()),
           text(root.profiler_api_version()), text(root.orx_api_version()),
           text(root.orx_delegate_api_version()), BackendsText(log.groups),
           RunsText(log.groups, RunKind::kExecute),
           RunsText(log.groups, RunKind::kFinalize)}};
}

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

}  // namespace lumo
