#include "check_page.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

#include <nlohmann/json.hpp>

#include "compare/compared_log.h"
#include "page/page_data.h"
#include "page/page_html.h"
#include "page/page_tables.h"

namespace lumo {
namespace {

void Check(bool condition) {
  if (!condition) {
    std::abort();
  }
}

// Whether each "<" begins an element that pages have, and each "&" an entity.
bool IsOwnMarkup(const std::string& html) {
  constexpr std::string_view kElements[] = {
      "h1>",      "h2>",     "p>",       "p class=\"note\">",
      "bdi>",     "strong>", "tr>",      "td>",
      "thead>",   "tbody>",  "svg ",     "rect class=\"",
      "caption>", "header>", "section>", "section class=\"graph\" ",
      "div>",     "span>",   "table>",   "div class=\"scroll\">",
      "th>",      "svg>",    "table ",   "th scope=\"",
      "td class", "span cl", "tr data-"};
  constexpr std::string_view kEntities[] = {"&amp;", "&lt;", "&gt;", "&quot;",
                                            "&#39;"};
  for (std::size_t i = 0; i < html.size(); ++i) {
    const std::string_view rest = std::string_view(html).substr(i);
    const auto begins_rest = [rest](std::string_view text) {
      return rest.substr(rest.starts_with("</") ? 2 : 1).starts_with(text);
    };
    if ((rest.front() == '<' &&
         std::none_of(std::begin(kElements), std::end(kElements),
                      begins_rest)) ||
        (rest.front() == '&' &&
         std::none_of(std::begin(kEntities), std::end(kEntities),
                      [rest](std::string_view text) {
                        return rest.starts_with(text);
                      }))) {
      return false;
    }
  }
  return true;
}

ComparedLog MakeLog(const std::vector<std::uint8_t>& bytes) {
  Log log = {"<path>&", bytes, nullptr};
  log.root = GetProfilingLog(log.bytes.data());
  MessageGroups groups = GroupMessages(*log.root);
  LogSeries series =
      groups.graph_error.empty() ? CollectLogSeries(groups) : LogSeries{};
  return {std::move(log), std::move(groups), std::move(series)};
}

}  // namespace

void CheckPage(const std::vector<std::uint8_t>& log, std::int32_t num_warmup) {
  const ComparedLog before = MakeLog(log);
  if (before.groups.inference_count == 0 ||
      !before.groups.graph_error.empty()) {
    return;  // LoadComparedLog() rejects such a log
  }
  for (const ComparedLog* after :
       {static_cast<const ComparedLog*>(nullptr), &before}) {
    const Page page = MakePage(before, after, num_warmup);
    std::ostringstream data;
    WritePageData(data, page);
    Check(nlohmann::json::accept(data.str()));
    Check(data.str().find_first_of("<>&") == std::string::npos);
    std::ostringstream html;
    WriteHeading(html, page);
    WriteTables(html, page);
    Check(IsOwnMarkup(html.str()));
  }
}

}  // namespace lumo
