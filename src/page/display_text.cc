#include "page/display_text.h"

#include <cstddef>

#include <nlohmann/json.hpp>

#include "text/escape.h"

namespace lumo {
namespace {

// Returns `bytes` with bytes that are not UTF-8 replaced by U+FFFD, which the
// JSON library does when it writes a string.
std::string ReplaceInvalid(std::string_view bytes) {
  using nlohmann::json;
  const std::string text =
      json(bytes).dump(-1, ' ', false, json::error_handler_t::replace);
  return json::parse(text).get<std::string>();
}

}  // namespace

DisplayText MakeDisplayText(std::string_view bytes) {
  constexpr std::size_t kLongest = 1000;
  const std::string_view shown =
      bytes.substr(0, TruncatedSize(bytes, kLongest));
  const std::string valid = ReplaceInvalid(shown);
  DisplayText text = {EscapeControls(valid), ""};
  if (bytes.empty()) {
    text.note = "empty";
  } else if (valid != shown) {
    text.note = "not valid UTF-8";
  }
  if (shown.size() < bytes.size()) {
    text.text += "...";
    text.note += text.note.empty() ? "" : ", ";
    text.note += "the first " + std::to_string(shown.size()) + " of " +
                 std::to_string(bytes.size()) + " bytes";
  }
  return text;
}

std::string NotedText(std::string_view bytes) {
  auto [text, note] = MakeDisplayText(bytes);
  if (!note.empty()) {
    text += text.empty() ? "(" : " (";
    text += note + ")";
  }
  return text;
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
  const auto [text, note] = MakeDisplayText(bytes);
  std::string html = text.empty() ? "" : "<bdi>" + EscapeHtml(text) + "</bdi>";
  if (!note.empty()) {
    html += text.empty() ? "" : " ";
    html += "<span class=\"text-note\">(" + note + ")</span>";
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
