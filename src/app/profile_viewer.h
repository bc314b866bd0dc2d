// The viewer: one object, one run, four steps.

#ifndef LUMO_APP_PROFILE_VIEWER_H_
#define LUMO_APP_PROFILE_VIEWER_H_

#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include "app/console.h"
#include "model/message_groups.h"
#include "model/op_averages.h"
#include "model/run_statistics.h"
#include "profiling_log_generated.h"
#include "report/log_text.h"

namespace lumo {

// The steps are called once each, in their order, and each only after the one
// before it returned true. A step that returns false has written what it found
// wrong as one line to standard output.
class ProfileViewer {
 public:
  // The streams must outlive the viewer. A report that memory does not suffice
  // for ends the process: it is never cut.
  explicit ProfileViewer(const Console& streams);
  // `root` points into `log_storage`.
  ProfileViewer(const ProfileViewer&) = delete;
  ProfileViewer& operator=(const ProfileViewer&) = delete;

  // Sets the options below and echoes each on standard output. Returns false if
  // a number cannot be read or no input is named. Does not return for --help,
  // and for an option that is unknown or lacks its argument, which
  // getopt_long() has then named on standard error: prints the usage text and
  // ends the process with status 0.
  bool ParseCommandLine(int argc, char** argv);

  // Takes the content of the file at `path` as the log of this run. Returns
  // false if the file cannot be opened or is not a well-formed log.
  bool LoadProfilingLog(const std::string& path);

  // Takes `bytes` as the log of this run. Returns false if they are not a
  // well-formed log.
  bool TakeLog(std::vector<std::uint8_t> bytes);

  // Computes everything that the report shows. May lower `num_warmup` to 1.
  // Returns false if the log lacks a kind of message, a message belongs to no
  // graph, or there are statistics to compute and `num_warmup` is negative or
  // more than some event has runs.
  bool ReadDataFromLog();

  // Writes the report to `output`, or to standard output if that is empty.
  // Returns false if a file cannot be created, or is the log. Whether all of
  // the text could be written is not known.
  bool ExportData();

  // Returns the report that ExportData() writes. To be called once, and not
  // with ExportData().
  std::string ComposeReport();

  // The options, as --help explains them. No option sets `log_text_path`, where
  // ExportData() would write the whole log as text.
  std::string input_profile_data;
  std::string log_text_path;
  std::string output;
  std::int32_t topK = 5;
  std::int32_t num_warmup = 1;

 private:
  // Sets the counts and the four results below. False, with the reason in
  // `error`, where ReadDataFromLog() returns false.
  bool ComputeResults(std::string* error);

  // Sets the counts and the ranges below. False, with the reason in `error`, if
  // a count is 0 or a run belongs to no graph.
  bool CheckMessageCounts(const MessageGroups& groups, std::string* error);

  // Sets `num_warmup` to 1, with a warning, if there are fewer executes.
  void CheckWarmupCount();

  // Adds a heading, the messages of `runs` and the summary of their statistics
  // to the report.
  void WriteSection(const char* heading,
                    const std::vector<StatisticsMap>& statistics,
                    const MessageRange& runs);

  // Creates or truncates the file at `path` and writes `text`. False, with an
  // error line, if the file cannot be created or is the log.
  bool WriteTextFile(const std::string& path, const std::string& text) const;

  const Console console;

  // Where the log was read from, which must not be written to; empty if it did
  // not come from a file.
  std::string loaded_path;

  // The bytes of the log, and the root table within them. Every name in the
  // results below points into these bytes too.
  std::vector<std::uint8_t> log_storage;
  const ProfilingLog* root = nullptr;

  // The report while it is composed. Its notation for floats is never reset:
  // what one section sets holds for those after it.
  std::stringstream report_stream;

  LogTextConverter log_text_converter;

  // The numbers of different graphs, finalize messages and execute messages,
  // and which messages the runs of each kind are, see MessageGroups.
  std::int32_t graph_count = 0;
  std::int32_t prepare_count = 0;
  std::int32_t inference_count = 0;
  MessageRange finalize_runs = {};
  MessageRange execute_runs = {};

  // Element g of each belongs to graph g; each has graph_count elements.
  std::vector<StatisticsMap> finalize_statistics;
  std::vector<StatisticsMap> execute_statistics;
  std::vector<OpAverageMap> op_averages;
  std::vector<std::vector<TopOpEntry>> top_ops;
};

}  // namespace lumo

#endif  // LUMO_APP_PROFILE_VIEWER_H_
