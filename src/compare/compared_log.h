// A log that takes part in a comparison.

#ifndef LUMO_COMPARE_COMPARED_LOG_H_
#define LUMO_COMPARE_COMPARED_LOG_H_

#include <optional>
#include <string>

#include "compare/comparison.h"
#include "model/message_groups.h"
#include "program/log_input.h"

namespace lumo {

// A log with its messages in groups and its series. It may be moved; a copy
// refers to the original.
struct ComparedLog {
  Log log;
  MessageGroups groups;
  LogSeries series;
};

// Returns the log at `path`. Returns nothing, with a message that names the
// path in `error`, if LoadLog() does, if the log has no execute run, or if one
// of its runs belongs to no graph.
std::optional<ComparedLog> LoadComparedLog(const std::string& path,
                                           std::string* error);

}  // namespace lumo

#endif  // LUMO_COMPARE_COMPARED_LOG_H_
