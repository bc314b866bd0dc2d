// Generates logs with names like those of a delegate.

#include "generated_log.h"

#include <cstddef>
#include <string>
#include <utility>

#include <flatbuffers/flatbuffers.h>

#include "profiling_log_generated.h"

namespace lumo {
namespace {

using flatbuffers::FlatBufferBuilder;
using flatbuffers::Offset;
using Events = std::vector<Offset<ProfilingEvent>>;

constexpr auto kCycles = ProfileEventUnit::ORX_PROFILE_EVENTUNIT_CYCLES;
constexpr auto kMicrosec = ProfileEventUnit::ORX_PROFILE_EVENTUNIT_MICROSEC;

// A value that differs by at most 1 percent from `middle`.
std::uint64_t Vary(std::int64_t middle, std::int64_t run) {
  return static_cast<std::uint64_t>(middle +
                                    middle * (run * 37 % 21 - 10) / 1000);
}

Offset<ProfilingEvent> AddEvent(FlatBufferBuilder* builder,
                                const std::string& name, ProfileEventType type,
                                std::uint64_t value, ProfileEventUnit unit,
                                const Events& sub_events) {
  return CreateProfilingEventDirect(*builder, name.c_str(), type, value, unit,
                                    sub_events.empty() ? nullptr : &sub_events);
}

Offset<ProfilingEvent> AddOperation(FlatBufferBuilder* builder,
                                    const LogShape& shape,
                                    std::int64_t operation, std::int64_t run) {
  const std::string name =
      "node_id_" + std::string(static_cast<std::size_t>(shape.zeros), '0') +
      std::to_string(3 * operation + 2) + ":DepthwiseConv";
  const std::uint64_t value = Vary(20000 + 1700 * (operation % 50), run);
  Events sub_events;
  for (std::int64_t i = 0; i < shape.sub_events; ++i) {
    const Events nested =
        shape.is_nested ? std::exchange(sub_events, {}) : Events();
    sub_events.push_back(
        AddEvent(builder, name + " overlap",
                 ProfileEventType::ORX_PROFILE_EVENTTYPE_NODE_OVERLAP,
                 value / 10, kCycles, nested));
  }
  return AddEvent(builder, name, ProfileEventType::ORX_PROFILE_EVENTTYPE_NODE,
                  value, kCycles, sub_events);
}

Events AddExecuteEvents(FlatBufferBuilder* builder, const LogShape& shape,
                        std::int64_t run) {
  Events operations;
  for (std::int64_t i = 0; i < shape.operations; ++i) {
    operations.push_back(i > 0 && shape.is_shared
                             ? operations.front()
                             : AddOperation(builder, shape, i, run));
  }
  Events events;
  for (std::int64_t i = 0; i < shape.events; ++i) {
    events.push_back(AddEvent(builder,
                              "Step " + std::to_string(i) + " (execute)",
                              ProfileEventType::ORX_PROFILE_EVENTTYPE_EXECUTE,
                              Vary(45000, run), kMicrosec, {}));
  }
  events.push_back(AddEvent(
      builder, "Accelerator (execute)",
      ProfileEventType::ORX_PROFILE_EVENTTYPE_GRAPH_EXECUTE_ACCEL_TIME_CYCLE,
      Vary(50000 * shape.operations, run), kCycles, operations));
  return events;
}

}  // namespace

std::int64_t CountTables(const LogShape& shape) {
  const std::int64_t operations = shape.operations * (1 + shape.sub_events);
  const std::int64_t execute = 1 + shape.events + 1 + operations;
  return 1 + shape.graphs * (2 + shape.executes * execute);
}

std::vector<std::uint8_t> GenerateLog(const LogShape& shape) {
  FlatBufferBuilder builder(1U << 20U);
  std::vector<Offset<ProfilingMessage>> messages;
  // Run -1 is the finalize run.
  for (std::int64_t run = -1; run < shape.executes; ++run) {
    for (std::int64_t graph = 0; graph < shape.graphs; ++graph) {
      const Events events =
          run >= 0 ? AddExecuteEvents(&builder, shape, run)
                   : Events{AddEvent(
                         &builder, "Network (finalize)",
                         ProfileEventType::ORX_PROFILE_EVENTTYPE_FINALIZE,
                         230000, kMicrosec, {})};
      messages.push_back(CreateProfilingMessageDirect(
          builder, 1, static_cast<std::uint64_t>(graph) * shape.graph_step,
          BackendId::ORX_BACKEND_ID_KAU, &events));
    }
  }
  builder.Finish(CreateProfilingLogDirect(builder, "2.4.0", "2.14.0", "0.21.0",
                                          "2026-03-04", &messages));
  return {builder.GetBufferPointer(),
          builder.GetBufferPointer() + builder.GetSize()};
}

}  // namespace lumo
