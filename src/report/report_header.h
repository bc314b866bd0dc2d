// The header of the report: versions, date, and how many runs each graph has.

#ifndef LUMO_REPORT_REPORT_HEADER_H_
#define LUMO_REPORT_REPORT_HEADER_H_

#include <cstdint>
#include <ostream>

#include "profiling_log_generated.h"

namespace lumo {

// Writes the header for a log with these numbers of graphs, finalize messages
// and execute messages. Returns false and writes nothing if `root` is null.
//
// The four texts of the root are written up to their first zero byte; an absent
// one is empty. Block i has the index and backend of message i, so
// `graph_count` must not exceed the number of messages. Runs per graph are
// rounded down.
bool WriteReportHeader(std::ostream& stream, const ProfilingLog* root,
                       std::int32_t graph_count, std::int32_t prepare_count,
                       std::int32_t inference_count);

}  // namespace lumo

#endif  // LUMO_REPORT_REPORT_HEADER_H_
