// The command line of lumo-profile-export.

#ifndef LUMO_EXPORT_COMMAND_LINE_H_
#define LUMO_EXPORT_COMMAND_LINE_H_

#include <optional>
#include <string>

namespace lumo {

// The options, as --help explains them.
struct ExportOptions {
  std::string input_profile_data;
  std::string output;
};

// Writes "lumo-profile-export: " and `text` as a line to standard error.
// Returns `status`, for main() to return in turn.
int FailWith(int status, const std::string& text);

// Sets `options`. Returns the status to end with at once, or nothing if there
// is a log to export: 0 after --help and --version, 1 if these cannot be
// printed, 2, with a line and the usage on standard error, for a wrong command
// line.
std::optional<int> ParseExportOptions(int argc, char** argv,
                                      ExportOptions* options);

}  // namespace lumo

#endif  // LUMO_EXPORT_COMMAND_LINE_H_
