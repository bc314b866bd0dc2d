// Writes a percentage and leaves the stream in its notation.

#include "report/percent_field.h"

#include <array>
#include <charconv>
#include <iomanip>
#include <string_view>

namespace lumo {

void WritePercentField(std::ostream& stream, float percent) {
  // Set for the figures after this one. The percentage itself is written past
  // the stream's own conversion: the same text in a third of the time, and a
  // detailed log has one for every operation of every run.
  stream << std::fixed << std::setprecision(2);
  std::array<char, 64> digits;  // a float has at most 39 before its point
  const auto written =
      std::to_chars(digits.data(), digits.data() + digits.size(), percent,
                    std::chars_format::fixed, 2);
  stream << std::setw(5) << std::string_view(digits.data(), written.ptr)
         << "% | ";
}

}  // namespace lumo
