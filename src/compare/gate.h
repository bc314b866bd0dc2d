// Whether a comparison passes --max_slowdown.

#ifndef LUMO_COMPARE_GATE_H_
#define LUMO_COMPARE_GATE_H_

#include <string>
#include <vector>

#include "compare/comparison.h"

namespace lumo {

// The result of --max_slowdown.
struct GateResult {
  // Whether an event or operation in us or cycles, of any kind of run, is
  // significantly higher by more than the limit.
  bool is_exceeded = false;
  // Whether an event or operation of the execute runs in us or cycles was
  // tested. If not, the comparison proves nothing.
  bool is_tested = false;
  // What to tell the user, one line each: the slowdowns above the limit,
  // largest first, 20 at most, such as "graph 0, execute, operation [Conv]:
  // 9.26% higher (+5.90..+12.81%), more than 5%", and the number of further
  // ones; how many operations are on one side only; and why nothing was tested.
  std::vector<std::string> lines;
};

// Checks a comparison against a limit in percent, 0 or more. A rise from 0
// exceeds every limit.
GateResult CheckSlowdowns(const Comparison& comparison, double max_slowdown);

}  // namespace lumo

#endif  // LUMO_COMPARE_GATE_H_
