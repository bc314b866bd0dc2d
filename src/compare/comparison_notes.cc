#include <algorithm>
#include <cstdint>
#include <iterator>
#include <map>
#include <set>

#include "compare/comparison_text.h"
#include "compare/pairing.h"
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

std::string SlowStartNote(const Side& before, const Side& after) {
  const SlowStart* slowest = nullptr;
  std::int64_t most = 0;
  std::set<const std::string*> logs;
  std::string path;
  for (const Side* side : {&before, &after}) {
    for (const SlowStart& start : side->slow_starts) {
      const std::string& log = side->logs[start.log];
      // The largest ratio of mean and median is shown.
      if (slowest == nullptr ||
          start.mean * slowest->median > slowest->mean * start.median) {
        slowest = &start;
        path = Printable(log);
      }
      most = std::max<std::int64_t>(most, start.count);
      logs.insert(&log);
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
         std::to_string(before.num_warmup + most) +
         " would exclude the slow first runs of this log" +
         (logs.size() == 1
              ? "."
              : " and of " + std::to_string(logs.size() - 1) + " more.");
}

std::string NodeIdNote(const Comparison& comparison) {
  std::map<Verdict, std::int64_t> counts = CountVerdicts(comparison);
  if (comparison.ignores_node_ids ||
      counts[Verdict::kOnlyBefore] + counts[Verdict::kOnlyAfter] == 0) {
    return "";
  }
  std::int64_t fewer = 0;
  for (const Block& block : comparison.blocks) {
    const auto paired = PairSeries(block.before, block.after, true);
    if (!paired) {
      return "";
    }
    // A pair takes the place of two series.
    fewer += 2 * (std::ssize(block.pairs) - std::ssize(*paired));
  }
  // If operations have moved, there may be more.
  return fewer <= 0 ? ""
                    : "With --ignore_node_ids, " + std::to_string(fewer) +
                          " fewer series would be on one side only.";
}

}  // namespace

std::vector<std::string> MakeNotes(const Comparison& comparison) {
  const Side& before = *comparison.before;
  const Side& after = *comparison.after;
  std::vector<std::string> notes = {SingleLogNote(before, after),
                                    SlowStartNote(before, after),
                                    NodeIdNote(comparison)};
  std::erase(notes, "");
  return notes;
}

}  // namespace lumo
