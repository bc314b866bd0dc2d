// A comparison as text and as comma-separated rows.

#ifndef LUMO_COMPARE_COMPARISON_TEXT_H_
#define LUMO_COMPARE_COMPARISON_TEXT_H_

#include <ostream>
#include <string>
#include <vector>

#include "compare/comparison.h"

namespace lumo {

// Returns the numbers of pairs, differences and tests, and of the series of one
// side, such as "19 pairs compared, 5 differ (17 tested, 99% confidence), 2
// series only before, 1 only after".
std::string TotalsText(const Comparison& comparison);

// Returns the name of a pair as text, escaped with Printable(): "name", or
// "name (occurrence 1)" if several series have the name. If the names of the
// sides differ, both are shown, or both node ids: "node_id_11→5:Conv".
std::string LabelOf(const SeriesPair& pair);

// Returns the bounds of an interval, such as "+5.90..+12.81%".
std::string IntervalText(const Interval& interval);

// Returns what a reader should know about a comparison, a sentence or two each:
// - that the differences between recordings were not measured, if a side has
//   only one log;
// - that counted runs are slow at first, and the number of warm-up runs that
//   would exclude them;
// - that more operations would be paired without their node ids.
std::vector<std::string> MakeNotes(const Comparison& comparison);

// Writes a line with TotalsText(), each block, and the notes. Means have two
// decimals; names come last in a line. With `in_color`, lines of pairs that
// differ have the colors of a terminal. Stops after a failed write.
void WriteComparison(std::ostream& stream, const Comparison& comparison,
                     bool in_color);

// Writes the pairs of all blocks, in the order of WriteComparison(), as
// comma-separated rows after a row with the names of the columns. Missing
// figures are empty fields. Means and deviations have the fewest digits that
// read back to the same double; the change, its bounds and the p-value have six
// significant digits; names are written as they are stored. Stops after a
// failed write.
void WriteComparisonRows(std::ostream& stream, const Comparison& comparison);

}  // namespace lumo

#endif  // LUMO_COMPARE_COMPARISON_TEXT_H_
