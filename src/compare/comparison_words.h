// The words and the forms of numbers in which comparisons are written.

#ifndef LUMO_COMPARE_COMPARISON_WORDS_H_
#define LUMO_COMPARE_COMPARISON_WORDS_H_

#include <string>
#include <string_view>

#include "compare/comparison.h"

namespace lumo {

// Returns "event" or "operation".
std::string_view LevelText(Level level);

// Returns "finalize" or "execute".
std::string_view RunKindText(RunKind kind);

// Returns "higher", "lower", "no_difference", "no_test", "only_before" or
// "only_after".
std::string_view VerdictText(Verdict verdict);

// Returns the number with two decimals, such as "1949.60".
std::string Fixed(double number);

// Returns the number with up to `precision` significant digits, such as
// "0.00123" or "1.2e-06".
std::string Significant(double number, int precision);

// Returns the number in the fewest digits that read back to the same float.
std::string Shortest(float number);

}  // namespace lumo

#endif  // LUMO_COMPARE_COMPARISON_WORDS_H_
