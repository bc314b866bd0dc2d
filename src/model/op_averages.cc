// Averages first, since every share needs their sum; then shares and top list.

#include "model/op_averages.h"

#include "model/mean.h"

namespace lumo {

void AggregateNodeTimes(const EventSeriesMap& node_series, std::int32_t topK,
                        std::vector<OpAverageMap>* op_averages,
                        std::vector<std::vector<TopOpEntry>>* top_ops) {
  std::vector<TopOpEntry> entries;
  entries.reserve(node_series.size());
  float total = 0.0F;
  for (const auto& [key, op] : node_series) {
    const float average = Mean(op.values);
    total += average;
    entries.push_back({key.name, op.unit, 0.0F, average});
  }

  OpAverageMap averages;
  auto entry = entries.begin();
  for (const auto& [key, op] : node_series) {
    entry->percent = entry->average / total * 100.0F;
    averages.emplace_hint(
        averages.end(), key,
        OpStatistics{op.unit, {entry->percent, entry->average}});
    ++entry;
  }

  top_ops->push_back(SelectTopOps(entries, topK));
  op_averages->push_back(std::move(averages));
}

}  // namespace lumo
