// How much room the texts of a log need.

#ifndef LUMO_REPORT_TEXT_ROOM_H_
#define LUMO_REPORT_TEXT_ROOM_H_

#include <cstddef>

#include "profiling_log_generated.h"

namespace lumo {

// Estimates, from a sample of the messages, the size of a text that has the
// name and `bytes_per_event` more bytes for each event of a verified log of
// `log_size` bytes. If this much is reserved, most texts are not reallocated
// while they grow. Returns at most six times `log_size`.
std::size_t EstimateTextSize(const ProfilingLog& log, std::size_t log_size,
                             std::size_t bytes_per_event);

}  // namespace lumo

#endif  // LUMO_REPORT_TEXT_ROOM_H_
