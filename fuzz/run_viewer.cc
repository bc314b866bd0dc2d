// Runs the viewer with standard output turned into a string.

#include "run_viewer.h"

#include <iostream>
#include <sstream>
#include <streambuf>
#include <utility>

#include "app/profile_viewer.h"

namespace lumo {

std::string RunViewer(std::vector<std::uint8_t> log, std::int32_t topK,
                      std::int32_t num_warmup) {
  std::ostringstream written;
  std::streambuf* const standard_output = std::cout.rdbuf(written.rdbuf());
  ProfileViewer viewer;
  viewer.topK = topK;
  viewer.num_warmup = num_warmup;
  if (viewer.AcceptLog(std::move(log)) && viewer.ReadDataFromLog()) {
    viewer.ExportData();
  }
  std::cout.rdbuf(standard_output);
  return std::move(written).str();
}

}  // namespace lumo
