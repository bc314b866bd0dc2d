// Builds large logs, similar to those that a delegate writes for networks.

#include "large_log.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include <flatbuffers/flatbuffers.h>

#include "profiling_log_generated.h"

namespace lumo {
namespace {

using flatbuffers::FlatBufferBuilder;
using flatbuffers::Offset;
using Events = std::vector<Offset<ProfilingEvent>>;

constexpr std::int64_t kEventsBesideNodes = 3;

constexpr std::array<std::string_view, 5> kLayers = {
    "Conv2D", "DepthwiseConv2D", "FullyConnected", "ElementWiseAdd", "Softmax"};

struct SubEventKind {
  ProfileEventType type;
  ProfileEventUnit unit;
  std::string_view suffix;
};

constexpr auto kCycles = ProfileEventUnit::ORX_PROFILE_EVENTUNIT_CYCLES;
constexpr auto kMicrosec = ProfileEventUnit::ORX_PROFILE_EVENTUNIT_MICROSEC;

constexpr std::array<SubEventKind, 5> kSubEvents = {{
    {ProfileEventType::ORX_PROFILE_EVENTTYPE_NODE_WAIT, kCycles, " wait"},
    {ProfileEventType::ORX_PROFILE_EVENTTYPE_NODE_OVERLAP, kCycles, " overlap"},
    {ProfileEventType::ORX_PROFILE_EVENTTYPE_NODE_WAIT_OVERLAP, kCycles,
     " wait overlap"},
    {ProfileEventType::ORX_PROFILE_EVENTTYPE_NODE_RESOURCEMASK,
     ProfileEventUnit::NONE, " resources"},
    {ProfileEventType::ORX_PROFILE_EVENTTYPE_NODE_WAIT_BG_OP_ID,
     ProfileEventUnit::NONE, " background op"},
}};

// A value that differs by at most 1 percent from `middle`.
std::uint64_t Vary(std::int64_t middle, std::int64_t run) {
  return static_cast<std::uint64_t>(middle +
                                    middle * (run * 37 % 21 - 10) / 1000);
}

Offset<ProfilingEvent> MakeEvent(FlatBufferBuilder* builder,
                                 const std::string& name, ProfileEventType type,
                                 std::uint64_t value, ProfileEventUnit unit,
                                 const Events& sub_events) {
  const auto name_offset = builder->CreateString(name);
  const auto events =
      sub_events.empty() ? 0 : builder->CreateVector(sub_events);
  return CreateProfilingEvent(*builder, name_offset, type, value, unit, events);
}

Offset<ProfilingEvent> MakeNode(FlatBufferBuilder* builder,
                                const LogShape& shape, std::int64_t operation,
                                std::int64_t run) {
  const auto layer = static_cast<std::size_t>(operation) % kLayers.size();
  const std::string name = "node_id_" + std::to_string(3 * operation + 2) +
                           ":" + std::string(kLayers[layer]);
  const std::uint64_t value = Vary(20000 + 1700 * (operation % 50), run);
  Events sub_events;
  for (std::int64_t i = 0; i < shape.sub_events; ++i) {
    const SubEventKind& kind =
        kSubEvents[static_cast<std::size_t>(i) % kSubEvents.size()];
    sub_events.push_back(MakeEvent(builder, name + std::string(kind.suffix),
                                   kind.type, value / 10, kind.unit, {}));
  }
  return MakeEvent(builder, name, ProfileEventType::ORX_PROFILE_EVENTTYPE_NODE,
                   value, kCycles, sub_events);
}

Offset<ProfilingMessage> MakeMessage(FlatBufferBuilder* builder,
                                     std::int64_t graph, const Events& events) {
  return CreateProfilingMessage(*builder, 1, static_cast<std::uint64_t>(graph),
                                BackendId::ORX_BACKEND_ID_KAU,
                                builder->CreateVector(events));
}

Offset<ProfilingMessage> MakeExecute(FlatBufferBuilder* builder,
                                     const LogShape& shape, std::int64_t graph,
                                     std::int64_t run) {
  Events nodes;
  for (std::int64_t i = 0; i < shape.operations; ++i) {
    nodes.push_back(MakeNode(builder, shape, i, run));
  }
  const std::string name = "Network_" + std::to_string(graph) + " (execute)";
  const Events events = {
      MakeEvent(builder, name, ProfileEventType::ORX_PROFILE_EVENTTYPE_EXECUTE,
                Vary(45000, run), kMicrosec, {}),
      MakeEvent(builder, "Accelerator time",
                ProfileEventType::
                    ORX_PROFILE_EVENTTYPE_GRAPH_EXECUTE_ACCEL_TIME_MICROSEC,
                Vary(43000, run), kMicrosec, {}),
      MakeEvent(builder, "Accelerator time (execute)",
                ProfileEventType::
                    ORX_PROFILE_EVENTTYPE_GRAPH_EXECUTE_ACCEL_TIME_CYCLE,
                Vary(50000 * shape.operations, run), kCycles, nodes),
  };
  return MakeMessage(builder, graph, events);
}

}  // namespace

std::int64_t CountTables(const LogShape& shape) {
  const std::int64_t nodes = shape.operations * (1 + shape.sub_events);
  const std::int64_t execute = 1 + kEventsBesideNodes + nodes;
  return 1 + shape.graphs * (2 + shape.executes * execute);
}

std::vector<std::uint8_t> MakeLargeLog(const LogShape& shape) {
  FlatBufferBuilder builder(1U << 20U);
  std::vector<Offset<ProfilingMessage>> messages;
  for (std::int64_t graph = 0; graph < shape.graphs; ++graph) {
    const std::string name = "Network_" + std::to_string(graph) + " (finalize)";
    messages.push_back(
        MakeMessage(&builder, graph,
                    {MakeEvent(&builder, name,
                               ProfileEventType::ORX_PROFILE_EVENTTYPE_FINALIZE,
                               230000, kMicrosec, {})}));
  }
  for (std::int64_t run = 0; run < shape.executes; ++run) {
    for (std::int64_t graph = 0; graph < shape.graphs; ++graph) {
      messages.push_back(MakeExecute(&builder, shape, graph, run));
    }
  }
  builder.Finish(CreateProfilingLog(
      builder, builder.CreateString("2.4.0"), builder.CreateString("2.14.0"),
      builder.CreateString("0.21.0"), builder.CreateString("2026-03-04"),
      builder.CreateVector(messages)));
  return {builder.GetBufferPointer(),
          builder.GetBufferPointer() + builder.GetSize()};
}

}  // namespace lumo
