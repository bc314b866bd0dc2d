// The tables of a page.

#ifndef LUMO_PAGE_PAGE_TABLES_H_
#define LUMO_PAGE_PAGE_TABLES_H_

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "page/page_model.h"

namespace lumo {

// A cell of a table and its column.
struct Cell {
  // Names the column in the address of the page. Empty for a column that cannot
  // be sorted.
  const char* key;
  // As HTML.
  const char* heading;
  // A cell of the class "name" is the heading of its row.
  const char* css_class;
  // The content as HTML.
  std::string html;
  // The number that a cell with content is sorted by. Nothing for a column that
  // is sorted by its text.
  std::optional<double> value = {};
};

// Writes the heads of the columns of these cells, and the beginning of the
// table's body.
void WriteHeads(std::ostream& stream, const std::vector<Cell>& cells);

// Writes the cells of a row, and its end. The attribute data-value has the
// value.
void WriteCells(std::ostream& stream, const std::vector<Cell>& cells);

// Writes a table of series as HTML, unless it is empty. A row has the id
// "row-N" and the attribute data-series with its RowJson(). Stops after a
// failed write.
void WriteTable(std::ostream& stream, const Page& page, const Table& table,
                const char* caption);

// Returns the name of a row as HTML, without its node ids, and with its
// occurrence if several series have the name.
std::string NameHtml(const Row& row);

// Returns the verdict of a pair as text, with a sign.
std::string VerdictHtml(const SeriesPair& pair);

}  // namespace lumo

#endif  // LUMO_PAGE_PAGE_TABLES_H_
