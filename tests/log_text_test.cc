// The whole log as text: what the library would make of it, and where it goes.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include <flatbuffers/minireflect.h>
#include <gtest/gtest.h>

#include "app/profile_viewer.h"
#include "log/log_file.h"
#include "profiling_log_generated.h"
#include "report/log_text.h"

namespace lumo {
namespace {

using Bytes = std::vector<std::uint8_t>;

// Returns a log with every number that the enumerations name, some that they do
// not, and the largest numbers.
Bytes MakeLogOfNumbers() {
  constexpr auto kLargest = std::numeric_limits<std::uint64_t>::max();
  flatbuffers::FlatBufferBuilder builder;
  std::vector<flatbuffers::Offset<ProfilingEvent>> events;
  for (const ProfileEventType type : EnumValuesProfileEventType()) {
    events.push_back(CreateProfilingEvent(builder, 0, type));
  }
  for (const ProfileEventUnit unit : EnumValuesProfileEventUnit()) {
    events.push_back(
        CreateProfilingEvent(builder, 0, {}, kLargest - events.size(), unit));
  }
  for (const std::uint32_t unnamed : {5U, 401U, 4294967295U}) {
    events.push_back(CreateProfilingEventDirect(
        builder, "\"\\\n\x01\xc3\xa9", ProfileEventType{unnamed}, kLargest / 10,
        ProfileEventUnit{unnamed}));
  }
  std::vector<flatbuffers::Offset<ProfilingMessage>> messages;
  for (const std::uint32_t backend :
       {0U, 1U, 3U, 4U, 5U, 6U, 7U, 4294967295U}) {
    messages.push_back(CreateProfilingMessageDirect(
        builder, kLargest, kLargest, BackendId{backend}, &events));
  }
  builder.Finish(CreateProfilingLogDirect(builder, "", nullptr, "2.4.0",
                                          "2026-03-04", &messages));
  return {builder.GetBufferPointer(),
          builder.GetBufferPointer() + builder.GetSize()};
}

void ExpectTheLibrarysText(const Bytes& log) {
  std::string error;
  if (VerifyLog(log, &error) != nullptr) {
    EXPECT_EQ(
        LogTextConverter().RenderLogText(log),
        flatbuffers::FlatBufferToString(log.data(), ProfilingLogTypeTable()));
  }
}

TEST(LogText, IsTheLibrarys) {
  const Bytes numbers = MakeLogOfNumbers();
  std::string error;
  ASSERT_NE(VerifyLog(numbers, &error), nullptr);
  ExpectTheLibrarysText(numbers);
  std::size_t logs = 0;
  for (const auto& entry :
       std::filesystem::recursive_directory_iterator(LUMO_CASE_LOGS)) {
    Bytes log;
    if (entry.is_regular_file() && ReadLogFile(entry.path(), &log, &error)) {
      SCOPED_TRACE(entry.path());
      ExpectTheLibrarysText(log);
      ++logs;
    }
  }
  EXPECT_GT(logs, 40U);
}

TEST(LogText, IsWrittenAsOneLineOnRequest) {
  std::ostringstream out;
  std::ostringstream err;
  ProfileViewer viewer({out, err});
  ASSERT_TRUE(viewer.LoadProfilingLog(LUMO_CASE_LOGS "/every_kind/log.bin") &&
              viewer.ReadDataFromLog());
  viewer.output = "/dev/null";
  viewer.log_text_path = "log_text.txt";
  ASSERT_TRUE(viewer.ExportData());
  std::ifstream file(viewer.log_text_path);
  std::remove(viewer.log_text_path.c_str());
  std::string text;
  std::getline(file, text);
  EXPECT_TRUE(text.starts_with("{ profiler_api_version: \"2.4.0\", orx_api_"));
  EXPECT_TRUE(text.ends_with("graph_index: 1, events: [  ] } ] }")) << text;
  EXPECT_TRUE(file.peek() == std::ifstream::traits_type::eof());
  EXPECT_EQ(out.str() + err.str(), "");

  viewer.output.clear();
  viewer.log_text_path = "missing/log_text.txt";
  EXPECT_FALSE(viewer.ExportData());
  EXPECT_EQ(out.str(),
            "[Profile Viewer] Error: Failed to create missing/log_text.txt.\n");
  EXPECT_EQ(err.str(),
            "Error in lumo-profile-viewer function at ExportData:314\n");
}

}  // namespace
}  // namespace lumo
