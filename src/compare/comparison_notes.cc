#include <algorithm>

#include "compare/comparison_text.h"
#include "text/escape.h"
#include "text/figure_text.h"

namespace lumo {
namespace {

std::string SingleLogNote(const Side& before, const Side& after) {
  if (before.logs.size() == 1 && after.logs.size() == 1) {
    return "With one log on each side, differences between recordings, such as "
           "temperature and clock rate, count as differences of the program. "
           "Compare folders with several logs to measure them.";
  }
  if (before.logs.size() > 1 && after.logs.size() > 1) {
    return "";
  }
  const bool is_before = before.logs.size() == 1;
  return std::string("There is one log ") + (is_before ? "before" : "after") +
         ". It is assumed that recordings like it vary as much as the logs " +
         (is_before ? "after" : "before") + ".";
}

std::string SlowStartNote(const Side& before, const Side& after,
                          std::int32_t num_warmup) {
  const SlowStart* slowest = nullptr;
  std::string path;
  std::int64_t logs = 0;
  std::int64_t longest = 0;
  for (const Side* side : {&before, &after}) {
    for (const SlowStart& start : side->slow_starts) {
      if (slowest == nullptr || start.ratio > slowest->ratio) {
        slowest = &start;
        path = Printable(side->logs[start.log]);
      }
      longest = std::max<std::int64_t>(longest, start.count);
      ++logs;
    }
  }
  if (slowest == nullptr) {
    return "";
  }
  const bool is_one = slowest->count == 1;
  return path + ": the first " +
         (is_one ? "counted run is "
                 : CountText(slowest->count, "counted run") + " are ") +
         FixedText(100.0 * (slowest->ratio - 1.0), 1) +
         "% slower than the median. --num_warmup " +
         std::to_string(num_warmup + longest) + " would exclude " +
         (is_one ? "it" : "them") +
         (logs == 1 ? "."
                    : ", and the slow first runs of " +
                          CountText(logs - 1, "more log") + ".");
}

std::string NodeIdNote(const Comparison& comparison) {
  const std::int64_t fewer = CountFewerAlone(comparison).value_or(0);
  return fewer <= 0 ? ""
                    : "--ignore_node_ids would leave " + std::to_string(fewer) +
                          " fewer series on one side only.";
}

}  // namespace

std::vector<std::string> MakeNotes(const Side& before, const Side& after,
                                   const Comparison& comparison,
                                   std::int32_t num_warmup,
                                   bool ignore_node_ids) {
  std::vector<std::string> notes = {
      SingleLogNote(before, after), SlowStartNote(before, after, num_warmup),
      ignore_node_ids ? "" : NodeIdNote(comparison)};
  std::erase(notes, "");
  return notes;
}

}  // namespace lumo
