// The whole log as one line of text, and how much memory its texts need.

#ifndef LUMO_REPORT_LOG_TEXT_H_
#define LUMO_REPORT_LOG_TEXT_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "profiling_log_generated.h"

namespace lumo {

// Renders logs as text. It has no state, but is required to be an object.
class LogTextConverter {
 public:
  // Returns every field of the log in `log_storage`, which must have been
  // verified, with the schema's names of fields and enumeration values: the
  // text of flatbuffers::FlatBufferToString().
  std::string RenderLogText(const std::vector<std::uint8_t>& log_storage) const;
};

// Estimates, from a sample of the messages, the size of a text that has the
// name and `bytes_per_event` more bytes for each event of a verified log of
// `log_size` bytes. If this much is reserved, most texts are not reallocated
// while they grow. Returns at most six times `log_size`.
std::size_t EstimateTextSize(const ProfilingLog& log, std::size_t log_size,
                             std::size_t bytes_per_event);

}  // namespace lumo

#endif  // LUMO_REPORT_LOG_TEXT_H_
