// The forms of an event's line and the recursion through its tree.

#include "report/event_listing.h"

#include <algorithm>
#include <charconv>
#include <system_error>

#include <flatbuffers/flatbuffers.h>

#include "model/event_unit.h"
#include "model/message_grouping.h"
#include "report/percent_field.h"
#include "report/summary.h"

namespace lumo {
namespace {

constexpr std::int32_t kMessageDepth = 3;

// The deepest line of a verified log stands at depth 64: 3 for a top-level
// event and 61 levels below it.
constexpr std::string_view kBlanks =
    "                                                                "
    "                                                                "
    "                                                                "
    "                                                                ";

void WriteIndentation(std::ostream& stream, std::int32_t depth) {
  stream << kBlanks.substr(0, static_cast<std::size_t>(depth) * 4);
}

void WriteEventLine(std::ostream& stream, const ProfilingEvent& event,
                    std::uint64_t parent_value) {
  const std::string_view name = flatbuffers::GetStringView(event.name());
  const std::uint64_t value = event.value();
  switch (event.type()) {
    case ProfileEventType::ORX_PROFILE_EVENTTYPE_NODE:
      WritePercentField(stream, static_cast<float>(value) /
                                    static_cast<float>(parent_value) * 100.0F);
      break;
    case ProfileEventType::ORX_PROFILE_EVENTTYPE_NODE_CRITICAL_BG_OP_ID:
    case ProfileEventType::ORX_PROFILE_EVENTTYPE_NODE_WAIT_BG_OP_ID:
      stream << name << '\n';
      return;
    case ProfileEventType::ORX_PROFILE_EVENTTYPE_NODE_RESOURCEMASK:
      stream << name << ": "
             << ResourceMaskText(static_cast<std::uint8_t>(value)) << '\n';
      return;
    default:
      break;
  }
  stream << name << ": " << value << ' ' << UnitText(event.unit()) << '\n';
}

// Returns how many different nodes the direct sub-events of `event` name.
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

}  // namespace

bool WriteEventData(std::ostream& stream, const ProfilingLog* root,
                    const std::vector<StatisticsMap>& statistics,
                    std::int32_t first, std::int32_t end,
                    std::int32_t num_warmup) {
  if (root == nullptr || statistics.empty()) {
    return false;
  }
  for (std::int32_t i = first; i < ClipToMessages(root->messages(), end); ++i) {
    const ProfilingMessage& message =
        *root->messages()->Get(static_cast<flatbuffers::uoffset_t>(i));
    stream << "        Graph index: " << message.graph_index() << '\n';
    if (message.events() != nullptr) {
      for (const ProfilingEvent* event : *message.events()) {
        WriteEventTree(stream, *event, kMessageDepth, 0);
      }
    }
    stream << '\n';
  }
  WriteSummary(stream, statistics, num_warmup);
  return true;
}

void WriteEventTree(std::ostream& stream, const ProfilingEvent& event,
                    std::int32_t depth, std::uint64_t parent_value) {
  WriteIndentation(stream, depth);
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

std::string ResourceMaskText(std::uint8_t mask) {
  constexpr std::string_view kEngines[] = {"VPU", "TMU", "DMA"};
  std::string text;
  unsigned bit = 1;
  for (const std::string_view engine : kEngines) {
    if ((mask & bit) != 0) {
      text += text.empty() ? "" : ", ";
      text += engine;
    }
    bit <<= 1;
  }
  return text;
}

std::int32_t ParseNodeId(std::string_view name) {
  constexpr std::string_view kPrefix = "node_id_";
  if (!name.starts_with(kPrefix) ||
      name.find(kPrefix, 1) != std::string_view::npos) {
    return -1;
  }
  const std::size_t digits = name.find_first_of("0123456789");
  if (digits == std::string_view::npos) {
    return -1;
  }
  std::int32_t id = -1;
  const auto [end, failure] =
      std::from_chars(name.data() + digits, name.data() + name.size(), id);
  return failure == std::errc() ? id : -1;
}

}  // namespace lumo
