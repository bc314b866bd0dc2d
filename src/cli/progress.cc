#include "cli/progress.h"

#include <iostream>
#include <string>

#include <unistd.h>

namespace lumo {

void CountLog(Progress* progress) {
  using std::chrono::milliseconds;
  ++progress->done;
  const auto now = std::chrono::steady_clock::now();
  if (progress->total == 0 || now - progress->start < milliseconds(1000) ||
      now - progress->shown < milliseconds(100) || isatty(STDERR_FILENO) == 0) {
    return;
  }
  progress->shown = now;
  std::cerr << "\r\033[K" + std::to_string(progress->done) + " of " +
                   std::to_string(progress->total) + " logs read"
            << std::flush;
}

void ClearProgress(Progress* progress) {
  if (progress->shown != progress->start) {
    std::cerr << "\r\033[K" << std::flush;
    progress->shown = progress->start;
  }
}

}  // namespace lumo
