// Escapes untrusted text for one-line messages.

#ifndef LUMO_MODEL_PRINTABLE_H_
#define LUMO_MODEL_PRINTABLE_H_

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

}  // namespace lumo

#endif  // LUMO_MODEL_PRINTABLE_H_
