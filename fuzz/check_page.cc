#include "check_page.h"

#include <cstddef>
#include <cstdlib>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

#include <nlohmann/json.hpp>

#include "compare/comparison.h"
#include "compare/side.h"
#include "input/input_log.h"
#include "model/log_series.h"
#include "page/page_data.h"
#include "page/page_graphs.h"
#include "page/page_model.h"
#include "page/page_overview.h"

namespace lumo {
namespace {

void Check(bool condition) {
  if (!condition) {
    std::abort();
  }
}

// Whether each "<" begins an element that pages have, and each "&" an entity.
bool IsOwnMarkup(std::string_view html) {
  static const std::set<std::string_view> elements = {
      "a",     "abbr",  "b",  "bdi",  "br",      "caption", "details", "div",
      "h1",    "h2",    "p",  "rect", "section", "span",    "summary", "svg",
      "table", "tbody", "td", "text", "th",      "thead",   "title",   "tr"};
  static const std::set<std::string_view> entities = {"amp", "lt", "gt", "quot",
                                                      "#39"};
  std::size_t begin = 0;
  while ((begin = html.find_first_of("<&")) != std::string_view::npos) {
    const bool is_element = html[begin] == '<';
    html.remove_prefix(begin + 1);
    if (is_element && html.starts_with('/')) {
      html.remove_prefix(1);
    }
    const std::string_view word =
        html.substr(0, html.find_first_of(is_element ? " >" : ";"));
    if (!(is_element ? elements : entities).contains(word)) {
      return false;
    }
  }
  return true;
}

}  // namespace

void CheckPage(const std::vector<std::uint8_t>& bytes,
               std::int32_t num_warmup) {
  const ProfilingLog* const root = GetProfilingLog(bytes.data());
  const MessageGroups groups = GroupMessages(*root);
  if (groups.inference_count == 0 || !groups.graph_error.empty()) {
    return;  // there is no page for such a log
  }
  const InputLog log = {Log("<path>&", bytes, root), groups};
  // A page of the log, of the log twice, and of two folders.
  for (const auto& [side_count, log_count] :
       {std::pair(1, 1), {2, 1}, {2, 2}}) {
    Names names;
    Side side;
    side.path = "<path>&";
    side.num_warmup = num_warmup;
    for (int i = 0; i < log_count; ++i) {
      side.logs.push_back(side.path);
      AddLog(static_cast<std::size_t>(i), CollectLogSeries(groups, true),
             &names, &side);
    }
    const auto count = static_cast<std::size_t>(side_count);
    const std::vector<Side> sides(count, side);
    const std::vector<std::vector<LogFacts>> facts(
        count, std::vector(side.logs.size(), ReadFacts(log)));
    std::string error;
    const auto comparison =
        CompareSides(sides.front(), sides.back(), 99, false, &error);
    const Page page =
        MakePage(sides, facts, side_count == 2 ? &*comparison : nullptr);
    std::ostringstream html;
    WriteHeading(html, page);
    WriteOverview(html, page);
    WriteGraphs(html, page);
    Check(IsOwnMarkup(html.str()));
    for (const auto& [number, graph] : page.graphs) {
      for (const Table* table :
           {&graph.operations, &graph.execute_events, &graph.finalize_events}) {
        for (const Row& row : table->rows) {
          const std::string json = RowJson(page, row);
          Check(nlohmann::json::accept(json));
          Check(json.find_first_of("<>&'") == std::string::npos);
        }
      }
    }
    std::ostringstream data;
    WritePageData(data, page);
    Check(nlohmann::json::accept(data.str()));
    Check(data.str().find_first_of("<>&") == std::string::npos);
  }
}

}  // namespace lumo
