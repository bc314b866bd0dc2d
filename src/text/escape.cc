#include "text/escape.h"

#include <algorithm>
#include <cstddef>

namespace lumo {
namespace {

// The longest text that is shown whole.
constexpr std::size_t kLongest = 200;

// Returns whether `byte` can only continue a UTF-8 character.
bool IsContinuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xc0U) == 0x80U;
}

struct Character {
  char32_t code;
  // The number of bytes.
  std::size_t size;
};

// Returns the first character of `text`, which is not empty. A byte that does
// not begin a UTF-8 character is a character with its value as the code.
Character DecodeCharacter(std::string_view text) {
  // The smallest codes of characters with 2, 3 and 4 bytes.
  constexpr char32_t kSmallest[] = {0x80, 0x800, 0x10000};
  const auto first = static_cast<unsigned char>(text.front());
  const Character byte = {first, 1};
  const std::size_t size = first < 0xc0   ? 1
                           : first < 0xe0 ? 2
                           : first < 0xf0 ? 3
                                          : 4;
  if (size == 1 || size > text.size() || first >= 0xf8) {
    return byte;
  }
  char32_t code = first & (0x7fU >> size);
  for (const char next : text.substr(1, size - 1)) {
    if (!IsContinuation(next)) {
      return byte;
    }
    code = code << 6U | (static_cast<unsigned char>(next) & 0x3fU);
  }
  const bool is_surrogate = code >= 0xd800 && code <= 0xdfff;
  if (code < kSmallest[size - 2] || is_surrogate || code > 0x10ffff) {
    return byte;
  }
  return {code, size};
}

// Returns whether a character controls a terminal or the direction of text.
bool IsControl(char32_t code) {
  return code < 0x20 || (code >= 0x7f && code <= 0x9f) || code == 0x61c ||
         code == 0x200e || code == 0x200f ||
         (code >= 0x202a && code <= 0x202e) ||
         (code >= 0x2066 && code <= 0x2069);
}

// Appends the bytes of a character, or its escape sequence if it is a backslash
// or `is_control`.
void AppendCharacter(std::string_view bytes, char32_t code, bool is_control,
                     std::string* text) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  if (code == '\n') {
    *text += "\\n";
  } else if (code == '\t') {
    *text += "\\t";
  } else if (code == '\\') {
    *text += "\\\\";
  } else if (is_control) {
    *text += bytes.size() == 1 ? "\\x" : "\\u";
    for (unsigned shift = bytes.size() == 1 ? 8 : 16; shift > 0;) {
      shift -= 4;
      *text += kDigits[code >> shift & 0xfU];
    }
  } else {
    *text += bytes;
  }
}

bool NeedsQuotes(char c) {
  return c == ',' || c == '"' || c == '\r' || c == '\n';
}

}  // namespace

std::string EscapeControls(std::string_view text) {
  std::string escaped;
  while (!text.empty()) {
    const auto [code, size] = DecodeCharacter(text);
    AppendCharacter(text.substr(0, size), code, IsControl(code), &escaped);
    text.remove_prefix(size);
  }
  return escaped;
}

std::size_t TruncatedSize(std::string_view text, std::size_t longest) {
  if (text.size() <= longest) {
    return text.size();
  }
  for (std::size_t size = longest; size > 0 && size + 4 > longest; --size) {
    if (!IsContinuation(text[size])) {
      return size;
    }
  }
  return longest;
}

std::string Printable(std::string_view text) {
  const std::size_t size = TruncatedSize(text, kLongest);
  return EscapeControls(text.substr(0, size)) +
         (size < text.size() ? "..." : "");
}

std::string EscapeAsciiControls(std::string_view text) {
  std::string escaped;
  for (std::size_t i = 0; i < std::min(text.size(), kLongest); ++i) {
    const auto code = static_cast<unsigned char>(text[i]);
    const bool is_control = code < 0x20 || code == 0x7f;
    AppendCharacter(text.substr(i, 1), code, is_control, &escaped);
  }
  return text.size() > kLongest ? escaped + "..." : escaped;
}

void AppendCsvField(std::string_view field, std::string* row) {
  if (std::none_of(field.begin(), field.end(), NeedsQuotes)) {
    *row += field;
    return;
  }
  *row += '"';
  for (const char c : field) {
    *row += c;
    if (c == '"') {
      *row += '"';
    }
  }
  *row += '"';
}

}  // namespace lumo
