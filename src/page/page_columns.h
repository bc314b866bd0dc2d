// The columns of the tables on a page.

#ifndef LUMO_PAGE_PAGE_COLUMNS_H_
#define LUMO_PAGE_PAGE_COLUMNS_H_

#include <string>
#include <vector>

#include "page/page_tables.h"

namespace lumo {

// The data for the cells of a row.
struct Row {
  const Page& page;
  const ComparedRuns& runs;
  const SeriesPair& pair;
  // The largest mean of the table in the unit of the pair; it has the longest
  // bar.
  float largest_mean;
};

struct Column {
  // As HTML; may be empty.
  const char* heading;
  // The path of the value in the data of a series, see WritePageData(), that
  // the script sorts by; empty if the column cannot be sorted.
  const char* key;
  const char* css_class;
  // Whether its cells are row headings.
  bool is_heading;
  // Returns the content of a cell as HTML.
  std::string (*cell)(const Row&);
};

// Returns the columns of a table of this level, for a page about one log or
// two, with or without a column for the unit.
std::vector<Column> ColumnsOf(const Page& page, Level level, bool has_unit);

}  // namespace lumo

#endif  // LUMO_PAGE_PAGE_COLUMNS_H_
