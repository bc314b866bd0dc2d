// Average time and share of every operation of a graph.

#ifndef LUMO_MODEL_OP_AVERAGES_H_
#define LUMO_MODEL_OP_AVERAGES_H_

#include <cstdint>
#include <map>
#include <string_view>
#include <vector>

#include "model/event_series.h"
#include "model/top_ops.h"

namespace lumo {

struct OpAverage {
  // The average as a share of the sum of all operations' averages, 0 to 100;
  // not a number where that sum is 0.
  float percent;
  // Mean over all runs, warm-up runs included.
  float average;
};

struct OpStatistics {
  std::string_view unit;
  OpAverage op;
};

// One entry per operation of one graph, under the keys of its node series.
using OpAverageMap = std::map<EventKey, OpStatistics>;

// Appends one element for the graph with these node series to `op_averages` and
// one, with at most `topK` rows (all where negative), to `top_ops`.
void AggregateNodeTimes(const EventSeriesMap& node_series, std::int32_t topK,
                        std::vector<OpAverageMap>* op_averages,
                        std::vector<std::vector<TopOpEntry>>* top_ops);

}  // namespace lumo

#endif  // LUMO_MODEL_OP_AVERAGES_H_
