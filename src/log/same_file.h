// Whether a place to write to is the log that was read.

#ifndef LUMO_LOG_SAME_FILE_H_
#define LUMO_LOG_SAME_FILE_H_

#include <string>

namespace lumo {

// Returns whether both paths lead to one file, device or pipe, through links or
// by other names too. False if either does not exist.
bool IsSameFile(const std::string& a, const std::string& b);

// Returns whether what is written to standard output gets into the file at
// `path`.
bool IsStandardOutput(const std::string& path);

}  // namespace lumo

#endif  // LUMO_LOG_SAME_FILE_H_
