// The whole log as one line of text.

#ifndef LUMO_REPORT_LOG_TEXT_H_
#define LUMO_REPORT_LOG_TEXT_H_

#include <cstdint>
#include <string>
#include <vector>

namespace lumo {

// Renders logs as text. It has no state, but is required to be an object.
class LogTextConverter {
 public:
  // Returns every field of the log in `log_storage`, which must have been
  // verified, with the schema's names of fields and enumeration values: the
  // text of flatbuffers::FlatBufferToString().
  std::string RenderLogText(const std::vector<std::uint8_t>& log_storage) const;
};

}  // namespace lumo

#endif  // LUMO_REPORT_LOG_TEXT_H_
