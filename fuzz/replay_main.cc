// Runs the fuzz target once for each file on the command line.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "log/log.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size);

int main(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    const lumo::LogFile input = lumo::ReadLogFile(argv[i]);
    // If the target crashes, the last file printed is the cause.
    std::fprintf(stderr, "%s %s\n", argv[i], input.open_error.c_str());
    if (!input.open_error.empty()) {
      return EXIT_FAILURE;
    }
    LLVMFuzzerTestOneInput(input.bytes.data(), input.bytes.size());
  }
  std::printf("%d inputs replayed\n", argc - 1);
  return argc > 1 ? EXIT_SUCCESS : EXIT_FAILURE;
}
