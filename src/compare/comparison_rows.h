// A comparison as comma-separated rows.

#ifndef LUMO_COMPARE_COMPARISON_ROWS_H_
#define LUMO_COMPARE_COMPARISON_ROWS_H_

#include <ostream>
#include <vector>

#include "compare/comparison.h"

namespace lumo {

// Writes the pairs of `all_runs`, in the order of WriteComparison(), as
// comma-separated rows after a row with the names of the columns. Missing
// figures are empty fields. Means and deviations have the fewest digits that
// read back to the same float, the change and the p-value six significant
// digits; names are written as they are stored. Stops after a failed write.
void WriteComparisonRows(std::ostream& stream,
                         const std::vector<ComparedRuns>& all_runs);

}  // namespace lumo

#endif  // LUMO_COMPARE_COMPARISON_ROWS_H_
