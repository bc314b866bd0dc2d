// The heading and the tables of a page, which need no scripts.

#ifndef LUMO_PAGE_PAGE_HTML_H_
#define LUMO_PAGE_PAGE_HTML_H_

#include <ostream>
#include <string>

#include "page/page_tables.h"

namespace lumo {

// Returns the page's title, as HTML: the paths of the logs.
std::string MakeTitle(const Page& page);

// Writes the heading as HTML: the logs and the settings of the comparison.
void WriteHeading(std::ostream& stream, const Page& page);

// Writes the tables of all graphs as HTML. The attribute data-series of a row
// is its index, from 0, in the series of WritePageData(). Stops after a failed
// write.
void WriteTables(std::ostream& stream, const Page& page);

}  // namespace lumo

#endif  // LUMO_PAGE_PAGE_HTML_H_
