#include "report/percent_field.h"

#include <cmath>
#include <iomanip>

#include "text/figure_text.h"

namespace lumo {

void WritePercentField(std::ostream& stream, float percent) {
  // The notation is for the figures after this one. The percentage itself is
  // not formatted through the stream, because a detailed log has one for every
  // operation of every run, and the stream is slow.
  stream << std::fixed << std::setprecision(2);
  // Only a share of 0 in 0 is NaN. Its sign differs between machines, so it is
  // fixed here.
  stream << std::setw(5) << (std::isnan(percent) ? "-nan" : FixedText(percent))
         << "% | ";
}

}  // namespace lumo
