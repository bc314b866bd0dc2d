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

// Returns the mean of `values`; 0 if there are none. They are added in their
// order, and every step is rounded to a float: a wider or reordered sum would
// change digits of the report.
float Mean(std::span<const float> values);

// Returns the sample standard deviation (divisor: number of values - 1) of
// `values`, whose mean is `mean`, with the same order and rounding as Mean().
// It is 0 for one value, negative zero for none, infinite if the sum of the
// squares exceeds the range of a float, and NaN only if a value is infinite or
// NaN.
float SampleDeviation(std::span<const float> values, float mean);

// The value of each figure if ComputeRunStatistics() treats all series as
// single runs, for which there are no statistics.
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

// Returns whether the figures can be printed: none is kNotComputed or NaN.
// Negative zero can be printed.
bool IsComputed(const RunStatistics& statistics);

// One entry per series of one graph, under the same keys.
using StatisticsMap = std::map<EventKey, RunStatistics>;

// Appends one StatisticsMap per element of `series` to `statistics`, in their
// order. The first `num_warmup` values of every series are its warm-up. If the
// first series of the first graph has only one value, all series are treated as
// single runs.
//
// Otherwise, returns false, with the reason in `error`, and appends nothing if
// a series has fewer than `num_warmup` values, or if there is a series and
// `num_warmup` is negative.
bool ComputeRunStatistics(const std::vector<EventSeriesMap>& series,
                          std::int32_t num_warmup,
                          std::vector<StatisticsMap>* statistics,
                          std::string* error);

}  // namespace lumo

#endif  // LUMO_MODEL_RUN_STATISTICS_H_
