// Which series of two sides are pairs.

#ifndef LUMO_COMPARE_PAIRING_H_
#define LUMO_COMPARE_PAIRING_H_

#include <optional>
#include <vector>

#include "compare/side.h"

namespace lumo {

// A series of both sides or of one. One of the pointers may be null.
struct PairedSeries {
  const SideSeries* before;
  const SideSeries* after;
};

// Returns the pairs of series that agree in level, unit, name and occurrence,
// and the series without a counterpart: those of `before` in their order, then
// those that only `after` has in their order. Either may be null, for a side
// without runs.
std::vector<PairedSeries> PairByName(const SideRuns* before,
                                     const SideRuns* after);

// As PairByName(), but pairs operations by their unit and BareName() in their
// order, see AlignLists(). Returns nothing if there are too many operations.
std::optional<std::vector<PairedSeries>> PairByBareName(const SideRuns* before,
                                                        const SideRuns* after);

}  // namespace lumo

#endif  // LUMO_COMPARE_PAIRING_H_
