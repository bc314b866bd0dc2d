// A profiling log as bytes: reading the file and checking what was read.

#ifndef LUMO_LOG_LOG_FILE_H_
#define LUMO_LOG_LOG_FILE_H_

#include <cstdint>
#include <string>
#include <vector>

#include "profiling_log_generated.h"

namespace lumo {

// What reading a file gave.
struct LogFile {
  // As many bytes as the file had when it was opened. Empty if the file cannot
  // be a log: a pipe, a folder, or 2147483647 bytes or more.
  std::vector<std::uint8_t> bytes;
  // Why the file could not be opened; empty if it could.
  std::string open_error;
  // Why `bytes` may not be what the file had: the read failed or brought fewer
  // bytes, and those missing are 0, or the file changed meanwhile. Empty if
  // the file was read whole.
  std::string read_error;
};

// Reads the file at `path`. The errors are the system's reasons, such as "No
// such file or directory", without a path.
LogFile ReadLogFile(const std::string& path);

// Returns the root table of the log in `bytes`, or null, with the reason in
// `error`, if the bytes are not a well-formed log: every offset, vector, string
// terminator and alignment is checked, events may nest 62 levels deep and a log
// may have 1,000,000 tables, each counted as often as something refers to it.
// The root points into `bytes` and is valid while these are neither changed nor
// moved to other storage.
//
// A valid log may still contain absent fields anywhere, numbers that their
// enumeration does not name, names with any bytes in them, and tables that
// several others share.
const ProfilingLog* VerifyLog(const std::vector<std::uint8_t>& bytes,
                              std::string* error);

}  // namespace lumo

#endif  // LUMO_LOG_LOG_FILE_H_
