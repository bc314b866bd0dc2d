// Escapes text from a log or the command line for messages, and for fields of
// comma-separated rows.

#ifndef LUMO_TEXT_ESCAPE_H_
#define LUMO_TEXT_ESCAPE_H_

#include <string>
#include <string_view>

namespace lumo {

// Returns `text` with the backslash and the ASCII control characters (below
// 0x20, and 0x7f) escaped as \\, \n, \t or \x1b (two lower-case digits), so
// that it cannot end the line. A text of more than 200 bytes is first truncated
// to 200, even within a character, and "..." is appended.
std::string Printable(std::string_view text);

// As Printable(), but of any length.
std::string EscapeControls(std::string_view text);

// Appends `field` to `row`. A field that contains a comma, a quote, a carriage
// return or a line feed is quoted, and each quote in it is doubled.
void AppendCsvField(std::string_view field, std::string* row);

}  // namespace lumo

#endif  // LUMO_TEXT_ESCAPE_H_
