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
  // The average as a share of the sum of all operations' averages, whatever
  // their units, 0 to 100; not a number if that sum is 0.
  float percent;
  float average;
  // The unit of the average, see UnitText().
  std::string_view unit;
};

// One entry per operation of one graph, under the keys of its node series.
using OpAverageMap = std::map<EventKey, OpAverage>;

// One row of a top list: an operation's name, and the rest as in its OpAverage.
struct TopOpEntry {
  // Points into the log and lives as long as the log's bytes do.
  std::string_view name;
  std::string_view unit;
  float percent;
  float average;
};

// Returns the `topK` entries of largest percent, largest first; all of them
// if there are fewer or `topK` is negative. Among equal percents the order
// of `entries` decides by the rules of the binary heap in the source file,
// which are part of the report: they say which of several equal operations
// stay.
std::vector<TopOpEntry> SelectTopOps(const std::vector<TopOpEntry>& entries,
                                     std::int32_t topK);

// Appends one element for the graph with these node series to `op_averages` and
// one, with at most `topK` rows (all if it is negative), to `top_ops`.
void AggregateNodeTimes(const EventSeriesMap& node_series, std::int32_t topK,
                        std::vector<OpAverageMap>* op_averages,
                        std::vector<std::vector<TopOpEntry>>* top_ops);

}  // namespace lumo

#endif  // LUMO_MODEL_OP_AVERAGES_H_
