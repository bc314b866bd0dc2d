// Escapes text from a log or the command line for messages, and for fields of
// comma-separated rows.

#ifndef LUMO_TEXT_ESCAPE_H_
#define LUMO_TEXT_ESCAPE_H_

#include <cstddef>
#include <string>
#include <string_view>

namespace lumo {

// Returns `text` with the characters escaped that could end the line, control a
// terminal or disguise a name: the backslash as \\, a line feed as \n, a tab as
// \t, and as in \x1b or \u202e, with lower-case digits,
// - the other control characters, U+0000 to U+001F and U+007F to U+009F;
// - the characters that change the direction of text: U+061C, U+200E, U+200F,
//   U+202A to U+202E and U+2066 to U+2069;
// - the bytes 0x80 to 0x9f that do not belong to a UTF-8 character: some
//   terminals take them for control characters.
std::string EscapeControls(std::string_view text);

// Returns the size of `text` truncated to `longest` bytes, or to up to 3 fewer
// so that no UTF-8 character is truncated.
std::size_t TruncatedSize(std::string_view text, std::size_t longest);

// As EscapeControls(), but a text of more than 200 bytes is first truncated,
// see TruncatedSize(), and "..." is appended.
std::string Printable(std::string_view text);

// As Printable(), but escapes only the backslash and the ASCII control
// characters, and truncates even within a character. For the messages of the
// viewer, which are fixed.
std::string EscapeAsciiControls(std::string_view text);

// Appends `field` to `row`. A field that contains a comma, a quote, a carriage
// return or a line feed is quoted, and each quote in it is doubled.
void AppendCsvField(std::string_view field, std::string* row);

}  // namespace lumo

#endif  // LUMO_TEXT_ESCAPE_H_
