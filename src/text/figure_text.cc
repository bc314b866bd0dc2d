#include "text/figure_text.h"

#include <array>
#include <charconv>
#include <cmath>

namespace lumo {
namespace {

// A double before its decimal point has 309 digits at most.
using Digits = std::array<char, 320>;

}  // namespace

std::string FixedText(double number, int decimals) {
  Digits digits;
  const auto written =
      std::to_chars(digits.data(), digits.data() + digits.size(), number,
                    std::chars_format::fixed, decimals);
  return {digits.data(), written.ptr};
}

std::string ChangeText(double percent) {
  std::string text = percent < 0 ? "" : "+";
  text += FixedText(percent);
  return text + "%";
}

std::string SignificantText(double number, int precision) {
  Digits digits;
  const auto written =
      std::to_chars(digits.data(), digits.data() + digits.size(), number,
                    std::chars_format::general, precision);
  return {digits.data(), written.ptr};
}

std::string CountText(std::int64_t count, std::string_view noun) {
  std::string text = std::to_string(count) + ' ';
  text += noun;
  return count == 1 ? text : text + 's';
}

std::string ShortestText(double number) {
  // Otherwise 1000000 would be "1e+06". Larger numbers have more digits before
  // the point than they need.
  constexpr double kLargestFixed = 1e15;
  Digits digits;
  const auto written = std::to_chars(
      digits.data(), digits.data() + digits.size(), number,
      std::abs(number) < kLargestFixed ? std::chars_format::fixed
                                       : std::chars_format::general);
  return {digits.data(), written.ptr};
}

}  // namespace lumo
