// The order and the occurrences of the series of a log.

#ifndef LUMO_MODEL_SERIES_ORDER_H_
#define LUMO_MODEL_SERIES_ORDER_H_

#include <compare>
#include <string_view>
#include <vector>

#include "model/log_series.h"

namespace lumo {

// A name, ordered by its bytes. If two events share one stored name, it is not
// read: in a small log, a million events can share a name of a megabyte.
struct Name {
  std::string_view text;

  friend std::strong_ordering operator<=>(const Name& a, const Name& b) {
    const bool is_shared =
        a.text.data() == b.text.data() && a.text.size() == b.text.size();
    return is_shared ? std::strong_ordering::equal : a.text <=> b.text;
  }
  friend bool operator==(const Name& a, const Name& b) {
    return a.text.size() == b.text.size() &&
           (a <=> b) == std::strong_ordering::equal;
  }
};

// Returns `series`, which are in the order of their first values, in the order
// of RunSeries, and sets their parents to the new indices and their
// occurrences.
std::vector<Series> OrderSeries(std::vector<Series> series);

}  // namespace lumo

#endif  // LUMO_MODEL_SERIES_ORDER_H_
