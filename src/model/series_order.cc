#include "model/series_order.h"

#include <algorithm>
#include <cstddef>
#include <tuple>
#include <utility>

namespace lumo {
namespace {

// Returns the indices of events and operations in the order of their keys.
std::vector<std::size_t> SortKeyed(const std::vector<Series>& series) {
  std::vector<std::size_t> order;
  for (std::size_t i = 0; i < series.size(); ++i) {
    if (series[i].level != Level::kPart) {
      order.push_back(i);
    }
  }
  const auto key_of = [&series](std::size_t i) {
    return std::tuple(series[i].level, series[i].position,
                      Name{series[i].name});
  };
  const auto is_before = [&key_of](std::size_t a, std::size_t b) {
    return key_of(a) < key_of(b);
  };
  if (!std::is_sorted(order.begin(), order.end(), is_before)) {
    std::sort(order.begin(), order.end(), is_before);
  }
  return order;
}

// Returns `keyed` with the parts of each series after it.
std::vector<std::size_t> InsertParts(const std::vector<Series>& series,
                                     const std::vector<std::size_t>& keyed) {
  std::vector<std::vector<std::size_t>> parts(series.size());
  for (std::size_t i = series.size(); i > 0; --i) {
    if (series[i - 1].level == Level::kPart) {
      parts[*series[i - 1].parent].push_back(i - 1);  // the last one first
    }
  }
  std::vector<std::size_t> order;
  order.reserve(series.size());
  std::vector<std::size_t> next(keyed.rbegin(), keyed.rend());
  while (!next.empty()) {
    const std::size_t i = next.back();
    next.pop_back();
    order.push_back(i);
    next.insert(next.end(), parts[i].begin(), parts[i].end());
  }
  return order;
}

// Sets the occurrences of all series. `keyed` is the order of the events and
// operations; parts are in the order of their first values.
void SetOccurrences(const std::vector<std::size_t>& keyed,
                    std::vector<Series>* series) {
  // What series with different occurrences agree in, and the index of one.
  struct Member {
    std::tuple<Level, Name, std::string_view, Name> group;
    std::size_t index;
  };
  std::vector<Member> members;
  members.reserve(series->size());
  for (const std::size_t i : keyed) {
    const Series& member = (*series)[i];
    members.push_back({{member.level, {}, member.unit, {member.name}}, i});
  }
  for (std::size_t i = 0; i < series->size(); ++i) {
    const Series& part = (*series)[i];
    if (part.level == Level::kPart) {
      const Name parent = {(*series)[*part.parent].name};
      members.push_back({{part.level, parent, part.unit, {part.name}}, i});
    }
  }
  std::stable_sort(
      members.begin(), members.end(),
      [](const Member& a, const Member& b) { return a.group < b.group; });
  for (std::size_t i = 1; i < members.size(); ++i) {
    const Member& previous = members[i - 1];
    if (members[i].group == previous.group) {
      (*series)[members[i].index].occurrence =
          (*series)[previous.index].occurrence + 1;
    }
  }
}

}  // namespace

std::vector<Series> OrderSeries(std::vector<Series> series) {
  const std::vector<std::size_t> keyed = SortKeyed(series);
  SetOccurrences(keyed, &series);
  const std::vector<std::size_t> order = InsertParts(series, keyed);
  std::vector<std::size_t> new_indices(series.size());
  for (std::size_t i = 0; i < order.size(); ++i) {
    new_indices[order[i]] = i;
  }
  std::vector<Series> ordered;
  ordered.reserve(series.size());
  for (const std::size_t i : order) {
    if (series[i].parent) {
      series[i].parent = new_indices[*series[i].parent];
    }
    ordered.push_back(std::move(series[i]));
  }
  return ordered;
}

}  // namespace lumo
