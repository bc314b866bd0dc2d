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

// Returns `text` with U+202A to U+202E and U+2066 to U+2069 escaped: they
// change the direction of the text after them and could disguise a name.
std::string EscapeDirections(std::string_view text) {
  std::string escaped;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const std::string_view start = text.substr(i, 2);
    const char last = i + 2 < text.size() ? text[i + 2] : '\0';
    const bool is_embedding =
        start == "\xE2\x80" && last >= '\xAA' && last <= '\xAE';
    const bool is_isolate =
        start == "\xE2\x81" && last >= '\xA6' && last <= '\xA9';
    if (is_embedding || is_isolate) {
      escaped += is_embedding ? "\\u202" : "\\u206";
      escaped += "0123456789abcdef"[static_cast<unsigned char>(last) % 16];
      i += 2;
    } else {
      escaped += text[i];
    }
  }
  return escaped;
}

// Returns how many bytes of a text are shown. A character of up to four bytes
// that would be truncated is omitted.
std::size_t ShownSize(std::string_view bytes) {
  constexpr std::size_t kMaxBytes = 1000;
  if (bytes.size() <= kMaxBytes) {
    return bytes.size();
  }
  for (std::size_t size = kMaxBytes; size > kMaxBytes - 4; --size) {
    const bool is_inside_character =
        (static_cast<unsigned char>(bytes[size]) & 0xC0U) == 0x80U;
    if (!is_inside_character) {
      return size;
    }
  }
  return kMaxBytes;
}

}  // namespace

DisplayText MakeDisplayText(std::string_view bytes) {
  const std::string_view shown = bytes.substr(0, ShownSize(bytes));
  const std::string valid = ReplaceInvalid(shown);
  DisplayText text = {EscapeDirections(EscapeControls(valid)), ""};
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
