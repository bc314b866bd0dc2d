#include "page/row_data.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "compare/comparison_text.h"
#include "model/event_fields.h"
#include "page/display_text.h"
#include "page/figure_html.h"
#include "text/figure_text.h"

namespace lumo {
namespace {

constexpr std::size_t kMaxParts = 1000;

std::string ListJson(const auto& numbers) {
  std::string json = "[";
  for (const auto number : numbers) {
    json += (json.size() > 1 ? "," : "") + std::to_string(number);
  }
  return json + "]";
}

std::string FiguresJson(const std::string& min, double median,
                        const std::string& p90, const std::string& max) {
  return ",\"figures\":{\"min\":" + QuoteJson(min) +
         ",\"median\":" + QuoteJson(NumberText(median)) +
         (p90.empty() ? "" : ",\"p90\":" + QuoteJson(p90)) +
         ",\"max\":" + QuoteJson(max) + "}";
}

// The fields of a side with one log.
std::string RunsJson(const RunValues& own, std::int32_t num_warmup) {
  std::string json = ",\"values\":" + ListJson(own.values);
  for (std::size_t i = 0; i < own.runs.size(); ++i) {
    if (own.runs[i] != static_cast<std::int32_t>(i)) {
      json += ",\"runs\":" + ListJson(own.runs);
      break;
    }
  }
  const std::span<const std::uint64_t> counted =
      CountedValues(own.values, num_warmup);
  json += ",\"excluded\":" + std::to_string(own.values.size() - counted.size());
  if (counted.empty()) {
    return json;
  }
  const Distribution all = ComputeDistribution(counted);
  return json + FiguresJson(WholeNumberText(all.min), all.median,
                            NumberText(all.p90), WholeNumberText(all.max));
}

// The fields of a side of a page about logs.
std::string LogsJson(const SideSeries& series) {
  std::string json = ",\"logs\":[";
  std::vector<double> means;
  for (const LogFigures& log : series.logs) {
    const Figures& figures = log.figures;
    if (figures.n > 0) {
      json += (means.empty() ? "[" : ",[") + std::to_string(log.log) + "," +
              ShortestText(figures.mean) + "," +
              (figures.n > 1 ? ShortestText(figures.stdev) : "null") + "]";
      means.push_back(figures.mean);
    }
  }
  json += "]";
  if (means.empty()) {
    return json;
  }
  const auto [min, max] = std::minmax_element(means.begin(), means.end());
  return json +
         FiguresJson(NumberText(*min), Median(means), "", NumberText(*max));
}

// The mean of a part. The number of a background operation means nothing, and
// those of resource masks are shown if they are all equal.
std::string PartText(const SideSeries& part, const Figures& figures) {
  switch (part.type) {
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

// A series, or its part on each side; null for a side that does not have it.
using OnSides = std::vector<const SideSeries*>;

// Returns the parts directly below a series, those of different sides together
// if they agree in short name, unit and ordinal.
std::vector<OnSides> ListParts(const std::vector<const SideRuns*>& runs,
                               const OnSides& above) {
  std::vector<OnSides> parts;
  std::map<std::tuple<std::string_view, std::string_view, std::size_t>,
           std::size_t>
      places;
  for (std::size_t side = 0; side < above.size(); ++side) {
    std::map<std::pair<std::string_view, std::string_view>, std::size_t> counts;
    if (above[side] == nullptr) {
      continue;
    }
    for (const std::size_t i : above[side]->parts) {
      const SideSeries& part = runs[side]->series[i];
      const std::string_view name = ShortName(part.name, above[side]->name);
      const auto [place, is_new] = places.try_emplace(
          {name, part.unit, counts[{name, part.unit}]++}, parts.size());
      if (is_new) {
        parts.emplace_back(above.size());
      }
      parts[place->second][side] = &part;
    }
  }
  return parts;
}

// The parts of a row.
struct PartList {
  const Page& page;
  const Row& row;
  std::vector<const SideRuns*> runs;
  std::size_t count = 0;
  std::string json;
};

void AppendParts(const OnSides& above, int depth, PartList* list) {
  for (const OnSides& part : ListParts(list->runs, above)) {
    if (++list->count > kMaxParts) {
      return;
    }
    const std::size_t first = part.front() != nullptr ? 0 : part.size() - 1;
    list->json += (list->count > 1 ? ",[" : "[") + std::to_string(depth) + "," +
                  JsonText(ShortName(part[first]->name, above[first]->name)) +
                  "," + QuoteJson(part[first]->unit);
    for (std::size_t side = 0; side < part.size(); ++side) {
      const Figures figures = SampleFigures(part[side], list->page.sample);
      const Row& row = list->row;
      const bool has_share = part[first]->unit == SeriesOf(row).unit &&
                             row.sides[side].figures.n > 0;
      list->json +=
          figures.n == 0
              ? ",null"
              : ",[" + QuoteJson(PartText(*part[side], figures)) + ",\"" +
                    (has_share
                         ? PercentText(PercentOf(figures.mean,
                                                 row.sides[side].figures.mean))
                         : "") +
                    "\"]";
    }
    list->json += "]";
    AppendParts(part, depth + 1, list);
  }
}

std::string SideJson(const Page& page, const Graph& graph, const Table& table,
                     const Row& row, std::size_t side) {
  const auto& [series, figures, share] = row.sides[side];
  if (series == nullptr) {
    return "null";
  }
  std::string json = "{\"n\":" + std::to_string(figures.n);
  if (figures.n > 1) {
    json += ",\"stdev\":" + ShortestText(figures.stdev);
  }
  if (page.sample == Sample::kLogs) {
    return json + LogsJson(*series) + "}";
  }
  const SideRuns& runs = *FindRuns(page.sides[side], table.kind, graph.number);
  const auto& values = page.logs[side].values.at({table.kind, graph.number});
  const auto index = static_cast<std::size_t>(series - runs.series.data());
  return json + RunsJson(values[index], page.num_warmup) + "}";
}

}  // namespace

std::string RowJson(const Page& page, const Graph& graph, const Table& table,
                    const Row& row) {
  std::string json =
      "{\"unit\":" + QuoteJson(SeriesOf(row).unit) + ",\"sides\":[";
  PartList parts = {page, row, {}, 0, ""};
  OnSides above;
  for (std::size_t side = 0; side < row.sides.size(); ++side) {
    json += (side == 0 ? "" : ",") + SideJson(page, graph, table, row, side);
    parts.runs.push_back(FindRuns(page.sides[side], table.kind, graph.number));
    above.push_back(row.sides[side].series);
  }
  json += "]";
  if (row.pair != nullptr && row.pair->p_adjusted) {
    json += ",\"p\":\"" + SignificantText(*row.pair->p_adjusted, 2) + "\"";
  }
  if (row.pair != nullptr && row.pair->interval) {
    json += ",\"interval\":" +
            QuoteJson(WithMinus(IntervalText(*row.pair->interval)));
  }
  AppendParts(above, 0, &parts);
  if (parts.count > 0) {
    json += ",\"parts\":[" + parts.json + "]";
    json += parts.count > kMaxParts ? ",\"is_cut\":true" : "";
  }
  return json + "}";
}

std::string_view ShortName(std::string_view part, std::string_view above) {
  const bool repeats = !above.empty() && part.size() > above.size() + 1 &&
                       part.starts_with(above) && part[above.size()] == ' ';
  return repeats ? part.substr(above.size() + 1) : part;
}

}  // namespace lumo
