// A comparison as comma-separated rows.

#ifndef LUMO_COMPARE_COMPARISON_ROWS_H_
#define LUMO_COMPARE_COMPARISON_ROWS_H_

#include <ostream>

#include "compare/comparison.h"

namespace lumo {

// Writes the pairs of all blocks, in the order of WriteComparison(), as
// comma-separated rows after a row with the names of the columns. Missing
// figures are empty fields. Means and deviations have the fewest digits that
// read back to the same double; the change, its bounds and the p-value have six
// significant digits; names are written as they are stored. Stops after a
// failed write.
void WriteComparisonRows(std::ostream& stream, const Comparison& comparison);

}  // namespace lumo

#endif  // LUMO_COMPARE_COMPARISON_ROWS_H_
