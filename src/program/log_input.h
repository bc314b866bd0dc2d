// A log that a program reads.

#ifndef LUMO_PROGRAM_LOG_INPUT_H_
#define LUMO_PROGRAM_LOG_INPUT_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "profiling_log_generated.h"

namespace lumo {

// A verified log. It may be moved; the root of a copy points into the bytes of
// the original.
struct Log {
  std::string path;
  // The content of the file.
  std::vector<std::uint8_t> bytes;
  // Points into `bytes`.
  const ProfilingLog* root;
};

// Returns the log at `path`. Returns nothing, with a message that names the
// path in `error`, if it cannot be opened, cannot be read whole, or is not a
// well-formed log, see VerifyLog().
std::optional<Log> LoadLog(const std::string& path, std::string* error);

}  // namespace lumo

#endif  // LUMO_PROGRAM_LOG_INPUT_H_
