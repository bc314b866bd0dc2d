// The two lines of a failure that are the same wherever it happens.

#include "app/console.h"

#include <cstdio>
#include <iostream>

namespace lumo {

bool ReportError(std::string_view text) {
  std::cout << "[Profile Viewer] Error: " << text << std::endl;
  return false;
}

bool ReportLocation(const char* step, int line) {
  std::fprintf(stderr, "Error in lumo-profile-viewer function at %s:%d\n", step,
               line);
  return false;
}

}  // namespace lumo
