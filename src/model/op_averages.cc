#include "model/op_averages.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "model/run_statistics.h"

namespace lumo {
namespace {

// A binary heap with the smallest percent at the root; the children of position
// p are at 2p + 1 and 2p + 2. The standard library's heap is not used because
// it moves equal elements in another order, and the order of ties is part of
// the report. NaN compares as equal to every percent.

bool IsLarger(const TopOpEntry& a, const TopOpEntry& b) {
  return a.percent > b.percent;
}

void Push(const TopOpEntry& entry, std::vector<TopOpEntry>* heap) {
  std::size_t hole = heap->size();
  heap->push_back(entry);
  while (hole > 0 && IsLarger((*heap)[(hole - 1) / 2], entry)) {
    (*heap)[hole] = (*heap)[(hole - 1) / 2];
    hole = (hole - 1) / 2;
  }
  (*heap)[hole] = entry;
}

// Removes the root. The heap must not be empty.
void Pop(std::vector<TopOpEntry>* heap) {
  const TopOpEntry moving = heap->back();
  heap->pop_back();
  if (heap->empty()) {
    return;
  }
  std::size_t hole = 0;
  for (std::size_t child = 1; child < heap->size(); child = 2 * hole + 1) {
    if (child + 1 < heap->size() &&
        IsLarger((*heap)[child], (*heap)[child + 1])) {
      ++child;
    }
    if (IsLarger((*heap)[child], moving)) {
      break;
    }
    (*heap)[hole] = (*heap)[child];
    hole = child;
  }
  (*heap)[hole] = moving;
}

}  // namespace

std::vector<TopOpEntry> SelectTopOps(const std::vector<TopOpEntry>& entries,
                                     std::int32_t topK) {
  std::vector<TopOpEntry> heap;
  for (const TopOpEntry& entry : entries) {
    Push(entry, &heap);
    // As an unsigned number, a negative `topK` is larger than any heap.
    if (heap.size() > static_cast<std::size_t>(topK)) {
      Pop(&heap);
    }
  }
  std::vector<TopOpEntry> top_ops;
  while (!heap.empty()) {
    top_ops.push_back(heap.front());
    Pop(&heap);
  }
  std::reverse(top_ops.begin(), top_ops.end());
  return top_ops;
}

OpAverageMap AverageOps(const EventSeriesMap& node_series) {
  OpAverageMap averages;
  float total = 0.0F;
  for (const auto& [key, op] : node_series) {
    const float average = Mean(op.values);
    total += average;
    averages.emplace(key, OpAverage{0.0F, average, op.unit});
  }
  for (auto& [key, op] : averages) {
    op.percent = op.average / total * 100.0F;
  }
  return averages;
}

void AggregateNodeTimes(const EventSeriesMap& node_series, std::int32_t topK,
                        std::vector<OpAverageMap>* op_averages,
                        std::vector<std::vector<TopOpEntry>>* top_ops) {
  OpAverageMap averages = AverageOps(node_series);
  std::vector<TopOpEntry> entries;
  entries.reserve(averages.size());
  for (const auto& [key, op] : averages) {
    entries.push_back({key.name, op.unit, op.percent, op.average});
  }
  top_ops->push_back(SelectTopOps(entries, topK));
  op_averages->push_back(std::move(averages));
}

}  // namespace lumo
