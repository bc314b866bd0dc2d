// The percentage that begins the line of an operation.

#ifndef LUMO_REPORT_PERCENT_FIELD_H_
#define LUMO_REPORT_PERCENT_FIELD_H_

#include <ostream>

namespace lumo {

// Writes "12.50% | ": the number with two decimals, or "inf" or "-nan", padded
// to 5 characters. Leaves the stream in fixed notation with two decimals: the
// report requires that figures below the first percentage have two decimals.
void WritePercentField(std::ostream& stream, float percent);

}  // namespace lumo

#endif  // LUMO_REPORT_PERCENT_FIELD_H_
