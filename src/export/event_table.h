// The events of a log as a table for other programs.

#ifndef LUMO_EXPORT_EVENT_TABLE_H_
#define LUMO_EXPORT_EVENT_TABLE_H_

#include <ostream>

#include "profiling_log_generated.h"

namespace lumo {

// Writes the events of the verified log `log` as comma-separated rows, after a
// row with the names of the columns. There is a row for each event at every
// level, in the order of the log, each event before its sub-events; rows end
// with "\n". For a log without events, only the names are written.
//
// A failed write sets the state of `stream` and ends the table.
void WriteEventTable(std::ostream& stream, const ProfilingLog& log);

}  // namespace lumo

#endif  // LUMO_EXPORT_EVENT_TABLE_H_
