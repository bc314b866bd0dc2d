// The three standard streams, which a caller may have closed, and whether an
// output would be written to a log.

#ifndef LUMO_CLI_STREAMS_H_
#define LUMO_CLI_STREAMS_H_

#include <string>

namespace lumo {

// Opens a placeholder, which can be neither read nor written, for each of the
// file descriptors 0, 1 and 2 that is closed. Otherwise the next file to be
// opened, a log or a table, would become standard output or standard error, and
// messages would be written to it. Call this before any other file is opened.
void OccupyStandardStreams();

// Returns whether both paths lead to the same file, device or pipe, possibly
// through links. Returns false if either does not exist.
bool IsSameFile(const std::string& a, const std::string& b);

// Returns whether standard output is the file at `path`.
bool IsStandardOutput(const std::string& path);

}  // namespace lumo

#endif  // LUMO_CLI_STREAMS_H_
