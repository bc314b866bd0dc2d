// Where a run writes its lines, and the lines with which it reports a failure.

#ifndef LUMO_APP_CONSOLE_H_
#define LUMO_APP_CONSOLE_H_

#include <ostream>
#include <string_view>

namespace lumo {

// The two streams of a run, which must outlive it. Each line to `out` is
// flushed; the report is not.
struct Console {
  // Standard output: echoed options, a warning, errors and, where no file is
  // named for it, the report.
  std::ostream& out;
  // Standard error: where a run failed.
  std::ostream& err;
};

// Writes "[Profile Viewer] Error: " and `text` as a line to `console.out`.
// Returns false, for a step to return in turn.
bool ReportError(const Console& console, std::string_view text);

// Writes to `console.err` at which step inside the viewer a run failed. The
// numbers are fixed texts, like the words before them: scripts look for them,
// so they stay when the source moves. Returns false.
bool ReportLocation(const Console& console, std::string_view step, int number);

}  // namespace lumo

#endif  // LUMO_APP_CONSOLE_H_
