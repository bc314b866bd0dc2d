// The part of a page that can be read without scripts.

#ifndef LUMO_PAGE_PAGE_HTML_H_
#define LUMO_PAGE_PAGE_HTML_H_

#include <ostream>
#include <string>

#include "page/page_tables.h"

namespace lumo {

// Returns the page's title, as HTML: the paths of the logs.
std::string MakeTitle(const Page& page);

// Writes the heading as HTML: the logs and how they were compared.
void WriteHeading(std::ostream& stream, const Page& page);

// Writes the tables of all graphs as HTML. Rows have the attribute data-series
// with their number on the page, from 0, which WritePageData() counts in the
// same order. Stops after a failed write.
void WriteTables(std::ostream& stream, const Page& page);

}  // namespace lumo

#endif  // LUMO_PAGE_PAGE_HTML_H_
