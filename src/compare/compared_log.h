// One of the logs of a comparison.

#ifndef LUMO_COMPARE_COMPARED_LOG_H_
#define LUMO_COMPARE_COMPARED_LOG_H_

#include <optional>
#include <string>

#include "compare/comparison.h"
#include "model/message_groups.h"
#include "program/log_input.h"

namespace lumo {

// A log with its grouped messages and its series. It may be moved; a copy
// refers to the original.
struct ComparedLog {
  Log log;
  MessageGroups groups;
  LogSeries series;
};

// Returns the log at `path`. Returns nothing, with a message that names the
// path in `error`, if LoadLog() fails, if the log has no execute run, or if the
// graph of a run is out of range.
std::optional<ComparedLog> LoadComparedLog(const std::string& path,
                                           std::string* error);

}  // namespace lumo

#endif  // LUMO_COMPARE_COMPARED_LOG_H_
