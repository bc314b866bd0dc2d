// Fields of comma-separated rows.

#ifndef LUMO_PROGRAM_CSV_FIELD_H_
#define LUMO_PROGRAM_CSV_FIELD_H_

#include <string>
#include <string_view>

namespace lumo {

// Appends `field` to `row`, in quotes if it contains a comma, a quote, a
// carriage return or a line feed; each quote in it is then doubled. Other bytes
// stay as they are.
void AppendCsvField(std::string_view field, std::string* row);

}  // namespace lumo

#endif  // LUMO_PROGRAM_CSV_FIELD_H_
