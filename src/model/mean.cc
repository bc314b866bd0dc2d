// The mean, summed in the order of the values.

#include "model/mean.h"

#include <cfloat>

namespace lumo {

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
