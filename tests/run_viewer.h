// Runs the viewer in this process, on bytes instead of a file.

#ifndef LUMO_TESTS_RUN_VIEWER_H_
#define LUMO_TESTS_RUN_VIEWER_H_

#include <cstdint>
#include <string>
#include <vector>

namespace lumo {

// Runs every step after the command line and returns their standard output: the
// report or an error line, possibly after a warning. `log` should have no spare
// capacity, so that a sanitizer detects a read past its end.
std::string RunViewer(std::vector<std::uint8_t> log, std::int32_t topK,
                      std::int32_t num_warmup);

}  // namespace lumo

#endif  // LUMO_TESTS_RUN_VIEWER_H_
