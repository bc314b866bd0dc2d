#include "text/figure_text.h"

#include <array>
#include <cassert>
#include <charconv>
#include <cmath>
#include <system_error>

namespace lumo {
namespace {

// Formats a number with std::to_chars().
template <typename... Format>
std::string ToText(double number, Format... format) {
  // A double has up to 309 digits before the point, or up to 323 zeros after
  // it.
  std::array<char, 400> digits;
  const auto [end, failure] = std::to_chars(
      digits.data(), digits.data() + digits.size(), number, format...);
  assert(failure == std::errc());
  return {digits.data(), end};
}

}  // namespace

std::string FixedText(double number, int decimals) {
  return ToText(number, std::chars_format::fixed, decimals);
}

std::string ChangeText(double percent) {
  std::string text = percent < 0 ? "" : "+";
  text += FixedText(percent);
  return text + "%";
}

std::string SignificantText(double number, int precision) {
  return ToText(number, std::chars_format::general, precision);
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
  if (!(std::abs(number) < kLargestFixed)) {
    return ToText(number, std::chars_format::general);
  }
  // Most numbers are whole, and faster to format as such.
  const auto whole = static_cast<std::int64_t>(number);
  return static_cast<double>(whole) == number
             ? std::to_string(whole)
             : ToText(number, std::chars_format::fixed);
}

}  // namespace lumo
