// Logs at and over the limits, and a small log damaged at every bit.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <unordered_set>
#include <vector>

#include <flatbuffers/flatbuffers.h>
#include <gtest/gtest.h>

#include "log/log_file.h"
#include "model/message_groups.h"
#include "profiling_log_generated.h"
#include "run_viewer.h"

namespace lumo {
namespace {

using Bytes = std::vector<std::uint8_t>;
using Events = std::vector<flatbuffers::Offset<ProfilingEvent>>;

// Returns a log of one message with the events that `make_events` returns.
Bytes MakeLog(
    const std::function<Events(flatbuffers::FlatBufferBuilder*)>& make_events) {
  flatbuffers::FlatBufferBuilder builder;
  const auto events = builder.CreateVector(make_events(&builder));
  const auto message =
      CreateProfilingMessage(builder, 0, 0, BackendId::UNDEFINED, events);
  const auto messages = builder.CreateVector(&message, 1);
  builder.Finish(CreateProfilingLog(builder, 0, 0, 0, 0, messages));
  return {builder.GetBufferPointer(),
          builder.GetBufferPointer() + builder.GetSize()};
}

bool IsValid(const Bytes& log) {
  std::string error;
  return VerifyLog(log, &error) != nullptr;
}

Bytes MakeTree(int levels) {
  return MakeLog([levels](flatbuffers::FlatBufferBuilder* builder) {
    Events events;
    for (int i = 0; i < levels; ++i) {
      const auto sub_events = builder->CreateVector(events);
      ProfilingEventBuilder event(*builder);
      event.add_sub_events(sub_events);
      events = {event.Finish()};
    }
    return events;
  });
}

TEST(Limits, EventsNest62LevelsDeep) {
  EXPECT_TRUE(IsValid(MakeTree(62)));
  EXPECT_FALSE(IsValid(MakeTree(63)));
}

TEST(Limits, EveryVisitOfATableCounts) {
  for (const std::size_t tables : {1000000U, 1000001U}) {
    const Bytes log = MakeLog([=](flatbuffers::FlatBufferBuilder* builder) {
      // The root and the message are two of the tables.
      return Events(tables - 2, ProfilingEventBuilder(*builder).Finish());
    });
    EXPECT_EQ(IsValid(log), tables == 1000000U);
  }
}

// In a hash set of this size, all of these indices would share a bucket, and
// counting them would take minutes.
TEST(Limits, GraphIndicesMayBeChosenToCollide) {
  std::unordered_set<std::uint64_t> hash_set;
  for (std::uint64_t i = 0; i < 300000; ++i) {
    hash_set.insert(i);
  }
  flatbuffers::FlatBufferBuilder builder;
  const auto messages =
      builder.CreateVector<flatbuffers::Offset<ProfilingMessage>>(
          hash_set.size(), [&](std::uint64_t i) {
            return CreateProfilingMessage(builder, 0,
                                          i * hash_set.bucket_count());
          });
  builder.Finish(CreateProfilingLog(builder, 0, 0, 0, 0, messages));
  const auto* log = GetProfilingLog(builder.GetBufferPointer());
  EXPECT_EQ(CountGraphs(log->messages()), 300000);
}

// A run ends with either a report or an error line.
void ExpectAnOutcome(const Bytes& log) {
  const std::string written = RunViewer(log, 2, 1);
  const bool rejected =
      written.find("[Profile Viewer] Error: ") != std::string::npos &&
      written.ends_with('\n');
  const bool reported =
      written.find("[PROFILER API VERSION] : ") != std::string::npos &&
      written.ends_with("\n\n");
  ASSERT_NE(rejected, reported) << written;
}

TEST(DamagedLog, EndsWithAnOutcome) {
  Bytes log;
  log = ReadLogFile(LUMO_CASE_LOGS "/every_kind/log.bin").bytes;
  ASSERT_NE(RunViewer(log, 2, 1).find("---Top 2 by"), std::string::npos);
  for (std::size_t length = 0; length < log.size(); ++length) {
    ASSERT_NO_FATAL_FAILURE(
        ExpectAnOutcome(Bytes(log.data(), log.data() + length)))
        << length << " bytes";
  }
  for (std::size_t bit = 0; bit < log.size() * 8; ++bit) {
    Bytes flipped = log;
    flipped[bit / 8] ^= static_cast<std::uint8_t>(1U << (bit % 8));
    ASSERT_NO_FATAL_FAILURE(ExpectAnOutcome(flipped)) << "bit " << bit;
  }
}

}  // namespace
}  // namespace lumo
