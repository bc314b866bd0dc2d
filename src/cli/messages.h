// The name, messages and exit statuses of a program.

#ifndef LUMO_CLI_MESSAGES_H_
#define LUMO_CLI_MESSAGES_H_

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

// Prepares the process before any file is opened: reserves the descriptors of
// closed standard streams; restores SIGPIPE, so that the run ends without a
// message when the reader exits; and ignores the signal for exceeding the limit
// of the file size, so that the write fails instead.
void PrepareProcess();

// Writes the program's name and `text` as one line to standard error. Returns
// kFailed, for main() to return in turn.
int Fail(const Program& program, std::string_view text);

// Like Fail(), but also writes the usage text. Returns kWrongCommandLine.
int RejectCommandLine(const Program& program, std::string_view text);

}  // namespace lumo

#endif  // LUMO_CLI_MESSAGES_H_
