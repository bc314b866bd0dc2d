#include "report/percent_field.h"

#include <iomanip>

namespace lumo {

void WritePercentField(std::ostream& stream, float percent) {
  stream << std::fixed << std::setprecision(2) << std::setw(5) << percent
         << "% | ";
}

}  // namespace lumo
