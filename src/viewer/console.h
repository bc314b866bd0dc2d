// The streams of a run, and the lines that report a failure.

#ifndef LUMO_VIEWER_CONSOLE_H_
#define LUMO_VIEWER_CONSOLE_H_

#include <ostream>
#include <string_view>

namespace lumo {

// The two streams of a run. They must outlive it. Each line to `out` is
// flushed, the report is not.
struct Console {
  // Standard output: echoed options, a warning, errors and, without --output,
  // the report.
  std::ostream& out;
  // Standard error: the step that failed.
  std::ostream& err;
};

// Writes "[Profile Viewer] Error: " and `text` as a line to `console.out`.
// Returns false, for a step to return in turn.
bool ReportError(const Console& console, std::string_view text);

// Writes the step that failed to `console.err`. Returns false. Scripts search
// for these lines, so their words and numbers are fixed, even though the
// numbers are no longer lines of the source.
bool ReportLocation(const Console& console, std::string_view step, int number);

}  // namespace lumo

#endif  // LUMO_VIEWER_CONSOLE_H_
