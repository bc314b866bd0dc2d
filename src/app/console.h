// The lines with which a run reports a failure.

#ifndef LUMO_APP_CONSOLE_H_
#define LUMO_APP_CONSOLE_H_

#include <string_view>

namespace lumo {

// Writes "[Profile Viewer] Error: " and `text` as a line to standard output.
// Returns false, for a step to return in turn.
bool ReportError(std::string_view text);

// Writes to standard error where inside the viewer a run failed. The numbers
// are fixed texts that name the place, not lines of the source. Returns false.
bool ReportLocation(const char* step, int line);

}  // namespace lumo

#endif  // LUMO_APP_CONSOLE_H_
