#include "compare/pairing.h"

#include <cstddef>
#include <map>
#include <string_view>
#include <utility>

#include "compare/alignment.h"
#include "model/event_fields.h"

namespace lumo {
namespace {

using SeriesList = std::vector<const SideSeries*>;

// Returns the events and operations of `runs`, which may be null.
SeriesList ListSeries(const SideRuns* runs) {
  SeriesList list;
  if (runs != nullptr) {
    for (const SideSeries& series : runs->series) {
      if (series.level != Level::kPart) {
        list.push_back(&series);
      }
    }
  }
  return list;
}

SeriesList ListOperations(const SideRuns* runs) {
  SeriesList list = ListSeries(runs);
  std::erase_if(list, [](const SideSeries* series) {
    return series->level != Level::kOperation;
  });
  return list;
}

// Returns the series of `runs` that agrees with `series`, or null.
const SideSeries* FindSame(const SideSeries& series, const SideRuns* runs) {
  if (runs == nullptr) {
    return nullptr;
  }
  const auto entry =
      runs->indices.find({series.level, series.unit.data(), series.name.data(),
                          series.occurrence, std::size_t{0}});
  return entry == runs->indices.end() ? nullptr : &runs->series[entry->second];
}

// A number for each text.
using Numbers =
    std::map<std::pair<std::string_view, std::string_view>, std::size_t>;

std::size_t NumberOf(std::string_view unit, std::string_view name,
                     Numbers* numbers) {
  return numbers->try_emplace({unit, name}, numbers->size()).first->second;
}

std::vector<AlignedItem> ItemsOf(const SeriesList& operations, Numbers* groups,
                                 Numbers* exacts) {
  std::vector<AlignedItem> items;
  items.reserve(operations.size());
  for (const SideSeries* series : operations) {
    items.push_back({NumberOf(series->unit, BareName(series->name), groups),
                     NumberOf(series->unit, series->name, exacts)});
  }
  return items;
}

// Returns the pairs of all series. `find` returns the counterpart of a series
// on the other side, or null.
template <typename Function>
std::vector<PairedSeries> ListPairs(const SideRuns* before,
                                    const SideRuns* after, Function find) {
  std::vector<PairedSeries> pairs;
  for (const SideSeries* series : ListSeries(before)) {
    pairs.push_back({series, find(*series, after)});
  }
  for (const SideSeries* series : ListSeries(after)) {
    if (find(*series, before) == nullptr) {
      pairs.push_back({nullptr, series});
    }
  }
  return pairs;
}

}  // namespace

std::vector<PairedSeries> PairByName(const SideRuns* before,
                                     const SideRuns* after) {
  return ListPairs(before, after, FindSame);
}

std::optional<std::vector<PairedSeries>> PairByBareName(const SideRuns* before,
                                                        const SideRuns* after) {
  const SeriesList left = ListOperations(before);
  const SeriesList right = ListOperations(after);
  Numbers groups;
  Numbers exacts;
  const auto aligned = AlignLists(ItemsOf(left, &groups, &exacts),
                                  ItemsOf(right, &groups, &exacts));
  if (!aligned) {
    return std::nullopt;
  }
  std::map<const SideSeries*, const SideSeries*> counterparts;
  for (const auto& [l, r] : *aligned) {
    counterparts[left[l]] = right[r];
    counterparts[right[r]] = left[l];
  }
  return ListPairs(
      before, after, [&](const SideSeries& series, const SideRuns* other) {
        if (series.level != Level::kOperation) {
          return FindSame(series, other);
        }
        const auto entry = counterparts.find(&series);
        return entry == counterparts.end() ? nullptr : entry->second;
      });
}

}  // namespace lumo
