// The values of one event over the repeated runs of a graph.

#ifndef LUMO_MODEL_EVENT_SERIES_H_
#define LUMO_MODEL_EVENT_SERIES_H_

#include <compare>
#include <cstdint>
#include <map>
#include <string_view>
#include <vector>

namespace lumo {

// Identifies one event across the runs of a graph. Keys are ordered by
// position, then by the bytes of the name.
struct EventKey {
  // The event's index in its message, counted over events of all units; for
  // operations, their ordinal among the node events under one top-level event.
  // From 0.
  std::int32_t position;
  // Points into the log and lives as long as the log's bytes do.
  std::string_view name;

  friend auto operator<=>(const EventKey&, const EventKey&) = default;
};

struct EventSeries {
  // The unit's word for the event that came first, see UnitText().
  std::string_view unit;
  // One value per run, in message order. A log's 64-bit values become the
  // nearest floats here, because every figure of the report is defined in
  // single precision.
  std::vector<float> values;
};

// The series of one graph; empty for a graph that has none.
using EventSeriesMap = std::map<EventKey, EventSeries>;

}  // namespace lumo

#endif  // LUMO_MODEL_EVENT_SERIES_H_
