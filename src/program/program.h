// What a program says of itself and of its failures.

#ifndef LUMO_PROGRAM_PROGRAM_H_
#define LUMO_PROGRAM_PROGRAM_H_

#include <string_view>

namespace lumo {

// Exit statuses, besides 0.
inline constexpr int kFailed = 1;
inline constexpr int kWrongCommandLine = 2;

struct Program {
  // Begins each message.
  std::string_view name;
  // The text of --help, with a line break at its end.
  std::string_view usage;
};

// Prepares the process, before any file is opened: occupies standard streams
// that are closed; lets a reader that goes away end the run without a message,
// also where the caller ignores SIGPIPE; and turns the signal for a file that
// exceeds the shell's limit into a failed write.
void PrepareProcess();

// Writes the program's name and `text` as one line to standard error. Returns
// kFailed, for main() to return in turn.
int Fail(const Program& program, std::string_view text);

// As Fail(), but with the usage text below the line. Returns
// kWrongCommandLine.
int RejectCommandLine(const Program& program, std::string_view text);

}  // namespace lumo

#endif  // LUMO_PROGRAM_PROGRAM_H_
