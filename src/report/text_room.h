// How much room the texts of a log need.

#ifndef LUMO_REPORT_TEXT_ROOM_H_
#define LUMO_REPORT_TEXT_ROOM_H_

#include <cstddef>

#include "profiling_log_generated.h"

namespace lumo {

// Estimates, from a sample of the messages, how many bytes a text has that
// writes the name and `bytes_per_event` further bytes of every event of a
// verified log. Reserving this much keeps most texts from moving while they
// grow. It depends on what the log contains, not on the size of its file.
std::size_t EstimateText(const ProfilingLog& log, std::size_t bytes_per_event);

}  // namespace lumo

#endif  // LUMO_REPORT_TEXT_ROOM_H_
