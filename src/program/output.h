// Where the text that a program makes goes: all of it, or none.

#ifndef LUMO_PROGRAM_OUTPUT_H_
#define LUMO_PROGRAM_OUTPUT_H_

#include <functional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "program/program.h"

namespace lumo {

// Writes a text to a stream. Once a write has failed, which shows in the state
// of the stream, it may stop anywhere.
using TextWriter = std::function<void(std::ostream&)>;

// Writes the text of `write` to the file at `path`, or to standard output if
// that is empty. Returns 0, or kFailed after a message on standard error.
//
// A regular file appears or is replaced once the text is whole and on disk:
// until then, and after a failure, an older one stays as it is, and no other
// file is left behind. It keeps its mode and, where the system lets it, its
// owner. A symbolic link stays, and the file it leads to is replaced.
//
// The text goes directly to what is no regular file (a device, a pipe), to the
// file behind a name of an open one (/dev/stdout), and to a file that cannot be
// replaced in its folder; such a file is truncated first. After a failure it
// has a part of the text.
//
// If the output is one of the files in `logs`, by whatever name, nothing is
// written: that is a failure whose message calls the text `noun`.
int WriteOutput(const Program& program, const std::string& path,
                const std::vector<std::string>& logs, std::string_view noun,
                const TextWriter& write);

}  // namespace lumo

#endif  // LUMO_PROGRAM_OUTPUT_H_
