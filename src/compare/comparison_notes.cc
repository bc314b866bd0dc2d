#include <algorithm>

#include "compare/comparison_text.h"
#include "text/escape.h"
#include "text/figure_text.h"

namespace lumo {
namespace {

std::string SingleLogNote(const Side& before, const Side& after) {
  const bool is_before = before.logs.size() == 1;
  const bool is_after = after.logs.size() == 1;
  if (is_before && is_after) {
    return "With one log on each side, differences between recordings, such as "
           "temperature and clock rate, count as differences of the program. "
           "Compare folders with several logs to measure these differences.";
  }
  if (!is_before && !is_after) {
    return "";
  }
  return std::string("The side ") + (is_before ? "before" : "after") +
         " has only one log. It is assumed to vary as much as the logs " +
         (is_before ? "after." : "before.");
}

std::string SlowStartNote(const Side& before, const Side& after,
                          std::int32_t num_warmup) {
  const SlowStart* slowest = nullptr;
  std::string path;
  std::int64_t logs = 0;
  std::int64_t most = 0;
  for (const Side* side : {&before, &after}) {
    for (const SlowStart& start : side->slow_starts) {
      if (slowest == nullptr || IsSlower(start, *slowest)) {
        slowest = &start;
        path = Printable(side->logs[start.log]);
      }
      most = std::max<std::int64_t>(most, start.most);
      ++logs;
    }
  }
  if (slowest == nullptr) {
    return "";
  }
  return path + ": the first " +
         (slowest->count == 1
              ? "counted run takes "
              : CountText(slowest->count, "counted run") + " take ") +
         FixedText(slowest->mean) + " us" +
         (slowest->count == 1 ? "" : " on average") + ", the median run " +
         FixedText(slowest->median) + " us. --num_warmup " +
         std::to_string(num_warmup + most) +
         " would exclude the slow first runs of this log" +
         (logs == 1 ? "." : " and of " + std::to_string(logs - 1) + " more.");
}

std::string NodeIdNote(const Comparison& comparison) {
  const std::int64_t fewer = CountFewerAlone(comparison).value_or(0);
  return fewer <= 0 ? ""
                    : "With --ignore_node_ids, " + std::to_string(fewer) +
                          " fewer series would be on one side only.";
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
