// Fuzz target: a whole run of the viewer on an arbitrary log, the table of its
// events, and its page. The last two bytes are also the viewer's options, -128
// to 127 each.

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <vector>

#include <flatbuffers/flatbuffers.h>

#include "check_page.h"
#include "export/event_table.h"
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
  const bool is_good = lumo::VerifyProfilingLogBuffer(any);
  if (is_good && !lumo::VerifyProfilingLogBuffer(small)) {
    return 0;
  }
  const int topK = size < 2 ? 5 : static_cast<std::int8_t>(data[size - 2]);
  const int num_warmup =
      size < 2 ? 1 : static_cast<std::int8_t>(data[size - 1]);
  const std::vector<std::uint8_t> log(data, data + size);
  lumo::RunViewer(log, topK, num_warmup);
  if (is_good) {
    std::ostringstream table;
    lumo::WriteEventTable(table, *lumo::GetProfilingLog(log.data()));
#ifdef LUMO_HAS_PAGE
    lumo::CheckPage(log, num_warmup & 127);
#endif
  }
  return 0;
}
