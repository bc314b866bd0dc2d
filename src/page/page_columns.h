// The columns of the tables on a page.

#ifndef LUMO_PAGE_PAGE_COLUMNS_H_
#define LUMO_PAGE_PAGE_COLUMNS_H_

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "page/page_model.h"

namespace lumo {

struct Column;

// The data for a cell of a row.
struct Cell {
  const Page& page;
  const Table& table;
  const Row& row;
  const Column& column;
};

struct Column {
  // Names the column in the address of the page.
  const char* key;
  // As HTML; may be empty, for a column that cannot be sorted.
  const char* heading;
  const char* css_class;
  // Returns the content of a cell as HTML.
  std::string (*html)(const Cell&);
  // Returns the value that the column is sorted by. Nothing if it is missing.
  // Null for a column that is sorted by its text.
  std::optional<double> (*value)(const Cell&);
  // The side that the column is about, if it is about one.
  std::size_t side;
};

// Returns the columns of a table.
std::vector<Column> ColumnsOf(const Page& page, const Table& table);

// Returns the node ids of an operation on the sides, such as "14" or "11→5",
// as HTML; empty if its name has none.
std::string NodeHtml(const Row& row);

// Returns the name of a row as HTML, without its node ids, and with its
// occurrence if several series have the name.
std::string NameHtml(const Row& row);

// Returns the verdict of a pair as HTML, with a sign.
std::string VerdictHtml(const SeriesPair& pair);

}  // namespace lumo

#endif  // LUMO_PAGE_PAGE_COLUMNS_H_
