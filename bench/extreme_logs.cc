// Builds logs of extreme shapes, event by event.

#include "extreme_logs.h"

#include <cstddef>
#include <string>

#include <flatbuffers/flatbuffers.h>

#include "large_log.h"
#include "profiling_log_generated.h"

namespace lumo {
namespace {

using flatbuffers::FlatBufferBuilder;
using flatbuffers::Offset;
using Events = std::vector<Offset<ProfilingEvent>>;

constexpr auto kMicrosec = ProfileEventUnit::ORX_PROFILE_EVENTUNIT_MICROSEC;

Offset<ProfilingEvent> MakeEvent(FlatBufferBuilder* builder,
                                 const std::string& name) {
  return CreateProfilingEventDirect(*builder, name.c_str(),
                                    ProfileEventType::NONE, 7, kMicrosec);
}

Offset<ProfilingMessage> MakeMessage(FlatBufferBuilder* builder,
                                     std::int64_t graph, const Events& events) {
  return CreateProfilingMessageDirect(*builder, 0,
                                      static_cast<std::uint64_t>(graph),
                                      BackendId::ORX_BACKEND_ID_DSP, &events);
}

std::vector<std::uint8_t> Finish(
    FlatBufferBuilder* builder,
    const std::vector<Offset<ProfilingMessage>>& messages) {
  builder->Finish(CreateProfilingLogDirect(*builder, "2.4.0", "2.14.0",
                                           "0.21.0", "2026-03-04", &messages));
  return {builder->GetBufferPointer(),
          builder->GetBufferPointer() + builder->GetSize()};
}

}  // namespace

std::vector<std::uint8_t> MakeManyOperations(std::int64_t count) {
  return MakeLargeLog({1, 1, count, 0});
}

std::vector<std::uint8_t> MakeManyGraphs(std::int64_t count) {
  FlatBufferBuilder builder;
  std::vector<Offset<ProfilingMessage>> messages;
  for (std::int64_t graph = 0; graph < count; ++graph) {
    const char* const name = graph < count / 2 ? "N (finalize)" : "N (execute)";
    messages.push_back(
        MakeMessage(&builder, graph, {MakeEvent(&builder, name)}));
  }
  return Finish(&builder, messages);
}

std::vector<std::uint8_t> MakeManyEvents(std::int64_t count) {
  FlatBufferBuilder builder;
  Events events;
  for (std::int64_t i = 0; i < count; ++i) {
    events.push_back(
        MakeEvent(&builder, "Step " + std::to_string(i) + " (execute)"));
  }
  return Finish(&builder,
                {MakeMessage(&builder, 0, {MakeEvent(&builder, "(finalize)")}),
                 MakeMessage(&builder, 0, events)});
}

std::vector<std::uint8_t> MakeLongName(std::int64_t length) {
  FlatBufferBuilder builder;
  const std::string name =
      "node_id_" + std::string(static_cast<std::size_t>(length), '1');
  const Events nodes = {CreateProfilingEventDirect(
      builder, name.c_str(), ProfileEventType::ORX_PROFILE_EVENTTYPE_NODE, 7,
      kMicrosec)};
  const Events events = {CreateProfilingEventDirect(
      builder, "(execute)",
      ProfileEventType::ORX_PROFILE_EVENTTYPE_GRAPH_EXECUTE_ACCEL_TIME_CYCLE, 9,
      kMicrosec, &nodes)};
  return Finish(&builder,
                {MakeMessage(&builder, 0, {MakeEvent(&builder, "(finalize)")}),
                 MakeMessage(&builder, 0, events)});
}

}  // namespace lumo
