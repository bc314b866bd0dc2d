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
#include "compare/comparison_rows.h"
#include "compare/comparison_text.h"
#include "export/event_table.h"
#include "log/log.h"
#include "model/message_groups.h"
#include "profiling_log_generated.h"
#include "run_viewer.h"

namespace lumo {
namespace {

void Compare(const ProfilingLog& before, const ProfilingLog& after,
             std::int32_t num_warmup) {
  const LogSeries before_series = CollectLogSeries(GroupMessages(before));
  const LogSeries after_series = CollectLogSeries(GroupMessages(after));
  const auto all_runs =
      CompareSeries(before_series, after_series, num_warmup, 99);
  for (const ComparedRuns& runs : all_runs) {
    for (const SeriesPair& pair : runs.pairs) {
      const double p = pair.p_adjusted.value_or(1);
      const bool is_probability = p >= 0 && p <= 1;
      if (!is_probability) {
        std::abort();
      }
    }
  }
  std::ostringstream text;
  WriteComparison(text, all_runs, {"before", "after", num_warmup, 99}, true);
  WriteComparisonRows(text, all_runs);
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
