// lumo-profile-export: writes the events of a profiling log as a table.

#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "export/command_line.h"
#include "export/event_table.h"
#include "log/log_file.h"
#include "log/same_file.h"
#include "model/printable.h"

namespace {

using lumo::FailWith;
using lumo::Printable;

// Writes the table to the file at `path`, or to standard output if that is
// empty. Returns the exit status.
int WriteTable(const lumo::ProfilingLog& log, const std::string& path) {
  if (path.empty()) {
    lumo::WriteEventTable(std::cout, log);
    return std::cout.flush()
               ? EXIT_SUCCESS
               : FailWith(EXIT_FAILURE,
                          "standard output: cannot be written whole");
  }
  std::ofstream file(path);
  if (!file.is_open()) {
    return FailWith(EXIT_FAILURE, Printable(path) + ": cannot be created");
  }
  lumo::WriteEventTable(file, log);
  file.close();
  return file ? EXIT_SUCCESS
              : FailWith(EXIT_FAILURE,
                         Printable(path) + ": cannot be written whole");
}

}  // namespace

int main(int argc, char** argv) {
  // A reader that has seen enough ends the run without a word, also where the
  // caller chose to ignore the signal.
  std::signal(SIGPIPE, SIG_DFL);

  lumo::ExportOptions options;
  if (const std::optional<int> status =
          lumo::ParseExportOptions(argc, argv, &options)) {
    return *status;
  }
  const std::string& input = options.input_profile_data;
  std::vector<std::uint8_t> log;
  std::string error;
  const lumo::ProfilingLog* root = nullptr;
  if (lumo::ReadLogFile(input, &log, &error)) {
    root = lumo::VerifyLog(log, &error);
  }
  if (root == nullptr) {
    return FailWith(EXIT_FAILURE, Printable(input) + ": " + error);
  }
  // The log must survive, by whatever name the table would get into it.
  if (options.output.empty() ? lumo::IsStandardOutput(input)
                             : lumo::IsSameFile(options.output, input)) {
    return FailWith(
        EXIT_FAILURE,
        Printable(input) + ": the table would go into the log itself");
  }
  return WriteTable(*root, options.output);
}
