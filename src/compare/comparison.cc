#include "compare/comparison.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <set>
#include <span>
#include <tuple>
#include <utility>

#include "compare/pairing.h"

namespace lumo {
namespace {

// Returns the pair, not yet tested.
SeriesPair MakePair(const PairedSeries& series, const Block& block,
                    Sample sample) {
  SeriesPair pair = {};
  pair.before = MakePairSide(series.first, block.before, sample);
  pair.after = MakePairSide(series.second, block.after, sample);
  for (const SideSeries* own : {series.first, series.second}) {
    pair.is_repeated |= own != nullptr && own->is_repeated;
  }
  const Figures& before = pair.before.figures;
  const Figures& after = pair.after.figures;
  if (before.n > 0 && after.n > 0) {
    pair.difference = after.mean - before.mean;
  }
  if (pair.difference && before.mean != 0.0) {
    pair.change_percent = 100.0 * *pair.difference / before.mean;
  }
  pair.verdict = series.first == nullptr    ? Verdict::kOnlyAfter
                 : series.second == nullptr ? Verdict::kOnlyBefore
                                            : Verdict::kNoTest;
  return pair;
}

// Tests every pair that can be tested and sets its verdict.
void SetVerdicts(Comparison* comparison) {
  std::vector<std::pair<SeriesPair*, TTest>> tested;
  std::vector<double> p_values;
  for (Block& block : comparison->blocks) {
    for (SeriesPair& pair : block.pairs) {
      if (const auto test = TestMeans(pair.before.figures, pair.after.figures,
                                      comparison->sample)) {
        tested.emplace_back(&pair, *test);
        p_values.push_back(test->p);
      }
    }
  }
  AdjustByHolm(&p_values);
  const double alpha = (100.0 - comparison->confidence) / 100.0;
  for (std::size_t i = 0; i < tested.size(); ++i) {
    auto& [pair, test] = tested[i];
    pair->p_adjusted = p_values[i];
    const Figures& before = pair->before.figures;
    const Figures& after = pair->after.figures;
    pair->interval = ComputeInterval(
        before, after, test, alpha / static_cast<double>(tested.size()));
    pair->verdict = p_values[i] >= alpha       ? Verdict::kNoDifference
                    : after.mean > before.mean ? Verdict::kHigher
                                               : Verdict::kLower;
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
  std::ranges::stable_sort(*pairs, {}, [](const SeriesPair& pair) {
    const double size = pair.difference ? std::abs(*pair.difference) : -1.0;
    const Level level = SeriesOf(pair).level;
    const bool has_order = !IsOnBothSides(pair) || level == Level::kEvent;
    return std::tuple(pair.verdict == Verdict::kOnlyAfter, !IsOnBothSides(pair),
                      !IsDifferent(pair), level, has_order ? 0.0 : -size);
  });
}

const SideRuns& FindRuns(const Side& side,
                         const std::pair<RunKind, std::int32_t>& key) {
  static const SideRuns kNone;
  const auto runs = side.runs.find(key);
  return runs == side.runs.end() ? kNone : runs->second;
}

}  // namespace

std::string_view VerdictText(Verdict verdict) {
  constexpr std::string_view kTexts[] = {"higher",        "lower",
                                         "no_difference", "no_test",
                                         "only_before",   "only_after"};
  return kTexts[static_cast<std::size_t>(verdict)];
}

std::string VerdictWords(Verdict verdict) {
  std::string words(VerdictText(verdict));
  std::replace(words.begin(), words.end(), '_', ' ');
  return words;
}

PairSide MakePairSide(const SideSeries* series, const SideRuns& runs,
                      Sample sample) {
  if (series == nullptr) {
    return {};
  }
  if (sample == Sample::kRuns) {
    return {series, &runs, series->logs.front().figures};
  }
  std::vector<double> means;
  means.reserve(series->logs.size());
  for (const LogFigures& log : series->logs) {
    if (log.figures.n > 0) {
      means.push_back(log.figures.mean);
    }
  }
  return {series, &runs, ComputeFigures(std::span<const double>(means))};
}

const SideSeries& SeriesOf(const SeriesPair& pair) {
  return pair.before.series != nullptr ? *pair.before.series
                                       : *pair.after.series;
}

bool IsOnBothSides(const SeriesPair& pair) {
  return pair.before.series != nullptr && pair.after.series != nullptr;
}

bool IsDifferent(const SeriesPair& pair) {
  return pair.verdict == Verdict::kHigher || pair.verdict == Verdict::kLower;
}

std::optional<Comparison> CompareSides(const Side& before, const Side& after,
                                       double confidence, bool ignore_node_ids,
                                       std::string* error) {
  const Sample sample = before.logs.size() == 1 && after.logs.size() == 1
                            ? Sample::kRuns
                            : Sample::kLogs;
  Comparison comparison = {&before,         &after, confidence,
                           ignore_node_ids, sample, {}};
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
    const auto paired = PairSeries(block.before, block.after, ignore_node_ids);
    if (!paired) {
      *error = "graph " + std::to_string(graph) +
               " has too many operations to pair them without node ids";
      return std::nullopt;
    }
    for (const PairedSeries& series : *paired) {
      block.pairs.push_back(MakePair(series, block, sample));
    }
    if (!block.pairs.empty()) {
      comparison.blocks.push_back(std::move(block));
    }
  }
  SetVerdicts(&comparison);
  for (Block& block : comparison.blocks) {
    SortPairs(&block.pairs);
  }
  return comparison;
}

std::map<Verdict, std::int64_t> CountVerdicts(const Comparison& comparison,
                                              std::optional<Level> level) {
  std::map<Verdict, std::int64_t> counts;
  for (const Block& block : comparison.blocks) {
    for (const SeriesPair& pair : block.pairs) {
      if (!level || level == SeriesOf(pair).level) {
        ++counts[pair.verdict];
      }
    }
  }
  return counts;
}

}  // namespace lumo
