// Text from a log inside a page.

#ifndef LUMO_PAGE_DISPLAY_TEXT_H_
#define LUMO_PAGE_DISPLAY_TEXT_H_

#include <string>
#include <string_view>

namespace lumo {

// A text that a browser can show.
struct DisplayText {
  // Valid UTF-8 without control characters, and without those that change the
  // direction of text: all of these, and the backslash, are escaped, as in "\n"
  // or "\u202e". U+FFFD stands for bytes that are not UTF-8.
  // Of more than 1,000 bytes only the first are taken, up to the end of a
  // character, with "..." after them.
  std::string text;
  // What a reader must know about it: "not valid UTF-8", "the first 1000 of
  // 5000 bytes", both, or "empty". Usually nothing.
  std::string note;
};

DisplayText MakeDisplayText(std::string_view bytes);

// Returns the display text with its note, if any, in parentheses.
std::string NotedText(std::string_view bytes);

// Returns `text` with the characters that have a meaning in HTML, in text and
// in quoted attributes alike, written as entities.
std::string EscapeHtml(std::string_view text);

// Returns a text from a log as HTML: its display text, kept apart from the text
// around it, because it may have another direction, and its note.
std::string TextHtml(std::string_view bytes);

// Returns `json`, whose characters must all be ASCII, in a form that cannot
// end or begin an element: <, > and & are written as escapes. They can only
// stand in strings.
std::string EscapeJsonForHtml(std::string_view json);

}  // namespace lumo

#endif  // LUMO_PAGE_DISPLAY_TEXT_H_
