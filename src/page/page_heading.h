// The beginning of a page: the logs, and a row for each graph.

#ifndef LUMO_PAGE_PAGE_HEADING_H_
#define LUMO_PAGE_PAGE_HEADING_H_

#include <ostream>
#include <string>

#include "page/page_model.h"

namespace lumo {

// Returns the page's title, as HTML: the paths of the sides.
std::string MakeTitle(const Page& page);

// Writes the paths, a line about the logs, and a list of all that is known
// about them, as HTML.
void WriteLogs(std::ostream& stream, const Page& page);

// Writes a table with a row for each graph, as HTML: its whole run and its
// operations with the largest differences, or on a page of one side the largest
// ones. The rows are links to the sections of the graphs.
void WriteOverview(std::ostream& stream, const Page& page);

}  // namespace lumo

#endif  // LUMO_PAGE_PAGE_HEADING_H_
