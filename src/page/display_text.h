// Text from a log on a page.

#ifndef LUMO_PAGE_DISPLAY_TEXT_H_
#define LUMO_PAGE_DISPLAY_TEXT_H_

#include <cstddef>
#include <string>
#include <string_view>

namespace lumo {

// The number of bytes of a text that are shown.
inline constexpr std::size_t kLongestText = 1000;

// A text that a browser can show.
struct DisplayText {
  // Valid UTF-8, escaped with EscapeControls(). Bytes that are not UTF-8 are
  // replaced by U+FFFD. A text of more than 1,000 bytes is truncated after a
  // character, and "..." is appended.
  std::string text;
  // A note about the text: "not valid UTF-8", "the first 1000 of 5000 bytes",
  // both, or "empty". Usually there is none.
  std::string note;
};

DisplayText MakeDisplayText(std::string_view bytes);

// Returns the text with its note, if any, in parentheses.
std::string NotedText(const DisplayText& text);

// Returns `text` escaped for HTML, in text and in quoted attributes.
std::string EscapeHtml(std::string_view text);

// Returns the text as HTML, isolated from the text around it in case it has
// another direction, with its note.
std::string TextHtml(const DisplayText& text);

// Returns `text`, valid UTF-8, as a JSON string in ASCII that can be placed
// inside an element or a quoted attribute: <, >, & and ' are escaped.
std::string QuoteJson(std::string_view text);

// Returns the noted display text of a text from a log, see QuoteJson().
std::string JsonText(std::string_view bytes);

}  // namespace lumo

#endif  // LUMO_PAGE_DISPLAY_TEXT_H_
