// Statistics over the repeated runs of each event.

#ifndef LUMO_MODEL_RUN_STATISTICS_H_
#define LUMO_MODEL_RUN_STATISTICS_H_

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "model/event_series.h"

namespace lumo {

// The three figures of one series, in the unit of its values. All are -1 where
// the list they belong to holds single runs.
struct RunStatistics {
  // Mean of the warm-up runs; 0 where there are none.
  float warmup_mean;
  // Mean of the runs after the warm-up; 0 where there are none.
  float mean;
  // Sample standard deviation (divisor: runs - 1) of the runs after the
  // warm-up; 0 for one run, negative zero for none.
  float stdev;
};

struct EventStatistics {
  std::string_view unit;
  RunStatistics runs;
};

// One entry per series of one graph, under the same keys.
using StatisticsMap = std::map<EventKey, EventStatistics>;

// Appends one StatisticsMap per element of `series` to `statistics`, in their
// order, with the first `num_warmup` values of every series taken as warm-up.
// Where the very first series of the first graph holds one value, the whole
// list counts as single runs.
//
// Returns false, with the reason in `error`, where `num_warmup` is negative or
// exceeds the length of a series of a list that is not one of single runs.
bool ComputeRunStatistics(const std::vector<EventSeriesMap>& series,
                          std::int32_t num_warmup,
                          std::vector<StatisticsMap>* statistics,
                          std::string* error);

}  // namespace lumo

#endif  // LUMO_MODEL_RUN_STATISTICS_H_
