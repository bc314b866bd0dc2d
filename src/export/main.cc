// lumo-profile-export: writes the events of a profiling log as a table.

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "cli/messages.h"
#include "cli/options.h"
#include "cli/output.h"
#include "export/event_table.h"
#include "log/log.h"

namespace {

constexpr lumo::Program kProgram = {
    "lumo-profile-export",
    "usage: lumo-profile-export --input_profile_data FILE [--output FILE]\n"
    "Writes the events of a profiling log as comma-separated rows.\n"
    "\n"
    "  --input_profile_data FILE  the log to read\n"
    "  --output FILE              write to FILE; default: standard output\n"
    "  --help                     print this text and exit\n"
    "  --version                  print the version and exit\n"};

}  // namespace

int main(int argc, char** argv) {
  lumo::PrepareProcess();

  std::string input;
  std::string output;
  std::vector<std::string> operands;
  if (const std::optional<int> status = lumo::ParseCommandLine(
          kProgram, argc, argv,
          {{"input_profile_data", &input}, {"output", &output}}, 0,
          &operands)) {
    return *status;
  }
  if (input.empty()) {
    return lumo::RejectCommandLine(kProgram,
                                   "--input_profile_data is required");
  }
  std::string error;
  const std::optional<lumo::Log> log = lumo::LoadLog(input, &error);
  if (!log) {
    return lumo::Fail(kProgram, error);
  }
  return lumo::WriteOutput(kProgram, output, {input}, "table",
                           [&log](std::ostream& stream) {
                             lumo::WriteEventTable(stream, *log->root);
                           });
}
