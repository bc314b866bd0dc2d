// Which series of two sides are pairs.

#ifndef LUMO_COMPARE_PAIRING_H_
#define LUMO_COMPARE_PAIRING_H_

#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "compare/side.h"

namespace lumo {

// A series on the side before and on the side after. One of them may be null.
using PairedSeries = std::pair<const SideSeries*, const SideSeries*>;

// Returns the pairs of events and operations that agree in level, unit, name
// and occurrence, and the series without a counterpart: those of `before` in
// their order, then those that only `after` has in their order.
//
// With `ignore_node_ids`, operations are paired by their unit and BareName() in
// their order, see AlignLists(). Returns nothing if there are too many of them.
std::optional<std::vector<PairedSeries>> PairSeries(const SideRuns& before,
                                                    const SideRuns& after,
                                                    bool ignore_node_ids);

// An element of a list, by numbers that stand for texts.
struct AlignedItem {
  // Elements can be paired if these are equal.
  std::size_t group;
  // Elements with equal groups should be paired if these are equal. Elements of
  // different groups have different ones.
  std::size_t exact;
};

// The indices of the two elements of a pair.
using IndexPair = std::pair<std::size_t, std::size_t>;

// Pairs two lists as diff(1) pairs the lines of two files. Returns as many
// pairs as possible that do not cross: a longest common subsequence of the
// groups. Among the longest, it has the most pairs that are equal in `exact`.
// The pairs are in the order of the lists.
//
// Time and memory are proportional to the product of the lengths of the lists
// without the elements at their ends that certainly are pairs. Returns nothing
// if it exceeds 25,000,000: 25 MB and a tenth of a second.
std::optional<std::vector<IndexPair>> AlignLists(
    const std::vector<AlignedItem>& before,
    const std::vector<AlignedItem>& after);

}  // namespace lumo

#endif  // LUMO_COMPARE_PAIRING_H_
