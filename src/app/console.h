// The lines with which a run reports a failure.

#ifndef LUMO_APP_CONSOLE_H_
#define LUMO_APP_CONSOLE_H_

#include <string_view>

namespace lumo {

// Writes "[Profile Viewer] Error: " and `text` as a line to standard output.
// Returns false, for a step to return in turn.
bool ReportError(std::string_view text);

// Writes to standard error where inside the viewer a run failed: the step and a
// number that has always stood for the place. It is part of the text and does
// not move with the source. Returns false.
bool ReportLocation(const char* step, int place);

}  // namespace lumo

#endif  // LUMO_APP_CONSOLE_H_
