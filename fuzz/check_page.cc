#include "check_page.h"

#include <cstddef>
#include <cstdlib>
#include <set>
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
bool IsOwnMarkup(std::string_view html) {
  static const std::set<std::string_view> elements = {
      "bdi",  "caption", "div", "h1", "h2", "header", "p",  "rect",  "section",
      "span", "strong",  "svg", "td", "th", "table",  "tr", "tbody", "thead"};
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
  Log log = {"<path>&", bytes, nullptr};
  log.root = GetProfilingLog(log.bytes.data());
  std::string error;
  const auto before = MakeComparedLog(std::move(log), &error);
  if (!before) {
    return;  // there is no page for such a log
  }
  for (const ComparedLog* after :
       {static_cast<const ComparedLog*>(nullptr), &*before}) {
    const Page page = MakePage(*before, after, num_warmup);
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
