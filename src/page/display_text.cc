#include "page/display_text.h"

#include <nlohmann/json.hpp>

#include "model/printable.h"

namespace lumo {
namespace {

// Returns `bytes` with U+FFFD for what is not UTF-8, by way of a JSON text,
// whose writer replaces it.
std::string ReplaceInvalid(std::string_view bytes) {
  using nlohmann::json;
  const std::string text =
      json(bytes).dump(-1, ' ', false, json::error_handler_t::replace);
  return json::parse(text).get<std::string>();
}

}  // namespace

DisplayText MakeDisplayText(std::string_view bytes) {
  const std::string valid = ReplaceInvalid(bytes);
  return {EscapeControls(valid), valid != bytes};
}

std::string EscapeHtml(std::string_view text) {
  std::string html;
  for (const char c : text) {
    switch (c) {
      case '&':
        html += "&amp;";
        break;
      case '<':
        html += "&lt;";
        break;
      case '>':
        html += "&gt;";
        break;
      case '"':
        html += "&quot;";
        break;
      case '\'':
        html += "&#39;";
        break;
      default:
        html += c;
    }
  }
  return html;
}

std::string TextHtml(std::string_view bytes) {
  const DisplayText text = MakeDisplayText(bytes);
  std::string html = "<bdi>" + EscapeHtml(text.text) + "</bdi>";
  if (text.is_damaged) {
    html += " <span class=\"damaged\">(not valid UTF-8)</span>";
  }
  return html;
}

std::string EscapeJsonForHtml(std::string_view json) {
  std::string escaped;
  for (const char c : json) {
    switch (c) {
      case '<':
        escaped += "\\u003c";
        break;
      case '>':
        escaped += "\\u003e";
        break;
      case '&':
        escaped += "\\u0026";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

}  // namespace lumo
