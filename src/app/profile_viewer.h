// The viewer: one object, one run, four steps.

#ifndef LUMO_APP_PROFILE_VIEWER_H_
#define LUMO_APP_PROFILE_VIEWER_H_

#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include "model/op_averages.h"
#include "model/run_statistics.h"
#include "model/top_ops.h"
#include "profiling_log_generated.h"

namespace lumo {

// The steps are called once each, in their order, and each only after the one
// before it returned true. A step that returns false has written what it found
// wrong as one line to standard output.
class ProfileViewer {
 public:
  ProfileViewer() = default;
  ProfileViewer(const ProfileViewer&) = delete;
  ProfileViewer& operator=(const ProfileViewer&) = delete;

  // Sets the options below and echoes each on standard output. Returns false
  // where a number cannot be read or no input is named. Does not return for
  // --help and for an option that it does not know: the usage text is printed
  // and the process ends with status 0.
  bool ParseCommandLine(int argc, char** argv);

  // Reads and verifies the log at `path`. Returns false where it cannot be
  // opened or is no well-formed log.
  bool LoadProfilingLog(const std::string& path);

  // The second half of LoadProfilingLog(): takes bytes instead of a file.
  bool AcceptLog(std::vector<std::uint8_t> bytes);

  // Computes everything that the report shows. May lower `num_warmup` to 1.
  // Returns false where the log lacks a kind of message, a message belongs to
  // no graph or a series is shorter than the warm-up.
  bool ReadDataFromLog();

  // Writes the report to `output`, or to standard output where that is empty.
  // Returns false where a file cannot be created. Whether all of the text could
  // be written is not known.
  bool ExportData();

  // Returns the report. Part of ExportData(); to be called once.
  std::string ComposeReport();

  // The options, see PrintUsage(). No option sets `log_text_path`, where
  // ExportData() writes the whole log as text.
  std::string input_profile_data;
  std::string log_text_path;
  std::string output;
  std::int32_t topK = 5;
  std::int32_t num_warmup = 1;

 private:
  bool CheckMessageCounts();
  void CheckWarmupCount();
  bool WriteTextFile(const std::string& path, const std::string& text) const;

  // The bytes of the log, and the root table within them. Every name in the
  // results below points into these bytes too.
  std::vector<std::uint8_t> log_storage;
  const ProfilingLog* root = nullptr;

  // The report while it is composed. Its notation for floats is never reset:
  // what one section sets holds for those behind it.
  std::stringstream report_stream;

  // The numbers of different graphs, finalize messages and execute messages.
  // The finalize messages are those at positions 0 to prepare_count - 1, the
  // execute messages the inference_count behind them, whatever they hold.
  std::int32_t graph_count = 0;
  std::int32_t prepare_count = 0;
  std::int32_t inference_count = 0;

  // Element g of each belongs to graph g; each has graph_count elements.
  std::vector<StatisticsMap> finalize_statistics;
  std::vector<StatisticsMap> execute_statistics;
  std::vector<OpAverageMap> op_averages;
  std::vector<std::vector<TopOpEntry>> top_ops;
};

// Writes the options and their meaning to standard output.
void PrintUsage();

}  // namespace lumo

#endif  // LUMO_APP_PROFILE_VIEWER_H_
