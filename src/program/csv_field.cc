#include "program/csv_field.h"

#include <algorithm>

namespace lumo {
namespace {

bool NeedsQuotes(char c) {
  return c == ',' || c == '"' || c == '\r' || c == '\n';
}

}  // namespace

void AppendCsvField(std::string_view field, std::string* row) {
  if (std::none_of(field.begin(), field.end(), NeedsQuotes)) {
    *row += field;
    return;
  }
  *row += '"';
  for (const char c : field) {
    *row += c;
    if (c == '"') {
      *row += '"';
    }
  }
  *row += '"';
}

}  // namespace lumo
