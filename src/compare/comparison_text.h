// A comparison as text.

#ifndef LUMO_COMPARE_COMPARISON_TEXT_H_
#define LUMO_COMPARE_COMPARISON_TEXT_H_

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "compare/comparison.h"

namespace lumo {

// The logs and options of a comparison.
struct ComparisonSettings {
  // The paths of the two logs.
  std::string before;
  std::string after;
  // As for CompareSeries().
  std::int32_t num_warmup;
  double confidence;
};

// Returns the numbers of pairs, differences and tests, such as "19 pairs
// compared, 5 differ (17 tested, 99% confidence)".
std::string TotalsText(const std::vector<ComparedRuns>& all_runs,
                       double confidence);

// Writes a block for each element of `all_runs` and a last line with
// TotalsText(). SeriesFigures have two decimals; names come last in a line and
// are escaped with Printable(). With `in_color`, lines of pairs that differ
// have the colors of a terminal.
void WriteComparison(std::ostream& stream,
                     const std::vector<ComparedRuns>& all_runs,
                     const ComparisonSettings& settings, bool in_color);

// Of the pairs in microseconds or cycles with the verdict kHigher that rose by
// more than `max_slowdown` percent, describes the one that rose most, such as
// "graph 0, execute, operation [Conv]: 9.26% higher, more than 5%". Returns
// nothing if there is none. A rise from 0 exceeds every percentage.
std::optional<std::string> DescribeWorstSlowdown(
    const std::vector<ComparedRuns>& all_runs, double max_slowdown);

}  // namespace lumo

#endif  // LUMO_COMPARE_COMPARISON_TEXT_H_
