// Figures as text.

#ifndef LUMO_TEXT_FIGURE_TEXT_H_
#define LUMO_TEXT_FIGURE_TEXT_H_

#include <cstdint>
#include <string>
#include <string_view>

namespace lumo {

// Returns `number` with `decimals` digits after the point, at most 80, and
// without an exponent, such as "1949.60".
std::string FixedText(double number, int decimals = 2);

// Returns a change in percent with its sign and two decimals, such as "+9.26%".
std::string ChangeText(double percent);

// Returns `number` with up to `precision` significant digits, at most 80, such
// as "0.00123" or "1.2e-06".
std::string SignificantText(double number, int precision);

// Returns a number of things, such as "1 run" or "3 runs" for the noun "run".
std::string CountText(std::int64_t count, std::string_view noun);

// Returns `number` with the fewest digits that read back to the same double,
// and without an exponent below 1e15.
std::string ShortestText(double number);

}  // namespace lumo

#endif  // LUMO_TEXT_FIGURE_TEXT_H_
