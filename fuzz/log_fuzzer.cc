// Fuzz target: for an arbitrary log, runs the viewer, exports the table, writes
// the page, and compares the log with itself and with a copy in which one byte
// differs. The last two bytes are also the options of the viewer, -128 to 127
// each, and the two bytes before them choose the byte that differs.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include <flatbuffers/flatbuffers.h>

#include "check_page.h"
#include "compare/comparison.h"
#include "compare/comparison_text.h"
#include "compare/side.h"
#include "export/event_table.h"
#include "log/log.h"
#include "model/log_series.h"
#include "model/message_groups.h"
#include "profiling_log_generated.h"
#include "run_viewer.h"

namespace lumo {
namespace {

// Returns the side of a log in memory.
Side MakeSide(const ProfilingLog& log, std::int32_t num_warmup, Names* names) {
  Side side;
  side.path = "log";
  side.logs.emplace_back("log");
  side.num_warmup = num_warmup;
  AddLog(0, CollectLogSeries(GroupMessages(log), true), names, &side);
  return side;
}

void Compare(const ProfilingLog& before, const ProfilingLog& after,
             std::int32_t num_warmup) {
  Names names;
  const Side sides[] = {MakeSide(before, num_warmup, &names),
                        MakeSide(after, num_warmup, &names)};
  for (const bool ignore_node_ids : {false, true}) {
    std::string error;
    const auto comparison =
        CompareSides(sides[0], sides[1], 99, ignore_node_ids, &error);
    if (!comparison) {
      std::abort();  // small logs have few operations
    }
    for (const Block& block : comparison->blocks) {
      for (const SeriesPair& pair : block.pairs) {
        const double p = pair.p_adjusted.value_or(1);
        const bool is_probability = p >= 0 && p <= 1;
        if (!is_probability) {
          std::abort();
        }
      }
    }
    std::ostringstream text;
    WriteComparison(text, *comparison, true);
    WriteComparisonRows(text, *comparison);
  }
}

}  // namespace
}  // namespace lumo

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  // A few bytes can refer to the same tables a million times. Valid logs with
  // many tables are skipped, because they slow down the search.
  constexpr flatbuffers::uoffset_t kMaxDepth = 64;
  constexpr flatbuffers::uoffset_t kMaxTables = 2000;
  flatbuffers::Verifier small(data, size, kMaxDepth, kMaxTables);
  flatbuffers::Verifier any(data, size);
  const bool is_valid = lumo::VerifyProfilingLogBuffer(any);
  if (is_valid && !lumo::VerifyProfilingLogBuffer(small)) {
    return 0;
  }
  const int topK = size < 2 ? 5 : static_cast<std::int8_t>(data[size - 2]);
  const int num_warmup =
      size < 2 ? 1 : static_cast<std::int8_t>(data[size - 1]);
  const std::vector<std::uint8_t> log(data, data + size);
  lumo::RunViewer(log, topK, num_warmup);
  if (is_valid) {
    std::ostringstream table;
    const lumo::ProfilingLog& root = *lumo::GetProfilingLog(log.data());
    lumo::WriteEventTable(table, root);
    lumo::Compare(root, root, num_warmup & 127);
    std::vector<std::uint8_t> other = log;
    other[(data[size - 4] * 256U + data[size - 3]) % size] ^= 1U;
    std::string error;
    const lumo::ProfilingLog* other_root = lumo::VerifyLog(other, &error);
    if (other_root != nullptr) {
      lumo::Compare(root, *other_root, 1);
    }
#ifdef LUMO_HAS_PAGE
    lumo::CheckPage(log, num_warmup & 127);
#endif
  }
  return 0;
}
