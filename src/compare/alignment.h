// Pairs two lists as diff(1) pairs the lines of two files.

#ifndef LUMO_COMPARE_ALIGNMENT_H_
#define LUMO_COMPARE_ALIGNMENT_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace lumo {

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

// Returns as many pairs as possible that do not cross: a longest common
// subsequence of the groups. Among the longest, it has the most pairs that are
// equal in `exact`. The pairs are in the order of the lists.
//
// Time and memory are proportional to the product of the lengths of the lists
// without the elements at their ends that certainly are pairs. Returns nothing
// if it exceeds 25,000,000: 25 MB and a tenth of a second.
std::optional<std::vector<IndexPair>> AlignLists(
    const std::vector<AlignedItem>& before,
    const std::vector<AlignedItem>& after);

}  // namespace lumo

#endif  // LUMO_COMPARE_ALIGNMENT_H_
