// The data of a page for its script.

#ifndef LUMO_PAGE_PAGE_DATA_H_
#define LUMO_PAGE_PAGE_DATA_H_

#include <ostream>

#include "page/page_tables.h"

namespace lumo {

// Writes the page's data as JSON that can be placed inside an HTML element:
//
//   {"sides": ["before", "after"], "series": [series, ...]}
//
// A page about one log has only the side "before". A series is an object with
// the fields graph, kind, level, name, unit, "is_run" if it is the time of a
// whole execute run, and, if they exist, node_id, change_percent, p_adjusted (a
// string), verdict and the sides. Each side has
//
// - "runs", the number of runs of the graph, and "values", those of the series;
// - "excluded", the number of values that the figures exclude, and "n", the
//   number of values that they are computed from;
// - "mean", "stdev" and "share", if they exist; null is infinity;
// - for an operation, "details": [depth from 0, name, value] for the first
//   1,000 of its "details_count" sub-events in the run "details_run".
//
// The series are in the order of the rows of WriteTables(). Stops after a
// failed write.
void WritePageData(std::ostream& stream, const Page& page);

}  // namespace lumo

#endif  // LUMO_PAGE_PAGE_DATA_H_
