// The time of a run, to scale.

#ifndef LUMO_PAGE_PAGE_STRIPS_H_
#define LUMO_PAGE_PAGE_STRIPS_H_

#include <ostream>

#include "page/page_model.h"

namespace lumo {

// Writes, as HTML with SVG, strips of a graph for each side: the sub-events of
// the whole run in its unit and what they leave over, and the operations in the
// order of execution, for each of their units. The strips of all sides have the
// same scale. A piece is a link to the row of its series.
void WriteStrips(std::ostream& stream, const Page& page, const Graph& graph);

}  // namespace lumo

#endif  // LUMO_PAGE_PAGE_STRIPS_H_
