// Fields of comma-separated rows.

#ifndef LUMO_PROGRAM_CSV_FIELD_H_
#define LUMO_PROGRAM_CSV_FIELD_H_

#include <string>
#include <string_view>

namespace lumo {

// Appends `field` to `row`. A field that contains a comma, a quote, a carriage
// return or a line feed is quoted, and each quote in it is doubled.
void AppendCsvField(std::string_view field, std::string* row);

}  // namespace lumo

#endif  // LUMO_PROGRAM_CSV_FIELD_H_
