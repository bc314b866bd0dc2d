// The mean, summed in the order of the values.

#include "model/mean.h"

#include <cfloat>

namespace lumo {

// The compiler would drop infinities and the sign of zero, and add in an order
// of its own. Of the single options that -ffast-math consists of, not every
// compiler tells.
#if defined(__FAST_MATH__) || defined(__ASSOCIATIVE_MATH__) ||      \
    defined(__NO_SIGNED_ZEROS__) || defined(__RECIPROCAL_MATH__) || \
    (defined(__FINITE_MATH_ONLY__) && __FINITE_MATH_ONLY__)
#error "the figures would be others: build without -ffast-math and the like"
#endif

static_assert(FLT_EVAL_METHOD == 0,
              "the figures are defined by float operations that round at once");

float Mean(std::span<const float> values) {
  if (values.empty()) {
    return 0.0F;
  }
  float sum = 0.0F;
  for (const float value : values) {
    sum += value;
  }
  return sum / static_cast<float>(values.size());
}

}  // namespace lumo
