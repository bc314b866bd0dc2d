// The summary of repeated runs that closes a section of the listing.

#ifndef LUMO_REPORT_SUMMARY_H_
#define LUMO_REPORT_SUMMARY_H_

#include <cstdint>
#include <ostream>
#include <vector>

#include "model/run_statistics.h"

namespace lumo {

// Writes the block of warm-up means, means and deviations per graph, and two
// empty lines behind it. Where the first entry of the list has a figure below 0
// or not a number, or there is no entry, only the two empty lines. The figures
// take the notation that the stream is in.
void WriteSummary(std::ostream& stream,
                  const std::vector<StatisticsMap>& statistics,
                  std::int32_t num_warmup);

}  // namespace lumo

#endif  // LUMO_REPORT_SUMMARY_H_
