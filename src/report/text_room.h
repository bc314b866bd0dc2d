// How much room the texts of a log need.

#ifndef LUMO_REPORT_TEXT_ROOM_H_
#define LUMO_REPORT_TEXT_ROOM_H_

#include <cstddef>

#include "profiling_log_generated.h"

namespace lumo {

// Estimates the size of a text that has the name and `bytes_per_event` more
// bytes for each event of a verified log. If this much is reserved, most texts
// are not reallocated while they grow. The estimate is from a sample of the
// messages. It depends on the content of the log, not on the size of its file.
std::size_t EstimateText(const ProfilingLog& log, std::size_t bytes_per_event);

}  // namespace lumo

#endif  // LUMO_REPORT_TEXT_ROOM_H_
