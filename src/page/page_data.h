// The data of a page, for its script.

#ifndef LUMO_PAGE_PAGE_DATA_H_
#define LUMO_PAGE_PAGE_DATA_H_

#include <ostream>

#include "page/page_tables.h"

namespace lumo {

// Writes the page's data as JSON that may stand inside an element of HTML:
//
//   {"sides": ["before", "after"], "series": [series, ...]}
//
// A page about one log has the side "before" alone. A series is an object with
// the fields graph, kind, level, name, unit, "is_run" if it is the time of a
// whole execute run, and, as far as they exist, node_id, change_percent,
// p_adjusted (a text), verdict and the sides. Each side has
//
// - "runs", how many runs the graph has, and "values", those of the series;
// - "excluded", how many first values the figures exclude, and "n", how many
//   they are computed from;
// - "mean", "stdev" and "share", as far as they exist; null is infinity;
// - for an operation, "details": [depth from 0, name, value] for each event
//   below it in the run "details_run", of "details_count" the first 1,000.
//
// The series have the order of the rows of WriteTables(). Stops after a failed
// write.
void WritePageData(std::ostream& stream, const Page& page);

}  // namespace lumo

#endif  // LUMO_PAGE_PAGE_DATA_H_
