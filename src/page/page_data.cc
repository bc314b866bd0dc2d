#include "page/page_data.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <flatbuffers/flatbuffers.h>
#include <nlohmann/json.hpp>

#include "model/event_fields.h"
#include "page/display_text.h"
#include "text/figure_text.h"

namespace lumo {
namespace {

using nlohmann::json;

std::string Dump(const json& data) {
  return EscapeJsonForHtml(data.dump(-1, ' ', true));
}

// JSON has no infinite numbers, so null represents them.
json NumberJson(float number) {
  return std::isfinite(number) ? json(number) : json();
}

// Values are whole numbers, so they are written without a decimal point.
json ValuesJson(const std::vector<float>& values) {
  constexpr float kFirstTooLarge = 9223372036854775808.0F;
  json list = json::array();
  for (const float value : values) {
    if (value < kFirstTooLarge) {
      list.push_back(static_cast<std::int64_t>(value));
    } else {
      list.push_back(value);
    }
  }
  return list;
}

// Appends a line with its depth for each sub-event of `event` at any level,
// until `lines` has kMaxDetails. Returns the number of these events.
std::size_t AppendDetails(const ProfilingEvent& event, int depth, json* lines) {
  // A small log may refer to the same events a million times.
  constexpr std::size_t kMaxDetails = 1000;
  const auto* const sub_events = event.sub_events();
  std::size_t count = flatbuffers::VectorLength(sub_events);
  for (flatbuffers::uoffset_t i = 0; i < flatbuffers::VectorLength(sub_events);
       ++i) {
    const ProfilingEvent& detail = *sub_events->Get(i);
    if (lines->size() < kMaxDetails) {
      lines->push_back(json::array(
          {depth, NotedText(flatbuffers::GetStringView(detail.name())),
           ValueText(detail)}));
    }
    count += AppendDetails(detail, depth + 1, lines);
  }
  return count;
}

// Adds the fields that only an operation has.
void AddOperationJson(const PageLog& log, std::int32_t graph,
                      const SeriesFigures& figures, json* data) {
  if (const std::optional<float> share = ShareOf(log, graph, figures)) {
    (*data)["share"] = *share;
  }
  const auto& [event, run] =
      log.samples[static_cast<std::size_t>(graph)].at(figures.series->first);
  json lines = json::array();
  (*data)["details_count"] = AppendDetails(*event, 0, &lines);
  (*data)["details"] = std::move(lines);
  (*data)["details_run"] = run;
}

json FiguresJson(const PageLog& log, std::int32_t graph, std::int32_t runs,
                 Level level, const SeriesFigures& figures) {
  const std::vector<float>& values = figures.series->second.values;
  json data = {
      {"runs", runs},
      {"n", figures.n},
      {"excluded", values.size() - static_cast<std::size_t>(figures.n)},
      {"values", ValuesJson(values)}};
  if (HasMean(figures)) {
    data["mean"] = NumberJson(figures.mean);
    data["stdev"] = NumberJson(figures.stdev);
  }
  if (level == Level::kOperation) {
    AddOperationJson(log, graph, figures, &data);
  }
  return data;
}

// Whether this is the time of a whole execute run.
bool IsRun(RunKind kind, const SeriesPair& pair) {
  return kind == RunKind::kExecute && pair.level == Level::kEvent &&
         pair.unit == "us" &&
         pair.name.find(kExecuteText) != std::string_view::npos;
}

json PairJson(const Page& page, const ComparedRuns& runs,
              const SeriesPair& pair) {
  json data = {{"graph", runs.graph},
               {"kind", RunKindText(runs.kind)},
               {"level", LevelText(pair.level)},
               {"name", NotedText(pair.name)},
               {"unit", pair.unit}};
  if (IsRun(runs.kind, pair)) {
    data["is_run"] = true;
  }
  if (const std::int32_t id = ParseNodeId(pair.name); id != -1) {
    data["node_id"] = id;
  }
  if (pair.before) {
    data["before"] = FiguresJson(page.before, runs.graph, runs.runs_before,
                                 pair.level, *pair.before);
  }
  if (pair.after) {
    data["after"] = FiguresJson(*page.after, runs.graph, runs.runs_after,
                                pair.level, *pair.after);
  }
  if (pair.change_percent) {
    data["change_percent"] = *pair.change_percent;
  }
  if (pair.p_adjusted) {
    data["p_adjusted"] = SignificantText(*pair.p_adjusted, 2);
  }
  if (page.after) {
    data["verdict"] = VerdictText(pair.verdict);
  }
  return data;
}

}  // namespace

void WritePageData(std::ostream& stream, const Page& page) {
  stream << "{\"sides\":[\"before\"" << (page.after ? ",\"after\"" : "")
         << "],\"series\":[";
  // One series at a time, because all of them would take several times the
  // memory of the log.
  const char* separator = "\n";
  for (const PageGraph& graph : page.graphs) {
    for (const PageTable& table : graph.tables) {
      for (const SeriesPair* pair : table.pairs) {
        if (!stream.good()) {
          return;
        }
        stream << separator << Dump(PairJson(page, table.runs, *pair));
        separator = ",\n";
      }
    }
  }
  stream << "\n]}\n";
}

}  // namespace lumo
