#include "page/page_data.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <flatbuffers/flatbuffers.h>
#include <nlohmann/json.hpp>

#include "compare/comparison_text.h"
#include "model/event_fields.h"
#include "page/display_text.h"

namespace lumo {
namespace {

using nlohmann::json;

std::string Dump(const json& data) {
  return EscapeJsonForHtml(data.dump(-1, ' ', true));
}

// JSON has no infinite numbers; null stands for them.
json NumberJson(float number) {
  return std::isfinite(number) ? json(number) : json();
}

// Values are whole numbers, which are shorter without a decimal point.
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

// Appends a line for each event below `event`, with its depth.
void AppendDetails(const ProfilingEvent& event, int depth, json* lines) {
  const auto* const sub_events = event.sub_events();
  for (flatbuffers::uoffset_t i = 0; i < flatbuffers::VectorLength(sub_events);
       ++i) {
    const ProfilingEvent& detail = *sub_events->Get(i);
    std::string line(flatbuffers::GetStringView(detail.name()));
    line += ValueText(detail);
    lines->push_back(json::array({depth, MakeDisplayText(line).text}));
    AppendDetails(detail, depth + 1, lines);
  }
}

json FiguresJson(const PageLog& log, std::int32_t graph, Level level,
                 const Figures& figures) {
  const auto& [key, series] = *figures.series;
  json data = {
      {"n", figures.n},
      {"excluded", series.values.size() - static_cast<std::size_t>(figures.n)},
      {"values", ValuesJson(series.values)}};
  if (figures.n > 0) {
    data["mean"] = NumberJson(figures.mean);
    data["stdev"] = NumberJson(figures.stdev);
  }
  if (level == Level::kEvent) {
    return data;
  }
  if (const std::optional<float> share = ShareOf(log, graph, figures)) {
    data["share"] = *share;
  }
  const SampleRun& sample = log.sample_runs[static_cast<std::size_t>(graph)];
  const auto event = sample.operations.find(key);
  if (event != sample.operations.end()) {
    data["run"] = sample.run;
    data["details"] = json::array();
    AppendDetails(*event->second, 0, &data["details"]);
  }
  return data;
}

// Whether this is the time of a whole execute run.
bool IsRun(RunKind kind, const SeriesPair& pair) {
  return kind == RunKind::kExecute && pair.level == Level::kEvent &&
         pair.unit == "us" &&
         pair.name.find(kExecuteText) != std::string_view::npos;
}

json PairJson(const Page& page, const PageGraph& graph, RunKind kind,
              const SeriesPair& pair) {
  const DisplayText name = MakeDisplayText(pair.name);
  json data = {{"graph", graph.graph},
               {"kind", RunKindText(kind)},
               {"level", LevelText(pair.level)},
               {"name", name.text},
               {"unit", pair.unit}};
  if (name.is_damaged) {
    data["is_damaged"] = true;
  }
  if (IsRun(kind, pair)) {
    data["is_run"] = true;
  }
  if (const std::int32_t id = ParseNodeId(pair.name); id != -1) {
    data["node_id"] = id;
  }
  if (pair.before) {
    data["before"] =
        FiguresJson(page.before, graph.graph, pair.level, *pair.before);
  }
  if (pair.after) {
    data["after"] =
        FiguresJson(*page.after, graph.graph, pair.level, *pair.after);
  }
  if (pair.change_percent) {
    data["change_percent"] = *pair.change_percent;
  }
  if (pair.p_adjusted) {
    data["p_adjusted"] = *pair.p_adjusted;
  }
  if (page.after) {
    data["verdict"] = VerdictText(pair.verdict);
  }
  return data;
}

}  // namespace

void WritePageData(std::ostream& stream, const Page& page) {
  json logs = json::array();
  logs.push_back(MakeDisplayText(page.before.source->log.path).text);
  if (page.after) {
    logs.push_back(MakeDisplayText(page.after->source->log.path).text);
  }
  stream << "{\"logs\":" << Dump(logs) << ",\"num_warmup\":" << page.num_warmup
         << ",\"series\":[";
  // One by one, because all of them at once would need several times the
  // memory of the log.
  const char* separator = "\n";
  for (const PageGraph& graph : page.graphs) {
    for (const PageTable& table : graph.tables) {
      for (const SeriesPair* pair : table.pairs) {
        if (!stream.good()) {
          return;
        }
        stream << separator << Dump(PairJson(page, graph, table.kind, *pair));
        separator = ",\n";
      }
    }
  }
  stream << "\n]}\n";
}

}  // namespace lumo
