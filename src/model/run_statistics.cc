// From a series to its three figures, and when not to compute them.

#include "model/run_statistics.h"

#include <cmath>
#include <span>

#include "model/mean.h"

namespace lumo {
namespace {

constexpr RunStatistics kSingleRun = {-1.0F, -1.0F, -1.0F};

// One series stands for the list: a log holds either one run or several of
// everything.
bool HoldsSingleRuns(const std::vector<EventSeriesMap>& series) {
  return !series.empty() && !series.front().empty() &&
         series.front().begin()->second.values.size() == 1;
}

// Without values the quotient is 0 / -1, whose root is the negative zero that
// tells "no runs" from "no deviation" (one value: 0).
float SampleDeviation(std::span<const float> values, float mean) {
  if (values.size() == 1) {
    return 0.0F;
  }
  float sum = 0.0F;
  for (const float value : values) {
    sum += (value - mean) * (value - mean);
  }
  return std::sqrt(sum / (static_cast<float>(values.size()) + -1.0F));
}

RunStatistics StatisticsOf(std::span<const float> values, std::size_t warmups) {
  const std::span<const float> measured = values.subspan(warmups);
  const float mean = Mean(measured);
  return {Mean(values.first(warmups)), mean, SampleDeviation(measured, mean)};
}

// Returns whether every series has the warm-up runs that it is asked for.
bool CheckRunCounts(const std::vector<EventSeriesMap>& series,
                    std::int32_t num_warmup, std::string* error) {
  std::size_t graph = 0;
  for (const EventSeriesMap& graph_series : series) {
    for (const auto& [key, event] : graph_series) {
      if (num_warmup < 0) {
        *error = "Number of Warmup: " + std::to_string(num_warmup) + " < 0.";
        return false;
      }
      if (event.values.size() < static_cast<std::size_t>(num_warmup)) {
        *error = "Number of Warmup: " + std::to_string(num_warmup) +
                 " > Number of Runs " + std::to_string(event.values.size()) +
                 " of event [" + std::string(key.name) + "] of graph " +
                 std::to_string(graph) + ".";
        return false;
      }
    }
    ++graph;
  }
  return true;
}

}  // namespace

bool ComputeRunStatistics(const std::vector<EventSeriesMap>& series,
                          std::int32_t num_warmup,
                          std::vector<StatisticsMap>* statistics,
                          std::string* error) {
  const bool single_runs = HoldsSingleRuns(series);
  if (!single_runs && !CheckRunCounts(series, num_warmup, error)) {
    return false;
  }
  for (const EventSeriesMap& graph_series : series) {
    StatisticsMap& graph_statistics = statistics->emplace_back();
    for (const auto& [key, event] : graph_series) {
      const RunStatistics runs =
          single_runs ? kSingleRun
                      : StatisticsOf(event.values,
                                     static_cast<std::size_t>(num_warmup));
      graph_statistics.emplace_hint(graph_statistics.end(), key,
                                    EventStatistics{event.unit, runs});
    }
  }
  return true;
}

}  // namespace lumo
