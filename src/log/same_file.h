// Whether an output would be written to the log that was read.

#ifndef LUMO_LOG_SAME_FILE_H_
#define LUMO_LOG_SAME_FILE_H_

#include <string>

namespace lumo {

// Returns whether both paths lead to the same file, device or pipe, possibly
// through links. Returns false if either does not exist.
bool IsSameFile(const std::string& a, const std::string& b);

// Returns whether standard output is the file at `path`.
bool IsStandardOutput(const std::string& path);

}  // namespace lumo

#endif  // LUMO_LOG_SAME_FILE_H_
