// lumo-profile-viewer: prints a profiling log as a readable report.

#include <cstdio>
#include <cstdlib>

#include "app/profile_viewer.h"

namespace {

// Says on standard error which step failed, by a number that is part of the
// text and does not move with this file. Returns the exit status.
int FailAt(int place) {
  std::fprintf(stderr, "Error at main:%d\n", place);
  return EXIT_FAILURE;
}

}  // namespace

int main(int argc, char** argv) {
  lumo::ProfileViewer viewer;
  if (!viewer.ParseCommandLine(argc, argv)) {
    return FailAt(336);
  }
  if (!viewer.LoadProfilingLog(viewer.input_profile_data)) {
    return FailAt(339);
  }
  if (!viewer.ReadDataFromLog()) {
    return FailAt(341);
  }
  if (!viewer.ExportData()) {
    return FailAt(343);
  }
  return EXIT_SUCCESS;
}
