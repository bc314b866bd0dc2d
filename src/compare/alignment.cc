#include "compare/alignment.h"

#include <algorithm>
#include <set>
#include <span>

namespace lumo {
namespace {

using Items = std::span<const AlignedItem>;

constexpr std::size_t kMaxCells = 25'000'000;

std::set<std::size_t> ExactsOf(Items items) {
  std::set<std::size_t> exacts;
  for (const AlignedItem& item : items) {
    exacts.insert(item.exact);
  }
  return exacts;
}

// What to do first with the rest of two lists: pair their first elements, or
// leave the first element of one of them alone.
enum class Step : std::uint8_t { kPair, kSkipBefore, kSkipAfter };

// Appends the pairs of two lists, the first elements of which have these
// indices, by the textbook's table.
void AppendPairs(Items before, Items after, IndexPair first,
                 std::vector<IndexPair>* pairs) {
  // The score of the best alignment of the rest of `before` from a row on and
  // the rest of `after` from a column on: pairs count first, exact ones second.
  constexpr std::int64_t kPairScore = std::int64_t{1} << 32;
  const std::size_t columns = after.size();
  std::vector<std::int64_t> scores(columns + 1);  // of the row below
  std::vector<Step> steps(before.size() * columns);
  for (std::size_t i = before.size(); i-- > 0;) {
    std::int64_t diagonal = 0;  // the row below, a column to the right
    for (std::size_t j = columns; j-- > 0;) {
      const std::int64_t below = scores[j];
      const std::int64_t right = scores[j + 1];
      Step step = below >= right ? Step::kSkipBefore : Step::kSkipAfter;
      scores[j] = std::max(below, right);
      if (before[i].group == after[j].group) {
        const std::int64_t score =
            diagonal + kPairScore + (before[i].exact == after[j].exact ? 1 : 0);
        if (score >= scores[j]) {
          step = Step::kPair;
          scores[j] = score;
        }
      }
      steps[i * columns + j] = step;
      diagonal = below;
    }
  }
  for (std::size_t i = 0, j = 0; i < before.size() && j < columns;) {
    const Step step = steps[i * columns + j];
    if (step == Step::kPair) {
      pairs->emplace_back(first.first + i, first.second + j);
    }
    i += step != Step::kSkipAfter ? 1 : 0;
    j += step != Step::kSkipBefore ? 1 : 0;
  }
}

}  // namespace

std::optional<std::vector<IndexPair>> AlignLists(
    const std::vector<AlignedItem>& before,
    const std::vector<AlignedItem>& after) {
  const std::set<std::size_t> exacts_before = ExactsOf(before);
  const std::set<std::size_t> exacts_after = ExactsOf(after);
  // Whether some best alignment pairs these two if they are at the same end of
  // both lists: either they are equal, or neither has an equal elsewhere.
  const auto is_certain = [&](const AlignedItem& a, const AlignedItem& b) {
    return a.exact == b.exact ||
           (a.group == b.group && !exacts_after.contains(a.exact) &&
            !exacts_before.contains(b.exact));
  };
  const std::size_t shorter = std::min(before.size(), after.size());
  std::vector<IndexPair> pairs;
  std::size_t head = 0;
  while (head < shorter && is_certain(before[head], after[head])) {
    pairs.emplace_back(head, head);
    ++head;
  }
  std::size_t tail = 0;
  while (tail < shorter - head && is_certain(before[before.size() - 1 - tail],
                                             after[after.size() - 1 - tail])) {
    ++tail;
  }
  const Items rest_before =
      Items(before).subspan(head, before.size() - head - tail);
  const Items rest_after =
      Items(after).subspan(head, after.size() - head - tail);
  if (!rest_before.empty() &&
      rest_after.size() > kMaxCells / rest_before.size()) {
    return std::nullopt;
  }
  AppendPairs(rest_before, rest_after, {head, head}, &pairs);
  for (; tail > 0; --tail) {
    pairs.emplace_back(before.size() - tail, after.size() - tail);
  }
  return pairs;
}

}  // namespace lumo
