// One of the logs of a comparison.

#ifndef LUMO_COMPARE_COMPARED_LOG_H_
#define LUMO_COMPARE_COMPARED_LOG_H_

#include <optional>
#include <string>

#include "compare/comparison.h"
#include "log/log.h"
#include "model/message_groups.h"

namespace lumo {

// A log with its grouped messages and its series. It has an execute run, and
// each run belongs to a graph. It may be moved; a copy refers to the original.
struct ComparedLog {
  Log log;
  MessageGroups groups;
  LogSeries series;
};

// Groups the messages of a log and collects its series. Returns nothing, with a
// message that names the path in `error`, if the log has no execute run or if
// the graph of a run is out of range.
std::optional<ComparedLog> MakeComparedLog(Log log, std::string* error);

// Returns the log at `path`. Returns nothing, with a message that names the
// path in `error`, if LoadLog() or MakeComparedLog() fails.
std::optional<ComparedLog> LoadComparedLog(const std::string& path,
                                           std::string* error);

}  // namespace lumo

#endif  // LUMO_COMPARE_COMPARED_LOG_H_
