// The two sections about operations at the end of a detailed log's report.

#ifndef LUMO_REPORT_OP_SECTIONS_H_
#define LUMO_REPORT_OP_SECTIONS_H_

#include <cstdint>
#include <ostream>
#include <vector>

#include "model/op_averages.h"

namespace lumo {

// Writes every operation of every graph in key order, then the rows of
// `top_ops` as they are, below a heading with `topK`. Element g of both belongs
// to graph g. Always returns true: the return value is required, but nothing
// reads it.
bool WriteOpSections(std::ostream& stream,
                     const std::vector<OpAverageMap>& op_averages,
                     const std::vector<std::vector<TopOpEntry>>& top_ops,
                     std::int32_t topK);

}  // namespace lumo

#endif  // LUMO_REPORT_OP_SECTIONS_H_
