// A profiling log as bytes: reading the file and checking what was read.

#ifndef LUMO_LOG_LOG_FILE_H_
#define LUMO_LOG_LOG_FILE_H_

#include <cstdint>
#include <string>
#include <vector>

#include "profiling_log_generated.h"

namespace lumo {

// Replaces `bytes` with the whole content of the file at `path`. Bytes that the
// file turns out not to have are zero. Returns false, with the reason in
// `error` and no bytes, if the file cannot be opened or its size alone says
// that it is no log: a pipe, which has none, or 2147483647 bytes or more.
bool ReadLogFile(const std::string& path, std::vector<std::uint8_t>* bytes,
                 std::string* error);

// Returns the root table of the log in `bytes`, or null, with the reason in
// `error`, if the bytes are not a well-formed log: every offset, vector, string
// terminator and alignment is checked, events may nest 62 levels deep and a log
// may have 1,000,000 tables, each counted as often as something refers to it.
// The root points into `bytes` and is valid while these are neither changed nor
// moved.
//
// What a good log still may hold: absent fields anywhere, numbers that their
// enumeration does not name, names with any bytes in them, tables that several
// others share.
const ProfilingLog* VerifyLog(const std::vector<std::uint8_t>& bytes,
                              std::string* error);

}  // namespace lumo

#endif  // LUMO_LOG_LOG_FILE_H_
