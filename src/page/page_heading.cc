#include "page/page_heading.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "page/display_text.h"
#include "text/figure_text.h"

namespace lumo {
namespace {

constexpr std::string_view kSides[] = {"Before", "After"};

// The squares have the colors of the sides in the chart.
std::string SideHeading(const Page& page, std::size_t side) {
  constexpr const char* kKeys[] = {"<span class=\"key before\"></span>",
                                   "<span class=\"key after\"></span>"};
  return page.sides.size() == 1 ? ""
                                : kKeys[side] + std::string(kSides[side]) + ' ';
}

// "60 runs of each graph", or "10 to 60 runs of each graph".
std::string RunCountsText(const Side& side, RunKind kind) {
  std::vector<std::int64_t> counts;
  for (const auto& [key, runs] : side.runs) {
    if (key.first == kind) {
      counts.push_back(runs.run_count);
    }
  }
  if (counts.empty()) {
    return "0 runs";
  }
  const auto [least, most] = std::minmax_element(counts.begin(), counts.end());
  return (*least == *most ? "" : std::to_string(*least) + " to ") +
         CountText(*most, "run") + (counts.size() == 1 ? "" : " of each graph");
}

// Returns the results of `text` for the logs of a side: one if they are equal,
// otherwise a line for each log.
template <typename Function>
std::string JoinTexts(const std::vector<LogFacts>& facts, Function text) {
  std::string all = text(facts.front());
  bool is_equal = true;
  for (const LogFacts& log : facts) {
    is_equal &= text(log) == text(facts.front());
  }
  for (std::size_t i = 1; !is_equal && i < facts.size(); ++i) {
    all += "<br>" + text(facts[i]);
  }
  return all;
}

std::string DateHtml(const LogFacts& log) { return TextHtml(log.date); }
std::string BackendsHtml(const LogFacts& log) {
  return EscapeHtml(log.backends);
}
std::string VersionsHtml(const LogFacts& log) {
  return TextHtml(log.profiler_api) + ", " + TextHtml(log.orx_api) + ", " +
         TextHtml(log.delegate_api);
}

// Returns whether `text` is the same for all logs of the page.
bool AreEqual(const Page& page, std::string (*text)(const LogFacts&)) {
  const std::string first = text(page.logs.front().facts.front());
  return std::all_of(
      page.logs.begin(), page.logs.end(), [&](const PageLogs& logs) {
        return std::all_of(
            logs.facts.begin(), logs.facts.end(),
            [&](const LogFacts& log) { return text(log) == first; });
      });
}

// Returns whether the sides have equal numbers of runs.
bool HaveEqualRuns(const Page& page) {
  return RunCountsText(page.sides.front(), RunKind::kExecute) ==
         RunCountsText(page.sides.back(), RunKind::kExecute);
}

// "2026-03-04 11:02:45, 60 runs of each graph", or "5 logs, 2026-03-04 11:02:45
// to 2026-03-08 11:02:45, 300 runs of each graph".
std::string DescribeSide(const Page& page, std::size_t i) {
  const std::vector<LogFacts>& facts = page.logs[i].facts;
  std::string text = "<span class=\"log\">" + SideHeading(page, i);
  if (facts.size() > 1) {
    text += CountText(std::ssize(facts), "log") + ", ";
  }
  text += "<b>" + DateHtml(facts.front()) + "</b>";
  if (facts.size() > 1) {
    text += " to <b>" + DateHtml(facts.back()) + "</b>";
  }
  if (!HaveEqualRuns(page)) {
    text += ", <b>" + RunCountsText(page.sides[i], RunKind::kExecute) + "</b>";
  }
  return text + "</span>\n";
}

// What is equal in all logs, and what is not.
std::string DescribeAll(const Page& page) {
  const bool has_several =
      page.sides.size() + page.logs.front().facts.size() > 2;
  std::string text = "<span class=\"log\">";
  text += page.sides.size() == 2 ? "both: " : "";
  if (HaveEqualRuns(page)) {
    text += "<b>" + RunCountsText(page.sides[0], RunKind::kExecute) + "</b>, ";
  }
  constexpr std::size_t kLongest = 100;
  const std::string backends = BackendsHtml(page.logs.front().facts.front());
  text += !AreEqual(page, BackendsHtml) ? "<b>backends differ</b>"
          : backends.size() <= kLongest ? backends
                                        : "several backends";
  text += ", warm-up " + CountText(page.num_warmup, "run");
  if (has_several) {
    text += AreEqual(page, VersionsHtml) ? ", same versions"
                                         : ", <b>versions differ</b>";
  }
  return text + "</span>\n";
}

// Writes a row of the list of all, with the result of `text` for each side.
template <typename Function>
void WriteLogRow(std::ostream& stream, const Page& page, const char* heading,
                 Function text) {
  stream << "<tr><th scope=\"row\">" << heading << "</th>";
  for (std::size_t i = 0; i < page.sides.size(); ++i) {
    stream << "<td>" << text(i) << "</td>";
  }
  stream << "</tr>\n";
}

}  // namespace

std::string MakeTitle(const Page& page) {
  std::string title;
  for (const Side& side : page.sides) {
    title +=
        (title.empty() ? "" : " → ") + NotedText(MakeDisplayText(side.path));
  }
  return EscapeHtml(title);
}

void WriteLogs(std::ostream& stream, const Page& page) {
  stream << "<h1>";
  for (std::size_t i = 0; i < page.sides.size(); ++i) {
    stream << (i == 0 ? "" : " → ")
           << TextHtml(MakeDisplayText(page.sides[i].path));
  }
  stream << "</h1>\n<details class=\"logs\"><summary>";
  for (std::size_t i = 0; i < page.sides.size(); ++i) {
    stream << DescribeSide(page, i);
  }
  stream << DescribeAll(page) << "<span class=\"all\">all</span></summary>\n"
         << "<table>\n";
  if (page.sides.size() == 2) {
    stream << "<thead><tr><td></td><th scope=\"col\">" << SideHeading(page, 0)
           << "</th><th scope=\"col\">" << SideHeading(page, 1)
           << "</th></tr></thead>\n";
  }
  stream << "<tbody>\n";
  const auto write_facts = [&](const char* heading, auto text) {
    WriteLogRow(stream, page, heading, [&](std::size_t i) {
      return JoinTexts(page.logs[i].facts, text);
    });
  };
  WriteLogRow(stream, page, "Log", [&page](std::size_t i) {
    std::string paths;
    for (const std::string& path : page.sides[i].logs) {
      paths += (paths.empty() ? "" : "<br>") + TextHtml(MakeDisplayText(path));
    }
    return paths;
  });
  write_facts("Date", DateHtml);
  write_facts("Profiler API",
              [](const LogFacts& log) { return TextHtml(log.profiler_api); });
  write_facts("ORX API",
              [](const LogFacts& log) { return TextHtml(log.orx_api); });
  write_facts("ORX delegate API",
              [](const LogFacts& log) { return TextHtml(log.delegate_api); });
  write_facts("Backend", BackendsHtml);
  WriteLogRow(stream, page, "Execute runs", [&page](std::size_t i) {
    return RunCountsText(page.sides[i], RunKind::kExecute);
  });
  WriteLogRow(stream, page, "Finalize runs", [&page](std::size_t i) {
    return RunCountsText(page.sides[i], RunKind::kFinalize);
  });
  stream << "</tbody></table></details>\n";
}

}  // namespace lumo
