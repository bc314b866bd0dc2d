// Runs the viewer with string streams as its output.

#include "run_viewer.h"

#include <sstream>
#include <utility>

#include "viewer/profile_viewer.h"

namespace lumo {

std::string RunViewer(std::vector<std::uint8_t> log, std::int32_t topK,
                      std::int32_t num_warmup) {
  std::ostringstream out;
  std::ostringstream err;
  ProfileViewer viewer({out, err});
  viewer.topK = topK;
  viewer.num_warmup = num_warmup;
  if (viewer.TakeLog(std::move(log)) && viewer.ReadDataFromLog()) {
    viewer.ExportData();
  }
  return std::move(out).str();
}

}  // namespace lumo
