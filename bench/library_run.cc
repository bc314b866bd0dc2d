// library_run: the part of a run that FlatBuffers does: reads a log, verifies
// it and renders it as text. Prints the length of the text.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <flatbuffers/minireflect.h>

#include "log/log.h"
#include "profiling_log_generated.h"

int main(int argc, char** argv) {
  const std::vector<std::uint8_t> log =
      lumo::ReadLogFile(argc == 2 ? argv[1] : "").bytes;
  std::string error;
  if (lumo::VerifyLog(log, &error) == nullptr) {
    std::fprintf(stderr, "usage: library_run LOG\n%s\n", error.c_str());
    return EXIT_FAILURE;
  }
  const std::string text = flatbuffers::FlatBufferToString(
      log.data(), lumo::ProfilingLogTypeTable());
  std::printf("%zu\n", text.size());
  return EXIT_SUCCESS;
}
