#include "model/printable.h"

#include <cstddef>

namespace lumo {

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

}  // namespace lumo
