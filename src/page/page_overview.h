// The top of a page: what its logs are, and an overview of the graphs.

#ifndef LUMO_PAGE_PAGE_OVERVIEW_H_
#define LUMO_PAGE_PAGE_OVERVIEW_H_

#include <ostream>
#include <string>

#include "page/page_model.h"

namespace lumo {

// Returns the page's title, as HTML: the paths of the sides.
std::string MakeTitle(const Page& page);

// Writes the paths, a line about the logs, and a list of all that is known
// about them, as HTML.
void WriteHeading(std::ostream& stream, const Page& page);

// Writes a table with a row for each graph, as HTML: its whole run and its
// operations with the largest differences, or on a page of one side the largest
// ones. They are links to the graphs and operations. Writes nothing if there
// are no graphs.
void WriteOverview(std::ostream& stream, const Page& page);

}  // namespace lumo

#endif  // LUMO_PAGE_PAGE_OVERVIEW_H_
