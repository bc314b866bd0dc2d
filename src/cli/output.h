// Writes the output of a program atomically.

#ifndef LUMO_CLI_OUTPUT_H_
#define LUMO_CLI_OUTPUT_H_

#include <functional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "cli/messages.h"

namespace lumo {

// Writes a text to a stream, possibly twice to different ones. May stop after a
// failed write, which sets the state of the stream.
using TextWriter = std::function<void(std::ostream&)>;

// Writes the text of `write` to the file at `path`, or to standard output if
// that is empty. Returns 0, or kFailed after a message on standard error.
//
// A regular file is created or replaced when the whole text is on disk. Until
// then, and after a failure, an older file is unchanged. Only a run that is
// killed or runs out of memory leaves another file in the folder,
// ".lumo-PID-N". The new file has the mode of the older one and, as far as the
// system allows it, its owner and its group. A symbolic link is kept, and the
// file that it leads to is replaced.
//
// The text is written directly to a device or a pipe, to the name of an open
// file (/dev/stdout), and to a file that cannot be replaced in its folder. A
// file is truncated first, and may be incomplete after a failure.
//
// If the output is one of the files in `logs`, by any name, nothing is written,
// and the run fails with a message that calls the text `noun`.
int WriteOutput(const Program& program, const std::string& path,
                const std::vector<std::string>& logs, std::string_view noun,
                const TextWriter& write);

}  // namespace lumo

#endif  // LUMO_CLI_OUTPUT_H_
