#include "viewer/console.h"

#include <string>

namespace lumo {

bool ReportError(const Console& console, std::string_view text) {
  console.out << "[Profile Viewer] Error: " << text << std::endl;
  return false;
}

bool ReportLocation(const Console& console, std::string_view step, int number) {
  // Write one string, because standard error is not buffered.
  const std::string line = "Error in lumo-profile-viewer function at " +
                           std::string(step) + ":" + std::to_string(number) +
                           "\n";
  console.err << line;
  return false;
}

}  // namespace lumo
