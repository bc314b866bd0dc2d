// Writes the lines that report a failure.

#include "app/console.h"

#include <cstdio>
#include <iostream>

namespace lumo {

bool ReportError(std::string_view text) {
  std::cout << "[Profile Viewer] Error: " << text << std::endl;
  return false;
}

bool ReportLocation(const char* step, int place) {
  std::fprintf(stderr, "Error in lumo-profile-viewer function at %s:%d\n", step,
               place);
  return false;
}

}  // namespace lumo
