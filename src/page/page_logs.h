// What a page shows of its logs besides the figures of their series.

#ifndef LUMO_PAGE_PAGE_LOGS_H_
#define LUMO_PAGE_PAGE_LOGS_H_

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "input/input_log.h"
#include "model/log_series.h"
#include "page/display_text.h"

namespace lumo {

// The values of a series and their runs, see Series.
struct RunValues {
  std::vector<std::uint64_t> values;
  std::vector<std::int32_t> runs;
};

struct LogFacts {
  DisplayText date;
  DisplayText profiler_api;
  DisplayText orx_api;
  DisplayText delegate_api;
  // Of all graphs, or of each graph if they differ.
  std::string backends;
};

// The logs of one side.
struct PageLogs {
  // Their size in bytes.
  std::uint64_t size = 0;
  std::vector<LogFacts> facts;
  // The values of the series of the first log, in the order of
  // SideRuns::series; without those of parts.
  std::map<std::pair<RunKind, std::int32_t>, std::vector<RunValues>> values;
};

// Adds a log with its series.
void AddPageLog(const InputLog& log, std::vector<RunSeries> all_runs,
                PageLogs* logs);

}  // namespace lumo

#endif  // LUMO_PAGE_PAGE_LOGS_H_
