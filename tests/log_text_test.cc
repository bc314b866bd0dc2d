// The whole log as text: the same text as FlatBuffers renders, and its file.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <flatbuffers/minireflect.h>
#include <gtest/gtest.h>

#include "log/log.h"
#include "profiling_log_generated.h"
#include "report/log_text.h"
#include "viewer/profile_viewer.h"

namespace lumo {
namespace {

// The logs of all cases: the samples, every number with a name, numbers without
// a name, the largest numbers, and escaped characters.
TEST(LogText, IsEqualToFlatBufferToString) {
  std::size_t valid_logs = 0;
  for (const auto& entry :
       std::filesystem::recursive_directory_iterator(LUMO_CASE_LOGS)) {
    const std::vector<std::uint8_t> log = ReadLogFile(entry.path()).bytes;
    std::string error;
    if (VerifyLog(log, &error) != nullptr) {
      EXPECT_EQ(
          LogTextConverter().RenderLogText(log),
          flatbuffers::FlatBufferToString(log.data(), ProfilingLogTypeTable()))
          << entry.path();
      ++valid_logs;
    }
  }
  EXPECT_GT(valid_logs, 40U);
}

TEST(LogText, IsWrittenAsOneLineOnRequest) {
  std::ostringstream out;
  std::ostringstream err;
  for (const std::string path : {"log_text.txt", "missing/log_text.txt"}) {
    ProfileViewer viewer({out, err});
    ASSERT_TRUE(viewer.LoadProfilingLog(LUMO_CASE_LOGS "/every_kind/log.bin") &&
                viewer.ReadDataFromLog());
    viewer.output = "report.txt";
    viewer.log_text_path = path;
    EXPECT_EQ(viewer.ExportData(), path == "log_text.txt");
    EXPECT_TRUE(std::filesystem::remove(viewer.output));
  }
  EXPECT_EQ(out.str(),
            "[Profile Viewer] Error: Failed to create missing/log_text.txt.\n");
  EXPECT_EQ(err.str(),
            "Error in lumo-profile-viewer function at ExportData:314\n");
  std::ostringstream text;
  text << std::ifstream("log_text.txt").rdbuf();
  std::filesystem::remove("log_text.txt");
  EXPECT_TRUE(text.str().starts_with("{ profiler_api_version: \"2.4.0\", o"));
  EXPECT_TRUE(text.str().ends_with("graph_index: 1, events: [  ] } ] }"));
}

}  // namespace
}  // namespace lumo
