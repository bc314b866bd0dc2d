#include "report/event_listing.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iomanip>
#include <iterator>
#include <string>
#include <string_view>

#include <flatbuffers/flatbuffers.h>

#include "model/event_fields.h"
#include "model/message_groups.h"
#include "report/summary.h"
#include "text/figure_text.h"

namespace lumo {
namespace {

// Each level is indented by four blanks.
constexpr std::int32_t kTopLevelDepth = 3;

// "75.00% | name: 1500 cycles" for an operation, "name: 1500 cycles" and the
// like for any other event.
void WriteEventLine(std::ostream& stream, const ProfilingEvent& event,
                    std::uint64_t parent_value) {
  if (event.type() == ProfileEventType::ORX_PROFILE_EVENTTYPE_NODE) {
    WritePercentField(stream, static_cast<float>(event.value()) /
                                  static_cast<float>(parent_value) * 100.0F);
  }
  stream << flatbuffers::GetStringView(event.name()) << ValueText(event)
         << '\n';
}

// Returns how many different node ids are in the names of the direct sub-events
// of `event`, which must have some.
std::size_t CountNodes(const ProfilingEvent& event) {
  std::vector<std::int32_t> ids;
  for (const ProfilingEvent* sub_event : *event.sub_events()) {
    const std::int32_t id =
        ParseNodeId(flatbuffers::GetStringView(sub_event->name()));
    if (id != -1) {
      ids.push_back(id);
    }
  }
  std::sort(ids.begin(), ids.end());
  return static_cast<std::size_t>(
      std::distance(ids.begin(), std::unique(ids.begin(), ids.end())));
}

// Writes the line of `event` and, one step deeper, those of its sub-events. An
// operation's percentage is that of `parent_value`, the value of the enclosing
// event, which is 0 for a top-level event.
void WriteEventTree(std::ostream& stream, const ProfilingEvent& event,
                    std::int32_t depth, std::uint64_t parent_value) {
  stream << std::string(static_cast<std::size_t>(depth) * 4, ' ');
  WriteEventLine(stream, event, parent_value);
  if (flatbuffers::VectorLength(event.sub_events()) == 0) {
    return;
  }
  for (const ProfilingEvent* sub_event : *event.sub_events()) {
    WriteEventTree(stream, *sub_event, depth + 1, event.value());
  }
  if (event.type() ==
      ProfileEventType::ORX_PROFILE_EVENTTYPE_GRAPH_EXECUTE_ACCEL_TIME_CYCLE) {
    stream << "            Number of Nodes: " << CountNodes(event) << '\n';
  }
}

}  // namespace

bool WriteEventData(std::ostream& stream, const ProfilingLog* root,
                    const std::vector<StatisticsMap>& statistics,
                    std::int32_t first, std::int32_t end,
                    std::int32_t num_warmup) {
  if (root == nullptr || statistics.empty()) {
    return false;
  }
  for (std::int32_t i = first; i < end; ++i) {
    const ProfilingMessage& message = MessageAt(*root->messages(), i);
    stream << "        Graph index: " << message.graph_index() << '\n';
    if (message.events() != nullptr) {
      for (const ProfilingEvent* event : *message.events()) {
        WriteEventTree(stream, *event, kTopLevelDepth, 0);
      }
    }
    stream << '\n';
  }
  WriteSummary(stream, statistics, num_warmup);
  return true;
}

void WritePercentField(std::ostream& stream, float percent) {
  // The notation is for the figures after this one. The percentage itself is
  // not formatted through the stream, because a detailed log has one for every
  // operation of every run, and the stream is slow.
  stream << std::fixed << std::setprecision(2);
  // Only a share of 0 in 0 is NaN. Its sign differs between machines, so it is
  // fixed here.
  stream << std::setw(5) << (std::isnan(percent) ? "-nan" : FixedText(percent))
         << "% | ";
}

}  // namespace lumo
