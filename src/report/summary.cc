#include "report/summary.h"

#include <algorithm>

namespace lumo {
namespace {

// The statistics of a list are computed all at once or not at all, so the first
// entry decides.
bool HasStatistics(const std::vector<StatisticsMap>& statistics) {
  const auto graph =
      std::find_if(statistics.begin(), statistics.end(),
                   [](const StatisticsMap& map) { return !map.empty(); });
  if (graph == statistics.end()) {
    return false;
  }
  return IsComputed(graph->begin()->second);
}

// Writes one of the three figures of every event of a graph, in lines like
// "                name: 600.00 us".
void WriteFigures(std::ostream& stream, const StatisticsMap& graph,
                  float RunStatistics::*figure) {
  for (const auto& [key, event] : graph) {
    stream << "                " << key.name << ": " << event.*figure << ' '
           << event.unit << '\n';
  }
}

}  // namespace

void WriteSummary(std::ostream& stream,
                  const std::vector<StatisticsMap>& statistics,
                  std::int32_t num_warmup) {
  if (HasStatistics(statistics)) {
    stream << "------------Summary------------\n";
    std::int32_t graph_position = 0;
    for (const StatisticsMap& graph : statistics) {
      stream << "        Graph index:" << graph_position << '\n';
      stream << "            Warmup (first " << num_warmup << " events):\n";
      WriteFigures(stream, graph, &RunStatistics::warmup_mean);
      stream << "            Mean:\n";
      WriteFigures(stream, graph, &RunStatistics::mean);
      stream << "            Stdev:\n";
      WriteFigures(stream, graph, &RunStatistics::stdev);
      stream << '\n';
      ++graph_position;
    }
  }
  stream << "\n\n";
}

}  // namespace lumo
