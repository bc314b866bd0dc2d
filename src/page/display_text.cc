#include "page/display_text.h"

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
  const std::string_view shown =
      bytes.substr(0, TruncatedSize(bytes, kLongestText));
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

std::string NotedText(const DisplayText& text) {
  if (text.note.empty()) {
    return text.text;
  }
  return text.text + (text.text.empty() ? "(" : " (") + text.note + ")";
}

std::string EscapeHtml(std::string_view text) {
  constexpr std::string_view kSpecial = "&<>\"'";
  constexpr const char* kEntities[] = {"&amp;", "&lt;", "&gt;", "&quot;",
                                       "&#39;"};
  std::string html;
  for (const char c : text) {
    const std::size_t special = kSpecial.find(c);
    if (special == std::string_view::npos) {
      html += c;
    } else {
      html += kEntities[special];
    }
  }
  return html;
}

std::string TextHtml(const DisplayText& text) {
  std::string html =
      text.text.empty() ? "" : "<bdi>" + EscapeHtml(text.text) + "</bdi>";
  if (!text.note.empty()) {
    html += text.text.empty() ? "" : " ";
    html += "<span class=\"text-note\">(" + text.note + ")</span>";
  }
  return html;
}

std::string QuoteJson(std::string_view text) {
  std::string quoted;
  for (const char c : nlohmann::json(text).dump(-1, ' ', true)) {
    switch (c) {
      case '<':
        quoted += "\\u003c";
        break;
      case '>':
        quoted += "\\u003e";
        break;
      case '&':
        quoted += "\\u0026";
        break;
      case '\'':
        quoted += "\\u0027";
        break;
      default:
        quoted += c;
    }
  }
  return quoted;
}

std::string JsonText(std::string_view bytes) {
  return QuoteJson(NotedText(MakeDisplayText(bytes)));
}

}  // namespace lumo
