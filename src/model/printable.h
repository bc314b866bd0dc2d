// Foreign text inside a message of one line.

#ifndef LUMO_MODEL_PRINTABLE_H_
#define LUMO_MODEL_PRINTABLE_H_

#include <string>
#include <string_view>

namespace lumo {

// Returns `text` without a byte that could end the line or begin an escape
// code: the backslash and the bytes below 0x20 and of 0x7f as \\, \n, \t or
// \x1b (two lower-case digits), all others as they are. Of a text longer than
// 200 bytes only the first 200 are taken, even if that cuts a character, with
// "..." after them.
std::string Printable(std::string_view text);

// As Printable(), but of any length.
std::string EscapeControls(std::string_view text);

}  // namespace lumo

#endif  // LUMO_MODEL_PRINTABLE_H_
