#include "compare/comparison.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <set>
#include <tuple>
#include <utility>

#include "compare/pairing.h"
#include "text/escape.h"

namespace lumo {
namespace {

// Returns the pair, not yet tested.
SeriesPair MakePair(const PairedSeries& paired, Sample sample) {
  SeriesPair pair = {};
  pair.before = paired.before;
  pair.after = paired.after;
  pair.figures_before = SampleFigures(paired.before, sample);
  pair.figures_after = SampleFigures(paired.after, sample);
  for (const SideSeries* series : {paired.before, paired.after}) {
    pair.is_repeated |= series != nullptr && series->is_repeated;
  }
  const Figures& before = pair.figures_before;
  const Figures& after = pair.figures_after;
  if (before.n > 0 && after.n > 0 && before.mean != 0.0) {
    pair.change_percent = 100.0 * (after.mean - before.mean) / before.mean;
  }
  pair.verdict = pair.before == nullptr  ? Verdict::kOnlyAfter
                 : pair.after == nullptr ? Verdict::kOnlyBefore
                                         : Verdict::kNoTest;
  return pair;
}

// Tests every pair that can be tested and sets its verdict.
void SetVerdicts(double confidence, Comparison* comparison) {
  std::vector<std::pair<SeriesPair*, TTest>> tested;
  std::vector<double> p_values;
  for (Block& block : comparison->blocks) {
    for (SeriesPair& pair : block.pairs) {
      if (const std::optional<TTest> test = TestMeans(
              pair.figures_before, pair.figures_after, comparison->sample)) {
        tested.emplace_back(&pair, *test);
        p_values.push_back(test->p);
      }
    }
  }
  AdjustByHolm(&p_values);
  const double alpha = (100.0 - confidence) / 100.0;
  for (std::size_t i = 0; i < tested.size(); ++i) {
    auto& [pair, test] = tested[i];
    pair->p_adjusted = p_values[i];
    pair->interval =
        ComputeInterval(pair->figures_before, pair->figures_after, test,
                        alpha / static_cast<double>(tested.size()));
    if (p_values[i] >= alpha) {
      pair->verdict = Verdict::kNoDifference;
    } else if (pair->figures_after.mean > pair->figures_before.mean) {
      pair->verdict = Verdict::kHigher;
    } else {
      pair->verdict = Verdict::kLower;
    }
    // The adjusted p-value can find a little more than the interval.
    if (pair->interval && pair->verdict == Verdict::kHigher) {
      pair->interval->low = std::max(0.0, pair->interval->low);
    } else if (pair->interval && pair->verdict == Verdict::kLower) {
      pair->interval->high = std::min(0.0, pair->interval->high);
    }
  }
}

// Sorts the pairs as Block describes. They are in the order of their sides.
void SortPairs(std::vector<SeriesPair>* pairs) {
  const auto key_of = [](const SeriesPair& pair) {
    const bool is_one_sided = pair.before == nullptr || pair.after == nullptr;
    const Level level = SeriesOf(pair).level;
    const bool has_means =
        pair.figures_before.n > 0 && pair.figures_after.n > 0;
    const double difference =
        !has_means
            ? -1.0
            : std::abs(pair.figures_after.mean - pair.figures_before.mean);
    return std::tuple(
        pair.before == nullptr, is_one_sided, !IsDifferent(pair), level,
        is_one_sided || level == Level::kEvent ? 0.0 : -difference);
  };
  std::stable_sort(pairs->begin(), pairs->end(),
                   [&key_of](const SeriesPair& a, const SeriesPair& b) {
                     return key_of(a) < key_of(b);
                   });
}

const SideRuns* FindRuns(const Side& side,
                         const std::pair<RunKind, std::int32_t>& key) {
  const auto runs = side.runs.find(key);
  return runs == side.runs.end() ? nullptr : &runs->second;
}

}  // namespace

std::string_view VerdictText(Verdict verdict) {
  switch (verdict) {
    case Verdict::kHigher:
      return "higher";
    case Verdict::kLower:
      return "lower";
    case Verdict::kNoDifference:
      return "no_difference";
    case Verdict::kNoTest:
      return "no_test";
    case Verdict::kOnlyBefore:
      return "only_before";
    case Verdict::kOnlyAfter:
      return "only_after";
  }
  return "";
}

std::string VerdictWords(Verdict verdict) {
  std::string words(VerdictText(verdict));
  std::replace(words.begin(), words.end(), '_', ' ');
  return words;
}

Figures SampleFigures(const SideSeries* series, Sample sample) {
  if (series == nullptr) {
    return {};
  }
  if (sample == Sample::kRuns) {
    return series->logs.front().figures;
  }
  std::vector<double> means;
  means.reserve(series->logs.size());
  for (const LogFigures& log : series->logs) {
    if (log.figures.n > 0) {
      means.push_back(log.figures.mean);
    }
  }
  return ComputeFigures(std::span<const double>(means));
}

const SideSeries& SeriesOf(const SeriesPair& pair) {
  return pair.before != nullptr ? *pair.before : *pair.after;
}

bool IsDifferent(const SeriesPair& pair) {
  return pair.verdict == Verdict::kHigher || pair.verdict == Verdict::kLower;
}

std::optional<Comparison> CompareSides(const Side& before, const Side& after,
                                       double confidence, bool ignore_node_ids,
                                       std::string* error) {
  Comparison comparison = {};
  comparison.sample = before.logs.size() == 1 && after.logs.size() == 1
                          ? Sample::kRuns
                          : Sample::kLogs;
  std::set<std::pair<RunKind, std::int32_t>> keys;
  for (const Side* side : {&before, &after}) {
    for (const auto& [key, runs] : side->runs) {
      keys.insert(key);
    }
  }
  for (const auto& key : keys) {
    const auto& [kind, graph] = key;
    Block block = {
        kind, graph, FindRuns(before, key), FindRuns(after, key), {}};
    const std::optional<std::vector<PairedSeries>> paired =
        ignore_node_ids ? PairByBareName(block.before, block.after)
                        : PairByName(block.before, block.after);
    if (!paired) {
      *error = "graph " + std::to_string(graph) +
               " has too many operations to pair them without node ids";
      return std::nullopt;
    }
    for (const PairedSeries& series : *paired) {
      block.pairs.push_back(MakePair(series, comparison.sample));
    }
    if (!block.pairs.empty()) {
      comparison.blocks.push_back(std::move(block));
    }
  }
  SetVerdicts(confidence, &comparison);
  for (Block& block : comparison.blocks) {
    SortPairs(&block.pairs);
  }
  return comparison;
}

std::optional<std::int64_t> CountFewerAlone(const Comparison& comparison) {
  std::int64_t alone = 0;
  for (const Block& block : comparison.blocks) {
    alone += std::count_if(
        block.pairs.begin(), block.pairs.end(), [](const SeriesPair& pair) {
          return pair.before == nullptr || pair.after == nullptr;
        });
  }
  if (alone == 0) {
    return 0;  // there cannot be fewer
  }
  std::int64_t fewer = 0;
  for (const Block& block : comparison.blocks) {
    const auto paired = PairByBareName(block.before, block.after);
    if (!paired) {
      return std::nullopt;
    }
    // A pair takes the place of two series.
    fewer += 2 * (static_cast<std::int64_t>(block.pairs.size()) -
                  static_cast<std::int64_t>(paired->size()));
  }
  return fewer;
}

}  // namespace lumo
