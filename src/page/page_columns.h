// The columns of the tables on a page.

#ifndef LUMO_PAGE_PAGE_COLUMNS_H_
#define LUMO_PAGE_PAGE_COLUMNS_H_

#include <optional>
#include <string>
#include <vector>

#include "page/page_model.h"

namespace lumo {

struct Column {
  // Names the column in the address of the page. Empty for a column that cannot
  // be sorted.
  const char* key;
  // As HTML.
  const char* heading;
  const char* css_class;
};

struct Cell {
  Column column;
  // The content as HTML.
  std::string html;
  // The number that the column is sorted by. Nothing if it is missing, or if
  // the column is sorted by its text.
  std::optional<double> value;
};

// Returns the cells of a row. All rows of a table have the same columns.
std::vector<Cell> CellsOf(const Page& page, const Table& table, const Row& row);

// Returns the name of a row as HTML, without its node ids, and with its
// occurrence if several series have the name.
std::string NameHtml(const Row& row);

// Returns the verdict of a pair as text, with a sign.
std::string VerdictHtml(const SeriesPair& pair);

}  // namespace lumo

#endif  // LUMO_PAGE_PAGE_COLUMNS_H_
