// A profiling log as bytes: reading the file and checking what was read.

#ifndef LUMO_LOG_LOG_H_
#define LUMO_LOG_LOG_H_

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "profiling_log_generated.h"

namespace lumo {

// The result of reading a file.
struct LogFile {
  // As many bytes as the file had when it was opened. Empty if the file cannot
  // be a log: it has another type, or 2147483647 bytes or more.
  std::vector<std::uint8_t> bytes;
  // "a folder", "a pipe" or "a device", which is a character device. Empty for
  // a file or a block device, which may contain a log.
  std::string other_type;
  // Why the file could not be opened; empty if it could.
  std::string open_error;
  // Why `bytes` may differ from the content of the file: a read failed or
  // returned fewer bytes (the missing ones are 0), or the file changed while it
  // was read. Empty if the file was read whole or cannot be a log.
  std::string read_error;
};

// Reads the file at `path`. The errors are the system's reasons, such as "No
// such file or directory", without a path.
LogFile ReadLogFile(const std::string& path);

// Returns the root table of the log in `bytes`, or null, with the reason in
// `error`, if the bytes are not a well-formed log: every offset, vector, string
// terminator and alignment is checked, events may be nested up to 62 levels
// deep, and a log may have up to 1,000,000 tables, each counted once for each
// reference to it.
// The root points into `bytes` and is valid until they are changed or
// reallocated.
//
// In a valid log, any field may still be absent, numbers may have no name in
// their enumeration, names may contain any bytes, and tables may be shared.
const ProfilingLog* VerifyLog(const std::vector<std::uint8_t>& bytes,
                              std::string* error);

// A verified log. It can be moved, but not copied, because `root` would point
// into the bytes of the original.
struct Log {
  Log(std::string log_path, std::vector<std::uint8_t> content,
      const ProfilingLog* root_table)
      : path(std::move(log_path)),
        bytes(std::move(content)),
        root(root_table) {}
  Log(Log&&) = default;
  Log& operator=(Log&&) = default;

  std::string path;
  // The content of the file.
  std::vector<std::uint8_t> bytes;
  // Points into `bytes`.
  const ProfilingLog* root;
};

// Returns the log at `path`. Returns nothing, with a message that names the
// path in `error`, if it cannot be opened, cannot be read whole, is a folder, a
// pipe or a device, or is not a well-formed log, see VerifyLog().
std::optional<Log> LoadLog(const std::string& path, std::string* error);

}  // namespace lumo

#endif  // LUMO_LOG_LOG_H_
