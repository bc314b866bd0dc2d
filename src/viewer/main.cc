// lumo-profile-viewer: prints a profiling log as a readable report.

#include <cstdlib>
#include <iostream>
#include <string>

#include "cli/streams.h"
#include "viewer/profile_viewer.h"

namespace {

// Writes which step failed to standard error. The numbers are fixed, see
// ReportLocation(). Returns the exit status.
int FailAt(int number) {
  std::cerr << "Error at main:" + std::to_string(number) + "\n";
  return EXIT_FAILURE;
}

}  // namespace

int main(int argc, char** argv) {
  lumo::OccupyStandardStreams();
  lumo::ProfileViewer viewer({std::cout, std::cerr});
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
