// The summary of repeated runs at the end of a section of the report.

#ifndef LUMO_REPORT_SUMMARY_H_
#define LUMO_REPORT_SUMMARY_H_

#include <cstdint>
#include <ostream>
#include <vector>

#include "model/run_statistics.h"

namespace lumo {

// Writes the warm-up means, the means and the deviations of each graph, and
// then two empty lines. Writes only the empty lines if there is no entry or the
// first one is not computed, see IsComputed(). The figures are printed in the
// current notation of the stream; `num_warmup` is only printed.
void WriteSummary(std::ostream& stream,
                  const std::vector<StatisticsMap>& statistics,
                  std::int32_t num_warmup);

}  // namespace lumo

#endif  // LUMO_REPORT_SUMMARY_H_
