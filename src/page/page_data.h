// The data of a page, for its script.

#ifndef LUMO_PAGE_PAGE_DATA_H_
#define LUMO_PAGE_PAGE_DATA_H_

#include <ostream>

#include "page/page_tables.h"

namespace lumo {

// Writes the page's data as JSON that may stand inside an element of HTML:
//
//   {"logs": [path, ...], "num_warmup": W, "series": [series, ...]}
//
// A series is an object with the fields graph, kind, level, name, unit and
// node_id, "is_damaged" if the name is not valid UTF-8, "is_run" if it is the
// time of a whole execute run, and, as far as they exist, change_percent,
// p_adjusted, verdict, before and after. Each of the last two has "n", "mean",
// "stdev", "share", "excluded" (how many first values the figures exclude),
// "values" (all of them) and, for an operation, "run" and "details": the lines
// below it in that run, each with its depth from 0. The series have the order
// of the rows of WriteTables(). Stops after a failed write.
void WritePageData(std::ostream& stream, const Page& page);

}  // namespace lumo

#endif  // LUMO_PAGE_PAGE_DATA_H_
