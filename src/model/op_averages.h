// Average time and share of every operation of a graph.

#ifndef LUMO_MODEL_OP_AVERAGES_H_
#define LUMO_MODEL_OP_AVERAGES_H_

#include <cstdint>
#include <map>
#include <string_view>
#include <vector>

#include "model/event_series.h"

namespace lumo {

// One operation over all runs of its graph, warm-up runs included.
struct OpAverage {
  // The average in percent of the sum of the averages of all operations,
  // whatever their units: 0 to 100, or NaN if the sum is 0.
  float percent;
  float average;
  // The unit of the average, see UnitText().
  std::string_view unit;
};

// One entry per operation of one graph, under the keys of its node series.
using OpAverageMap = std::map<EventKey, OpAverage>;

// One row of a top list: the name of an operation and its OpAverage.
struct TopOpEntry {
  // Points into the log and lives as long as the log's bytes do.
  std::string_view name;
  std::string_view unit;
  float percent;
  float average;
};

// Returns the `topK` entries with the largest percent, largest first; all of
// them if there are fewer or `topK` is negative. Which of several entries with
// equal percent are returned, and in which order, depends on the order of
// `entries` and on the binary heap in the source file. It is part of the
// report, so it must not change.
std::vector<TopOpEntry> SelectTopOps(const std::vector<TopOpEntry>& entries,
                                     std::int32_t topK);

// Returns the averages and shares of the operations of one graph.
OpAverageMap AverageOps(const EventSeriesMap& node_series);

// Appends one element to `op_averages`, for the graph with these node series,
// and one to `top_ops`, with the `topK` entries of SelectTopOps().
void AggregateNodeTimes(const EventSeriesMap& node_series, std::int32_t topK,
                        std::vector<OpAverageMap>* op_averages,
                        std::vector<std::vector<TopOpEntry>>* top_ops);

}  // namespace lumo

#endif  // LUMO_MODEL_OP_AVERAGES_H_
