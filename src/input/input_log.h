// A log that a program has read, with its messages grouped into runs.

#ifndef LUMO_INPUT_INPUT_LOG_H_
#define LUMO_INPUT_INPUT_LOG_H_

#include <optional>
#include <string>

#include "log/log.h"
#include "model/message_groups.h"

namespace lumo {

// A log with at least one execute run, each of whose runs belongs to a graph.
struct InputLog {
  Log log;
  // Points into the log.
  MessageGroups groups;
};

// Returns the log at `path`. Returns nothing, with a message that names the
// path in `error`, if LoadLog() fails, if the log has no execute run, or if the
// graph of a run is out of range.
std::optional<InputLog> LoadInputLog(const std::string& path,
                                     std::string* error);

}  // namespace lumo

#endif  // LUMO_INPUT_INPUT_LOG_H_
