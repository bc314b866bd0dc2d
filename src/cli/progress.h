// How much of a long run is done, on a terminal.

#ifndef LUMO_CLI_PROGRESS_H_
#define LUMO_CLI_PROGRESS_H_

#include <chrono>
#include <cstddef>

namespace lumo {

// The progress of reading logs.
struct Progress {
  // How many logs will be read. With 0, nothing is ever shown.
  std::size_t total = 0;
  std::size_t done = 0;
  // When the run began and when the line was last written.
  std::chrono::steady_clock::time_point start =
      std::chrono::steady_clock::now();
  std::chrono::steady_clock::time_point shown = start;
};

// Counts a log. If the run has taken longer than a second, and standard error
// is a terminal, shows how many logs have been read, at most ten times a
// second.
void CountLog(Progress* progress);

// Removes the line from the terminal, if there is one. Call this before
// anything else is written.
void ClearProgress(Progress* progress);

}  // namespace lumo

#endif  // LUMO_CLI_PROGRESS_H_
