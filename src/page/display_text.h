// Text from a log inside a page.

#ifndef LUMO_PAGE_DISPLAY_TEXT_H_
#define LUMO_PAGE_DISPLAY_TEXT_H_

#include <string>
#include <string_view>

namespace lumo {

// A text that a browser can show.
struct DisplayText {
  // Valid UTF-8 without control characters: those, and the backslash, are
  // escaped as Printable() does it, but nothing is cut off. U+FFFD stands for
  // bytes that are not UTF-8.
  std::string text;
  // Whether there were such bytes.
  bool is_damaged;
};

DisplayText MakeDisplayText(std::string_view bytes);

// Returns `text` with the characters that have a meaning in HTML, in text and
// in quoted attributes alike, written as entities.
std::string EscapeHtml(std::string_view text);

// Returns a text from a log as HTML: its display text, kept apart from the text
// around it, because it may have another direction, and marked if it is
// damaged.
std::string TextHtml(std::string_view bytes);

// Returns `json`, whose characters must all be ASCII, in a form that cannot
// end or begin an element: <, > and & are written as escapes. They can only
// stand in strings.
std::string EscapeJsonForHtml(std::string_view json);

}  // namespace lumo

#endif  // LUMO_PAGE_DISPLAY_TEXT_H_
