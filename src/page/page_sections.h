// The sections of the graphs on a page, and the data of the page for its
// script.

#ifndef LUMO_PAGE_PAGE_SECTIONS_H_
#define LUMO_PAGE_PAGE_SECTIONS_H_

#include <ostream>

#include "page/page_model.h"

namespace lumo {

// Writes the strips and tables of all graphs, and the notes, as HTML. The
// section of a graph has the id "graph-N"; a row has the id "row-N" and the
// attribute data-series with its RowJson(). A cell has the attribute data-value
// with the number that it is sorted by, if this is not its text. Stops after a
// failed write.
void WriteSections(std::ostream& stream, const Page& page);

// Writes the page's data as JSON that can be placed inside an HTML element: an
// object with "sides", the number of sides; "num_warmup"; and, on a page about
// logs, "logs": for each side [path, date] of each log.
void WritePageData(std::ostream& stream, const Page& page);

}  // namespace lumo

#endif  // LUMO_PAGE_PAGE_SECTIONS_H_
