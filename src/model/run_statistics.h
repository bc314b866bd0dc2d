// Statistics over the repeated runs of each event.

#ifndef LUMO_MODEL_RUN_STATISTICS_H_
#define LUMO_MODEL_RUN_STATISTICS_H_

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/event_series.h"

namespace lumo {

// Returns the sum of `values`, added one by one from 0 in their order, divided
// by their number; 0 for no values. Every step rounds to a float: a wider or
// reordered sum would change digits of the report.
float Mean(std::span<const float> values);

// Returns the sample standard deviation (divisor: number of values - 1) of
// `values`, whose mean is `mean`, with the same order and rounding as Mean().
// It is 0 for one value and negative zero for none, infinite if the squares
// exceed a float, and not a number only if a value is infinite or none itself.
float SampleDeviation(std::span<const float> values, float mean);

// What stands for each figure of a list of single runs, which has no
// statistics.
inline constexpr float kNotComputed = -1.0F;

// The three figures of one series, or kNotComputed three times.
struct RunStatistics {
  // Mean of the warm-up runs; 0 if there are none.
  float warmup_mean;
  // Mean of the runs after the warm-up; 0 if there are none.
  float mean;
  // Sample standard deviation (divisor: runs - 1) of the runs after the
  // warm-up; 0 for one run, negative zero for none.
  float stdev;
  // The unit of all three, see UnitText().
  std::string_view unit;
};

// Returns whether the figures can be printed: none is kNotComputed or not a
// number. Negative zero is a figure like any other.
bool IsComputed(const RunStatistics& statistics);

// One entry per series of one graph, under the same keys.
using StatisticsMap = std::map<EventKey, RunStatistics>;

// Appends one StatisticsMap per element of `series` to `statistics`, in their
// order, with the first `num_warmup` values of every series taken as warm-up.
// If the very first series of the first graph holds one value, the whole list
// counts as single runs.
//
// Returns false, with the reason in `error`, if the list is not one of single
// runs and has a series of fewer than `num_warmup` values, or any series at all
// and `num_warmup` is negative. Nothing is appended then.
bool ComputeRunStatistics(const std::vector<EventSeriesMap>& series,
                          std::int32_t num_warmup,
                          std::vector<StatisticsMap>* statistics,
                          std::string* error);

}  // namespace lumo

#endif  // LUMO_MODEL_RUN_STATISTICS_H_
