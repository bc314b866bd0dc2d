#include "page/page_data.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <numeric>
#include <span>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include "compare/comparison_text.h"
#include "model/event_fields.h"
#include "page/page_text.h"
#include "text/figure_text.h"

namespace lumo {
namespace {

using Json = nlohmann::ordered_json;

// Adds the fields of a side with one log.
void AddRuns(const SideSeries& series, std::size_t n, Json* side) {
  (*side)["values"] = series.values;
  std::vector<std::int32_t> consecutive(series.runs.size());
  std::iota(consecutive.begin(), consecutive.end(), 0);
  if (series.runs != consecutive) {
    (*side)["runs"] = series.runs;
  }
  (*side)["excluded"] = series.values.size() - n;
  if (n > 0) {
    const Distribution all =
        ComputeDistribution(std::span(series.values).last(n));
    (*side)["figures"] = {{"min", NumberText(static_cast<double>(all.min))},
                          {"median", NumberText(all.median)},
                          {"p90", NumberText(all.p90)},
                          {"max", NumberText(static_cast<double>(all.max))}};
  }
}

// Adds the fields of a side of a page about logs.
void AddLogs(const SideSeries& series, Json* side) {
  Json& logs = (*side)["logs"] = Json::array();
  std::vector<double> means;
  for (const auto& [log, figures] : series.logs) {
    if (figures.n > 0) {
      means.push_back(figures.mean);
      logs.push_back(
          {log, figures.mean, figures.n > 1 ? Json(figures.stdev) : Json()});
    }
  }
  if (!means.empty()) {
    const auto [min, max] = std::minmax_element(means.begin(), means.end());
    (*side)["figures"] = {{"min", NumberText(*min)},
                          {"median", NumberText(Median(means))},
                          {"max", NumberText(*max)}};
  }
}

Json SideJson(const PairSide& side, Sample sample) {
  if (side.series == nullptr) {
    return nullptr;
  }
  Json json = {{"n", side.figures.n}};
  if (side.figures.n > 1) {
    json["stdev"] = side.figures.stdev;
  }
  if (sample == Sample::kRuns) {
    AddRuns(*side.series, static_cast<std::size_t>(side.figures.n), &json);
  } else {
    AddLogs(*side.series, &json);
  }
  return json;
}

// The mean of a part. The number of a background operation means nothing, and
// those of resource masks are shown if they are all equal.
std::string PartText(const PairSide& part) {
  const auto& [series, runs, figures] = part;
  switch (series->type) {
    case ProfileEventType::ORX_PROFILE_EVENTTYPE_NODE_CRITICAL_BG_OP_ID:
    case ProfileEventType::ORX_PROFILE_EVENTTYPE_NODE_WAIT_BG_OP_ID:
      return "";
    case ProfileEventType::ORX_PROFILE_EVENTTYPE_NODE_RESOURCEMASK:
      return figures.stdev == 0.0 && figures.mean < 256
                 ? ResourceMaskText(static_cast<std::uint8_t>(figures.mean))
                 : "varies";
    default:
      return NumberText(figures.mean);
  }
}

// Returns the parts directly below a series, those of different sides together
// if they agree in short name and unit, and in their position among the parts
// of that name and unit.
std::vector<std::vector<PairSide>> ListParts(const std::vector<PairSide>& above,
                                             Sample sample) {
  using Name = std::pair<std::string_view, std::string_view>;
  std::vector<std::vector<PairSide>> parts;
  std::map<std::pair<Name, int>, std::size_t> indices;
  for (std::size_t i = 0; i < above.size(); ++i) {
    const auto& [series, runs, figures] = above[i];
    if (series == nullptr) {
      continue;
    }
    std::map<Name, int> counts;
    for (const std::size_t index : series->parts) {
      const SideSeries& part = runs->series[index];
      const Name name = {ShortName(part.name, series->name), part.unit};
      const auto [entry, is_new] =
          indices.try_emplace({name, counts[name]++}, parts.size());
      if (is_new) {
        parts.emplace_back(above.size());
      }
      parts[entry->second][i] = MakePairSide(&part, *runs, sample);
    }
  }
  return parts;
}

// Appends the parts below a series of the row to a list.
void AppendParts(const std::vector<PairSide>& above, const Row& row,
                 Sample sample, int depth, Json* parts) {
  for (const std::vector<PairSide>& part : ListParts(above, sample)) {
    const std::size_t first = part.front().series != nullptr ? 0 : 1;
    const std::string_view unit = part[first].series->unit;
    Json json = {depth,
                 PlainText(ShortName(part[first].series->name,
                                     above[first].series->name)),
                 unit};
    for (std::size_t i = 0; i < part.size(); ++i) {
      const auto share =
          PercentOf(part[i].figures.mean, row.sides[i].figures.mean);
      json.push_back(part[i].figures.n == 0
                         ? Json()
                         : Json{PartText(part[i]), unit == row.series->unit
                                                       ? PercentText(share)
                                                       : ""});
    }
    parts->push_back(std::move(json));
    AppendParts(part, row, sample, depth + 1, parts);
  }
}

}  // namespace

std::string RowJson(const Page& page, const Row& row) {
  Json json = {{"unit", row.series->unit}, {"sides", Json::array()}};
  for (const PairSide& side : row.sides) {
    json["sides"].push_back(SideJson(side, page.sample));
  }
  if (row.pair != nullptr && row.pair->p_adjusted) {
    json["p"] = SignificantText(*row.pair->p_adjusted, 2);
  }
  if (row.pair != nullptr && row.pair->interval) {
    json["interval"] = MinusText(IntervalText(*row.pair->interval));
  }
  json["parts"] = Json::array();
  AppendParts(row.sides, row, page.sample, 0, &json["parts"]);
  return EmbedJson(json);
}

void WritePageData(std::ostream& stream, const Page& page) {
  Json data = {{"sides", page.sides.size()}};
  for (std::size_t i = 0; page.sample == Sample::kLogs && i < page.sides.size();
       ++i) {
    for (std::size_t log = 0; log < page.facts[i].size(); ++log) {
      data["logs"][i].push_back(
          {PlainText(page.sides[i].logs[log]), page.facts[i][log].date});
    }
  }
  stream << EmbedJson(data) << '\n';
}

std::string_view ShortName(std::string_view part, std::string_view above) {
  const bool repeats = !above.empty() && part.size() > above.size() + 1 &&
                       part.starts_with(above) && part[above.size()] == ' ';
  return repeats ? part.substr(above.size() + 1) : part;
}

}  // namespace lumo
