#include "cli/messages.h"

#include <csignal>
#include <iostream>
#include <string>

#include "cli/streams.h"

namespace lumo {

void PrepareProcess() {
  OccupyStandardStreams();
  std::signal(SIGPIPE, SIG_DFL);
  std::signal(SIGXFSZ, SIG_IGN);
}

int Fail(const Program& program, std::string_view text) {
  // Write one string, because standard error is not buffered.
  std::string line(program.name);
  line += ": ";
  line += text;
  line += '\n';
  std::cerr << line;
  return kFailed;
}

int RejectCommandLine(const Program& program, std::string_view text) {
  Fail(program, text);
  std::cerr << program.usage;
  return kWrongCommandLine;
}

}  // namespace lumo
