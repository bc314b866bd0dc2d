// Average, share and top list of a graph's operations.

#include "model/op_averages.h"

#include <utility>

#include "model/mean.h"

namespace lumo {

void AggregateNodeTimes(const EventSeriesMap& node_series, std::int32_t topK,
                        std::vector<OpAverageMap>* op_averages,
                        std::vector<std::vector<TopOpEntry>>* top_ops) {
  OpAverageMap averages;
  float total = 0.0F;
  for (const auto& [key, op] : node_series) {
    const float average = Mean(op.values);
    total += average;
    averages.emplace(key, OpAverage{0.0F, average, op.unit});
  }

  std::vector<TopOpEntry> entries;
  entries.reserve(averages.size());
  for (auto& [key, op] : averages) {
    op.percent = op.average / total * 100.0F;
    entries.push_back({key.name, op.unit, op.percent, op.average});
  }

  top_ops->push_back(SelectTopOps(entries, topK));
  op_averages->push_back(std::move(averages));
}

}  // namespace lumo
