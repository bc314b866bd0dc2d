// The data of a page for its script: of the whole page, and of a row for the
// chart and the panel.

#ifndef LUMO_PAGE_PAGE_DATA_H_
#define LUMO_PAGE_PAGE_DATA_H_

#include <ostream>
#include <string>
#include <string_view>

#include "page/page_model.h"

namespace lumo {

// Returns the data of a row, see EmbedJson(): an object with
//
// - "unit".
// - "sides": for each side null, if it does not have the series, or an object
//   with "n", the number of values of the sample, "stdev" and "figures", the
//   texts of "min", "median", "p90" and "max", if they exist. On a page about
//   runs it also has "values"; "runs", the runs of the values, unless these are
//   0, 1 and so on; and "excluded", the number of first values that the figures
//   exclude. On a page about logs it has "logs": the index, mean and deviation
//   of each log with a value, the deviation null for a single value.
// - "p" and "interval", the texts of the test, if they exist.
// - "parts": [depth from 0, name, unit, texts...] for each part in order. For
//   each side, the texts are null, or the mean and its share of the series.
std::string RowJson(const Page& page, const Row& row);

// Writes the page's data as JSON that can be placed inside an HTML element: an
// object with "sides", the number of sides, and, on a page about logs, "logs":
// for each side [path, date] of each log.
void WritePageData(std::ostream& stream, const Page& page);

// Returns the name of a part without the name of the event above it, to which
// writers usually append it.
std::string_view ShortName(std::string_view part, std::string_view above);

}  // namespace lumo

#endif  // LUMO_PAGE_PAGE_DATA_H_
