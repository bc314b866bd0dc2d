// Runs the fuzz target once on each of the files named on the command line.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "log/log_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size);

int main(int argc, char** argv) {
  std::vector<std::uint8_t> input;
  std::string error;
  for (int i = 1; i < argc; ++i) {
    if (!lumo::ReadLogFile(argv[i], &input, &error)) {
      std::fprintf(stderr, "%s: %s\n", argv[i], error.c_str());
      return EXIT_FAILURE;
    }
    std::fprintf(stderr, "%s\n", argv[i]);  // the last one is to blame
    LLVMFuzzerTestOneInput(input.data(), input.size());
  }
  std::printf("%d inputs replayed\n", argc - 1);
  return argc > 1 ? EXIT_SUCCESS : EXIT_FAILURE;
}
