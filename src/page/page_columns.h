// The columns of the tables on a page.

#ifndef LUMO_PAGE_PAGE_COLUMNS_H_
#define LUMO_PAGE_PAGE_COLUMNS_H_

#include <string>
#include <vector>

#include "page/page_tables.h"

namespace lumo {

// What the cells of a row are made from.
struct Row {
  const Page& page;
  const PageGraph& graph;
  const SeriesPair& pair;
  // The largest mean of the table in the unit of the pair, which has the
  // longest bar.
  float largest_mean;
};

struct Column {
  // As HTML; empty if the column needs none.
  const char* heading;
  // The path into the data of a series, see WritePageData(), that the script
  // sorts by; empty if the column cannot be sorted.
  const char* key;
  const char* css_class;
  // Whether its cells are the headings of their rows.
  bool is_heading;
  // Returns the content of a cell as HTML.
  std::string (*cell)(const Row&);
};

// Returns the columns of a table of this level, on a page about one log or two,
// with a column for the unit or without.
std::vector<Column> ColumnsOf(const Page& page, Level level, bool has_unit);

}  // namespace lumo

#endif  // LUMO_PAGE_PAGE_COLUMNS_H_
