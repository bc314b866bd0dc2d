// Warm-up mean, mean and deviation of each series, and when there are none.

#include "model/run_statistics.h"

#include <cmath>
#include <cstddef>
#include <span>

#include "model/mean.h"
#include "model/printable.h"

namespace lumo {
namespace {

// The first series of graph 0 alone decides for the whole list, however many
// values the others have.
bool HoldsSingleRuns(const std::vector<EventSeriesMap>& series) {
  return !series.empty() && !series.front().empty() &&
         series.front().begin()->second.values.size() == 1;
}

// For no values this is the root of 0 / -1, the negative zero that tells "no
// runs" from "one run", which is 0.
float SampleDeviation(std::span<const float> values, float mean) {
  if (values.size() == 1) {
    return 0.0F;
  }
  float sum = 0.0F;
  for (const float value : values) {
    sum += (value - mean) * (value - mean);
  }
  return std::sqrt(sum / (static_cast<float>(values.size()) - 1.0F));
}

RunStatistics StatisticsOf(const EventSeries& event, std::size_t num_warmup) {
  const std::span<const float> values(event.values);
  const std::span<const float> measured = values.subspan(num_warmup);
  const float mean = Mean(measured);
  return {Mean(values.first(num_warmup)), mean, SampleDeviation(measured, mean),
          event.unit};
}

// Returns whether every series has the warm-up runs that it is asked for.
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
                 " of event [" + Printable(key.name) + "] of graph " +
                 std::to_string(graph_position) + ".";
        return false;
      }
    }
    ++graph_position;
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
  for (const EventSeriesMap& graph : series) {
    StatisticsMap& graph_statistics = statistics->emplace_back();
    for (const auto& [key, event] : graph) {
      graph_statistics.emplace(
          key, single_runs
                   ? RunStatistics{-1.0F, -1.0F, -1.0F, event.unit}
                   : StatisticsOf(event, static_cast<std::size_t>(num_warmup)));
    }
  }
  return true;
}

}  // namespace lumo
