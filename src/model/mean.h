// The arithmetic mean in single precision.

#ifndef LUMO_MODEL_MEAN_H_
#define LUMO_MODEL_MEAN_H_

#include <span>

namespace lumo {

// Returns the sum of `values`, added one by one from 0 in their order, divided
// by their number; 0 for no values. Every step rounds to a float: a wider or
// reordered sum would change digits of the report.
float Mean(std::span<const float> values);

}  // namespace lumo

#endif  // LUMO_MODEL_MEAN_H_
