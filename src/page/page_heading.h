// The beginning of a page: what its logs are.

#ifndef LUMO_PAGE_PAGE_HEADING_H_
#define LUMO_PAGE_PAGE_HEADING_H_

#include <ostream>
#include <string>

#include "input/input_log.h"
#include "page/page_model.h"

namespace lumo {

// Returns the facts of a log with an execute run.
LogFacts ReadFacts(const InputLog& log);

// Returns the page's title, as HTML: the paths of the sides.
std::string MakeTitle(const Page& page);

// Writes the paths, a line about the logs, and a list of all that is known
// about them, as HTML.
void WriteHeading(std::ostream& stream, const Page& page);

}  // namespace lumo

#endif  // LUMO_PAGE_PAGE_HEADING_H_
