#include "report/percent_field.h"

#include <array>
#include <charconv>
#include <cmath>
#include <iomanip>
#include <string_view>

namespace lumo {

void WritePercentField(std::ostream& stream, float percent) {
  // The notation is for the figures after this one. The percentage itself is
  // formatted with to_chars, not through the stream, because a detailed log has
  // one for every operation of every run, and the stream is slow.
  stream << std::fixed << std::setprecision(2);
  std::array<char, 64> digits;  // a float has at most 39 before its point
  const auto written =
      std::to_chars(digits.data(), digits.data() + digits.size(), percent,
                    std::chars_format::fixed, 2);
  // Only a share of 0 in 0 is not a number. Its sign differs between machines,
  // so it is fixed here.
  stream << std::setw(5)
         << (std::isnan(percent) ? std::string_view("-nan")
                                 : std::string_view(digits.data(), written.ptr))
         << "% | ";
}

}  // namespace lumo
