// The events of a log as a table for other programs.

#ifndef LUMO_EXPORT_EVENT_TABLE_H_
#define LUMO_EXPORT_EVENT_TABLE_H_

#include <ostream>

#include "profiling_log_generated.h"

namespace lumo {

// Writes the events of the verified log `log` as comma-separated rows, after a
// row with the names of the columns. There is a row for each event at every
// level, in the order of the log, an event before its sub-events; each row ends
// with "\n". A log without events gives the names alone.
//
// A failed write shows in the state of `stream`; no rows are composed after it.
void WriteEventTable(std::ostream& stream, const ProfilingLog& log);

}  // namespace lumo

#endif  // LUMO_EXPORT_EVENT_TABLE_H_
