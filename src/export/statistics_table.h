// The statistics of the series of logs as a table for other programs.

#ifndef LUMO_EXPORT_STATISTICS_TABLE_H_
#define LUMO_EXPORT_STATISTICS_TABLE_H_

#include <cstdint>
#include <ostream>

#include "input/input_log.h"

namespace lumo {

struct StatisticsOptions {
  // The number of values that are excluded, see CountedValues().
  std::int32_t num_warmup = 1;
  // Whether there are rows for parts, too, see Level.
  bool with_parts = false;
};

// Writes the row with the names of the columns.
void WriteStatisticsColumns(std::ostream& stream);

// Writes a row for each series of the log, in the order of CollectLogSeries();
// rows end with "\n". A series without values has empty figures, a single value
// has no deviation. Numbers have the fewest digits that read back to the same
// double; the minimum and the maximum are exact.
//
// A failed write sets the state of `stream` and ends the rows.
void WriteStatistics(std::ostream& stream, const InputLog& log,
                     const StatisticsOptions& options);

}  // namespace lumo

#endif  // LUMO_EXPORT_STATISTICS_TABLE_H_
