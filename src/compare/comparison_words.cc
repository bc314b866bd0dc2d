#include "compare/comparison_words.h"

#include <array>
#include <charconv>

namespace lumo {
namespace {

// The longest is a float's 39 digits and two decimals.
using Digits = std::array<char, 64>;

}  // namespace

std::string_view LevelText(Level level) {
  return level == Level::kEvent ? "event" : "operation";
}

std::string_view RunKindText(RunKind kind) {
  return kind == RunKind::kFinalize ? "finalize" : "execute";
}

std::string_view VerdictText(Verdict verdict) {
  switch (verdict) {
    case Verdict::kHigher:
      return "higher";
    case Verdict::kLower:
      return "lower";
    case Verdict::kNoDifference:
      return "no_difference";
    case Verdict::kNoTest:
      return "no_test";
    case Verdict::kOnlyBefore:
      return "only_before";
    case Verdict::kOnlyAfter:
      return "only_after";
  }
  return "";
}

std::string Fixed(double number) {
  Digits digits;
  const auto written =
      std::to_chars(digits.data(), digits.data() + digits.size(), number,
                    std::chars_format::fixed, 2);
  return {digits.data(), written.ptr};
}

std::string Significant(double number, int precision) {
  Digits digits;
  const auto written =
      std::to_chars(digits.data(), digits.data() + digits.size(), number,
                    std::chars_format::general, precision);
  return {digits.data(), written.ptr};
}

std::string Shortest(float number) {
  Digits digits;
  const auto written =
      std::to_chars(digits.data(), digits.data() + digits.size(), number);
  return {digits.data(), written.ptr};
}

}  // namespace lumo
