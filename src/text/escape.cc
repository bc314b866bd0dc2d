#include "text/escape.h"

#include <algorithm>
#include <cstddef>

namespace lumo {
namespace {

bool NeedsQuotes(char c) {
  return c == ',' || c == '"' || c == '\r' || c == '\n';
}

}  // namespace

std::string EscapeControls(std::string_view text) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string printable;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '\n') {
      printable += "\\n";
    } else if (c == '\t') {
      printable += "\\t";
    } else if (c == '\\') {
      printable += "\\\\";
    } else if (byte < 0x20 || byte == 0x7f) {
      printable += "\\x";
      printable += kDigits[byte / 16];
      printable += kDigits[byte % 16];
    } else {
      printable += c;
    }
  }
  return printable;
}

std::string Printable(std::string_view text) {
  constexpr std::size_t kLongest = 200;
  return EscapeControls(text.substr(0, kLongest)) +
         (text.size() > kLongest ? "..." : "");
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
