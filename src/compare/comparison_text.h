// A comparison as text.

#ifndef LUMO_COMPARE_COMPARISON_TEXT_H_
#define LUMO_COMPARE_COMPARISON_TEXT_H_

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "compare/comparison.h"
#include "compare/side.h"

namespace lumo {

// Returns the numbers of pairs, differences and tests, and of the series of one
// side, such as "19 pairs compared, 5 differ (17 tested, 99% confidence), 2
// series only before, 1 only after".
std::string TotalsText(const Comparison& comparison, double confidence);

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
// - that more operations would be paired without their node ids. The sides were
//   compared with them unless `ignore_node_ids`.
std::vector<std::string> MakeNotes(const Side& before, const Side& after,
                                   const Comparison& comparison,
                                   std::int32_t num_warmup,
                                   bool ignore_node_ids);

// The arguments and options of a comparison.
struct ComparisonSettings {
  const Side& before;
  const Side& after;
  std::int32_t num_warmup;
  double confidence;
  std::vector<std::string> notes;
};

// Writes a line with TotalsText(), each block, and the notes. Means have two
// decimals; names come last in a line. With `in_color`, lines of pairs that
// differ have the colors of a terminal.
void WriteComparison(std::ostream& stream, const Comparison& comparison,
                     const ComparisonSettings& settings, bool in_color);

}  // namespace lumo

#endif  // LUMO_COMPARE_COMPARISON_TEXT_H_
