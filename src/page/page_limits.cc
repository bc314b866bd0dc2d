// What keeps a page small enough for a browser.

#include <cstddef>
#include <cstdint>
#include <string>

#include "page/display_text.h"
#include "page/page_model.h"

namespace lumo {

std::string ExplainSize(const Page& page) {
  // A browser takes minutes for more rows. Only artificial logs have as many
  // events, or as many graphs, or use the same long names again and again.
  constexpr std::size_t kMaxRows = 100000;
  constexpr std::size_t kMaxGraphs = 1000;
  constexpr std::uint64_t kFreeBytes = 1000000;
  const auto explain = [](const std::string& what, std::uint64_t count,
                          std::uint64_t limit) {
    return "too " + what + " for a page: " + std::to_string(count) +
           ", more than " + std::to_string(limit);
  };
  if (page.graphs.size() > kMaxGraphs) {
    return explain("many graphs", page.graphs.size(), kMaxGraphs);
  }
  std::size_t rows = 0;
  std::uint64_t limit = kFreeBytes;
  std::uint64_t text = 0;
  for (const Graph& graph : page.graphs) {
    for (const Table& table : graph.tables) {
      rows += table.rows.size();
    }
  }
  for (const PageLogs& logs : page.logs) {
    limit += 10 * logs.size;
  }
  if (rows > kMaxRows) {
    return explain("many different events", rows, kMaxRows);
  }
  for (const Side& side : page.sides) {
    for (const auto& [key, runs] : side.runs) {
      for (const SideSeries& series : runs.series) {
        for (const char c : series.name.substr(0, kLongestText)) {
          text += c >= ' ' && c <= '~' ? 1 : 6;  // such as "\u0645"
        }
        if (text > limit) {
          return explain("much text in the names of events", text, limit) +
                 " bytes";
        }
      }
    }
  }
  return "";
}

}  // namespace lumo
