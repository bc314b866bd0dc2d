// Fuzz target: a whole run on an arbitrary log. The last two bytes are also the
// options, -128 to 127 each.

#include <cstddef>
#include <cstdint>
#include <vector>

#include <flatbuffers/flatbuffers.h>

#include "profiling_log_generated.h"
#include "run_viewer.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  // A few bytes can refer to the same tables a million times. A good log of
  // many tables is skipped: it is handled like any other, but slows the search
  // down.
  constexpr flatbuffers::uoffset_t kMaxDepth = 64;
  constexpr flatbuffers::uoffset_t kMaxTables = 2000;
  flatbuffers::Verifier small(data, size, kMaxDepth, kMaxTables);
  flatbuffers::Verifier any(data, size);
  if (lumo::VerifyProfilingLogBuffer(any) &&
      !lumo::VerifyProfilingLogBuffer(small)) {
    return 0;
  }
  const int topK = size < 2 ? 5 : static_cast<std::int8_t>(data[size - 2]);
  const int num_warmup =
      size < 2 ? 1 : static_cast<std::int8_t>(data[size - 1]);
  lumo::RunViewer(std::vector<std::uint8_t>(data, data + size), topK,
                  num_warmup);
  return 0;
}
