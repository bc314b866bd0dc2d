// The values of every event of a log over the repeated runs, as whole numbers.
//
// The report has series of its own, see event_series.h: they are in single
// precision and have fewer events.

#ifndef LUMO_MODEL_LOG_SERIES_H_
#define LUMO_MODEL_LOG_SERIES_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "model/message_groups.h"

namespace lumo {

enum class Level {
  // A top-level event.
  kEvent,
  // A node event directly under a top-level event of an execute run.
  kOperation,
  // Any other event below one of these, at any depth.
  kPart,
};

// Returns "event", "operation" or "part".
std::string_view LevelText(Level level);

// The values of one event in the runs of one kind of one graph.
//
// Events of different runs are the same event if their names agree, and
// - of events and operations, their positions;
// - of parts, the series of the event above them and their positions among the
//   events of that name directly below it, operations included.
struct Series {
  Level level;
  // Points into the log and lives as long as the log's bytes do.
  std::string_view name;
  // The unit of the first value, see UnitText().
  std::string_view unit;
  // Of the first value.
  ProfileEventType type;
  // From 0. Of an event: among the events of its message. Of an operation:
  // among the node events under its top-level event. Of a part: as above.
  std::int32_t position;
  // The index, in RunSeries::series, of the series of the event directly above
  // the first value. Nothing for events.
  std::optional<std::size_t> parent;
  // How many series before it have, if it is an event or operation, the same
  // level, unit and name; if it is a part, the same name of the parent, unit
  // and name, in the order of their first values in the log.
  std::int32_t occurrence;
  // At least one, in the order of the runs. An event that a run has twice, such
  // as an operation below two top-level events, has two values of that run.
  std::vector<std::uint64_t> values;
  // The run of each value: its number, from 0, among the runs of this kind and
  // graph. Empty for parts, whose runs nothing needs.
  std::vector<std::int32_t> runs;
};

// The series of the runs of one kind of one graph.
struct RunSeries {
  RunKind kind;
  std::int32_t graph;
  // The number of runs; at least 1.
  std::int32_t run_count;
  // Events by position, then by the bytes of the name; operations in the same
  // order. The parts of an event or operation follow it, parents before their
  // parts and otherwise in the order of their first values.
  std::vector<Series> series;
};

// Returns the series of the execute runs of each graph, in the order of the
// graphs, then those of the finalize runs. Kinds and graphs without runs are
// omitted, as are runs that belong to no graph, see MessageGroups::graph_error.
// Parts are included only with `with_parts`.
std::vector<RunSeries> CollectLogSeries(const MessageGroups& groups,
                                        bool with_parts);

// Returns whether an event with this unit and name is the time of whole execute
// runs: it is in us, and its name contains kExecuteText.
bool IsRunTime(std::string_view unit, std::string_view name);

}  // namespace lumo

#endif  // LUMO_MODEL_LOG_SERIES_H_
