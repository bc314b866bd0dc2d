#include "compare/pairing.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <span>
#include <string_view>

#include "model/event_fields.h"

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

using SeriesList = std::vector<const SideSeries*>;

SeriesList ListOperations(const SideRuns& runs) {
  SeriesList list;
  for (const SideSeries& series : runs.series) {
    if (series.level == Level::kOperation) {
      list.push_back(&series);
    }
  }
  return list;
}

// A number for each text.
using Numbers =
    std::map<std::pair<std::string_view, std::string_view>, std::size_t>;

std::size_t NumberOf(std::string_view unit, std::string_view name,
                     Numbers* numbers) {
  return numbers->try_emplace({unit, name}, numbers->size()).first->second;
}

// The operations of both sides that are pairs, in both directions.
using Counterparts = std::map<const SideSeries*, const SideSeries*>;

std::optional<Counterparts> PairOperations(const SideRuns& before,
                                           const SideRuns& after) {
  const SeriesList left = ListOperations(before);
  const SeriesList right = ListOperations(after);
  Numbers groups;
  Numbers exacts;
  const auto items_of = [&](const SeriesList& operations) {
    std::vector<AlignedItem> items;
    for (const SideSeries* series : operations) {
      items.push_back({NumberOf(series->unit, BareName(series->name), &groups),
                       NumberOf(series->unit, series->name, &exacts)});
    }
    return items;
  };
  const auto aligned = AlignLists(items_of(left), items_of(right));
  if (!aligned) {
    return std::nullopt;
  }
  Counterparts counterparts;
  for (const auto& [l, r] : *aligned) {
    counterparts[left[l]] = right[r];
    counterparts[right[r]] = left[l];
  }
  return counterparts;
}

}  // namespace

std::optional<std::vector<PairedSeries>> PairSeries(const SideRuns& before,
                                                    const SideRuns& after,
                                                    bool ignore_node_ids) {
  const auto counterparts = ignore_node_ids ? PairOperations(before, after)
                                            : std::optional<Counterparts>();
  if (ignore_node_ids && !counterparts) {
    return std::nullopt;
  }
  // Returns the counterpart of a series on the other side, or null.
  const auto find = [&](const SideSeries& series,
                        const SideRuns& other) -> const SideSeries* {
    if (ignore_node_ids && series.level == Level::kOperation) {
      const auto entry = counterparts->find(&series);
      return entry == counterparts->end() ? nullptr : entry->second;
    }
    const auto entry =
        other.indices.find({series.level, series.unit.data(),
                            series.name.data(), series.occurrence, 0});
    return entry == other.indices.end() ? nullptr
                                        : &other.series[entry->second];
  };
  std::vector<PairedSeries> pairs;
  for (const SideSeries& series : before.series) {
    if (series.level != Level::kPart) {
      pairs.emplace_back(&series, find(series, after));
    }
  }
  for (const SideSeries& series : after.series) {
    if (series.level != Level::kPart && find(series, before) == nullptr) {
      pairs.emplace_back(nullptr, &series);
    }
  }
  return pairs;
}

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
