// The sections of a page below its heading, and its data for the script.

#ifndef LUMO_PAGE_PAGE_SECTIONS_H_
#define LUMO_PAGE_PAGE_SECTIONS_H_

#include <ostream>

#include "page/page_model.h"

namespace lumo {

// Writes a table with a row for each graph, as HTML: its whole run and its
// operations with the largest differences, or on a page of one side the largest
// ones. They are links to the graphs and operations. Writes nothing if there
// are no graphs.
void WriteOverview(std::ostream& stream, const Page& page);

// Writes the strips and tables of all graphs, and the notes, as HTML. The
// section of a graph has the id "graph-N". Stops after a failed write.
void WriteSections(std::ostream& stream, const Page& page);

// Writes the page's data as JSON that can be placed inside an HTML element: an
// object with "sides", the number of sides, and, on a page about logs, "logs":
// for each side [path, date] of each log.
void WritePageData(std::ostream& stream, const Page& page);

}  // namespace lumo

#endif  // LUMO_PAGE_PAGE_SECTIONS_H_
