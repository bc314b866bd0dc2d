// The sections of the graphs of a page.

#ifndef LUMO_PAGE_PAGE_GRAPHS_H_
#define LUMO_PAGE_PAGE_GRAPHS_H_

#include <ostream>

#include "page/page_model.h"

namespace lumo {

// Writes, as HTML, a section with the id "graph-N" for each graph, and the
// notes. Stops after a failed write. A section has tables, see WriteTable(),
// and strips for the time of a run, in SVG: the sub-events of the whole run in
// its unit and what they leave over, and the operations in the order of
// execution, for each of their units. The strips of all sides have the same
// scale. A piece is a link to the row of its series.
void WriteGraphs(std::ostream& stream, const Page& page);

}  // namespace lumo

#endif  // LUMO_PAGE_PAGE_GRAPHS_H_
