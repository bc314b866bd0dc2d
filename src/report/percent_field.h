// The percentage that begins the line of an operation.

#ifndef LUMO_REPORT_PERCENT_FIELD_H_
#define LUMO_REPORT_PERCENT_FIELD_H_

#include <ostream>

namespace lumo {

// Writes "12.50% | ": the number with two decimals, right-aligned in 5
// characters (more if it is longer), or as "inf" or, if it is none, "-nan". The
// stream stays in fixed notation with two decimals from then on, which is why
// the figures of a summary have two decimals once a percentage stands above
// them.
void WritePercentField(std::ostream& stream, float percent);

}  // namespace lumo

#endif  // LUMO_REPORT_PERCENT_FIELD_H_
