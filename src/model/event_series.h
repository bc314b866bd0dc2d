// The values of each event over the repeated runs of a graph.

#ifndef LUMO_MODEL_EVENT_SERIES_H_
#define LUMO_MODEL_EVENT_SERIES_H_

#include <compare>
#include <cstdint>
#include <map>
#include <string_view>
#include <vector>

#include "model/message_groups.h"

namespace lumo {

// Identifies one event across the runs of a graph. Keys are ordered by
// position, then by the bytes of the name.
struct EventKey {
  // From 0. Of a top-level event: among the events of its message, in all
  // units. Of an operation: among the node events under its top-level event.
  std::int32_t position;
  // Points into the log and lives as long as the log's bytes do.
  std::string_view name;

  friend auto operator<=>(const EventKey&, const EventKey&) = default;
};

struct EventSeries {
  // The unit of the first value, see UnitText().
  std::string_view unit;
  // The values in the order of the runs, rounded to the nearest floats, because
  // every figure of the report is defined in single precision.
  std::vector<float> values;
};

// The series of one graph; empty for a graph that has none.
using EventSeriesMap = std::map<EventKey, EventSeries>;

// The functions below return `graph_count` elements; element g belongs to graph
// g. An absent name counts as an empty one. Runs that belong to no graph, see
// MessageGroups::graph_error, are ignored.

// Returns the series of the top-level events in microseconds over the runs of
// `kind`.
std::vector<EventSeriesMap> CollectEventSeries(const MessageGroups& groups,
                                               RunKind kind);

// Returns the series of the operations, in any unit: of the node events
// directly under the top-level events of the execute runs.
std::vector<EventSeriesMap> CollectNodeSeries(const MessageGroups& groups);

}  // namespace lumo

#endif  // LUMO_MODEL_EVENT_SERIES_H_
