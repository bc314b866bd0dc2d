#include "model/run_statistics.h"

#include <cfloat>
#include <cmath>
#include <cstddef>

#include "text/escape.h"

namespace lumo {
namespace {

// With these options the compiler ignores infinities and the sign of zero and
// reorders sums. Not every compiler defines a macro for each part of
// -ffast-math.
#if defined(__FAST_MATH__) || defined(__ASSOCIATIVE_MATH__) ||      \
    defined(__NO_SIGNED_ZEROS__) || defined(__RECIPROCAL_MATH__) || \
    (defined(__FINITE_MATH_ONLY__) && __FINITE_MATH_ONLY__)
#error "the figures would differ: build without -ffast-math and its parts"
#endif

static_assert(FLT_EVAL_METHOD == 0,
              "the figures are defined by operations that round to float");

// The first series of graph 0 decides for the whole list, however many values
// the other series have.
bool HoldsSingleRuns(const std::vector<EventSeriesMap>& series) {
  return !series.empty() && !series.front().empty() &&
         series.front().begin()->second.values.size() == 1;
}

RunStatistics StatisticsOf(const EventSeries& event, std::size_t num_warmup) {
  const std::span<const float> values(event.values);
  const std::span<const float> measured = values.subspan(num_warmup);
  const float mean = Mean(measured);
  return {Mean(values.first(num_warmup)), mean, SampleDeviation(measured, mean),
          event.unit};
}

// Returns false, with the reason in `error`, if a series has fewer than
// `num_warmup` values, or if there is a series and `num_warmup` is negative.
bool CheckRunCounts(const std::vector<EventSeriesMap>& series,
                    std::int32_t num_warmup, std::string* error) {
  std::int32_t graph_position = 0;
  for (const EventSeriesMap& graph : series) {
    for (const auto& [key, event] : graph) {
      if (num_warmup < 0) {
        *error = "Number of Warmup: " + std::to_string(num_warmup) + " < 0.";
        return false;
      }
      if (event.values.size() < static_cast<std::size_t>(num_warmup)) {
        *error = "Number of Warmup: " + std::to_string(num_warmup) +
                 " > Number of Runs " + std::to_string(event.values.size()) +
                 " of event [" + EscapeAsciiControls(key.name) + "] of graph " +
                 std::to_string(graph_position) + ".";
        return false;
      }
    }
    ++graph_position;
  }
  return true;
}

}  // namespace

float Mean(std::span<const float> values) {
  if (values.empty()) {
    return 0.0F;
  }
  float sum = 0.0F;
  for (const float value : values) {
    sum += value;
  }
  return sum / static_cast<float>(values.size());
}

float SampleDeviation(std::span<const float> values, float mean) {
  if (values.size() == 1) {
    return 0.0F;
  }
  // For no values, the result is the root of 0 / -1, which is negative zero.
  float sum = 0.0F;
  for (const float value : values) {
    sum += (value - mean) * (value - mean);
  }
  return std::sqrt(sum / (static_cast<float>(values.size()) - 1.0F));
}

bool IsComputed(const RunStatistics& statistics) {
  return statistics.warmup_mean >= 0.0F && statistics.mean >= 0.0F &&
         statistics.stdev >= 0.0F;
}

bool ComputeRunStatistics(const std::vector<EventSeriesMap>& series,
                          std::int32_t num_warmup,
                          std::vector<StatisticsMap>* statistics,
                          std::string* error) {
  const bool single_runs = HoldsSingleRuns(series);
  if (!single_runs && !CheckRunCounts(series, num_warmup, error)) {
    return false;
  }
  for (const EventSeriesMap& graph : series) {
    StatisticsMap& graph_statistics = statistics->emplace_back();
    for (const auto& [key, event] : graph) {
      graph_statistics.emplace(
          key, single_runs
                   ? RunStatistics{kNotComputed, kNotComputed, kNotComputed,
                                   event.unit}
                   : StatisticsOf(event, static_cast<std::size_t>(num_warmup)));
    }
  }
  return true;
}

}  // namespace lumo
