// The viewer: one object, one run, four steps; and the lines that report a
// failure.

#ifndef LUMO_VIEWER_PROFILE_VIEWER_H_
#define LUMO_VIEWER_PROFILE_VIEWER_H_

#include <cstdint>
#include <ostream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "model/message_groups.h"
#include "model/op_averages.h"
#include "model/run_statistics.h"
#include "profiling_log_generated.h"
#include "report/log_text.h"

namespace lumo {

// The two streams of a run. They must outlive it. Each line to `out` is
// flushed, the report is not.
struct Console {
  // Standard output: echoed options, a warning, errors and, without --output,
  // the report.
  std::ostream& out;
  // Standard error: the step that failed.
  std::ostream& err;
};

// Call each step once, in their order, and only if the previous one returned
// true. A step that returns false has written one line about the problem to
// standard output.
//
// One object owns everything of a run, and its members have the names of the
// options: both are required, so please keep them.
class ProfileViewer {
 public:
  // The streams must outlive the viewer. If memory runs out, the process
  // aborts: a truncated report is never written.
  explicit ProfileViewer(const Console& streams);
  // `root` points into `log_storage`.
  ProfileViewer(const ProfileViewer&) = delete;
  ProfileViewer& operator=(const ProfileViewer&) = delete;

  // Sets the options below and echoes each on standard output. Returns false if
  // a number cannot be read or there is no input. For --help, and for an option
  // that is unknown or lacks its argument, prints the usage text and ends the
  // process with status 0; getopt_long() reports a wrong option on standard
  // error.
  bool ParseCommandLine(int argc, char** argv);

  // Loads the file at `path` as the log of this run. Returns false if the file
  // cannot be opened or is not a well-formed log.
  bool LoadProfilingLog(const std::string& path);

  // As LoadProfilingLog(), but for a log that is in memory already.
  bool TakeLog(std::vector<std::uint8_t> bytes);

  // Computes everything that the report shows. May lower `num_warmup` to 1.
  // Returns false if the log has no finalize or no execute message, if a run
  // belongs to no graph, or if there are statistics to compute and `num_warmup`
  // is negative or exceeds the number of values of a series.
  bool ReadDataFromLog();

  // Writes the report to `output`, or to standard output if that is empty.
  // Returns false if a file cannot be created or is the log. Write errors are
  // not reported.
  bool ExportData();

  // Returns the report that ExportData() writes. Call only one of the two.
  std::string ComposeReport();

  // The options, as --help explains them. No option sets `log_text_path`, where
  // ExportData() would write the whole log as text.
  std::string input_profile_data;
  std::string log_text_path;
  std::string output;
  std::int32_t topK = 5;
  std::int32_t num_warmup = 1;

 private:
  // Does the work of ReadDataFromLog(). Sets `error` if it returns false.
  bool ComputeResults(std::string* error);

  // Sets the counts and the ranges below. Returns false, with the reason in
  // `error`, if a count is 0 or a run belongs to no graph.
  bool CheckMessageCounts(const MessageGroups& groups, std::string* error);

  // Sets `num_warmup` to 1, with a warning, if the log has fewer execute runs.
  void CheckWarmupCount();

  // Adds a heading, the messages of `runs` and the summary of their statistics
  // to the report.
  void WriteSection(const char* heading,
                    const std::vector<StatisticsMap>& statistics,
                    const MessageRange& runs);

  // Creates or truncates the file at `path` and writes `text`. Returns false,
  // after an error line, if the file cannot be created or is the log.
  bool WriteTextFile(const std::string& path, const std::string& text) const;

  const Console console;

  // The path of the log, which must never be written to. Empty if the log did
  // not come from a file.
  std::string loaded_path;

  // The bytes of the log, and the root table within them. The names in the
  // results below point into these bytes.
  std::vector<std::uint8_t> log_storage;
  const ProfilingLog* root = nullptr;

  // The report while it is composed. The notation for floats that one section
  // sets stays for the sections after it, as the report requires.
  std::stringstream report_stream;

  LogTextConverter log_text_converter;

  // The numbers of graphs, finalize messages and execute messages, and the
  // messages that are the runs of each kind, see MessageGroups.
  std::int32_t graph_count = 0;
  std::int32_t prepare_count = 0;
  std::int32_t inference_count = 0;
  MessageRange finalize_runs = {};
  MessageRange execute_runs = {};

  // Element g belongs to graph g; there are graph_count elements.
  std::vector<StatisticsMap> finalize_statistics;
  std::vector<StatisticsMap> execute_statistics;
  std::vector<OpAverageMap> op_averages;
  std::vector<std::vector<TopOpEntry>> top_ops;
};

// Writes "[Profile Viewer] Error: " and `text` as a line to `console.out`.
// Returns false, for a step to return in turn.
bool ReportError(const Console& console, std::string_view text);

// Writes the step that failed to `console.err`. Returns false. Scripts search
// for these lines, so their words and numbers are fixed, even though the
// numbers are no longer lines of the source.
bool ReportLocation(const Console& console, std::string_view step, int number);

}  // namespace lumo

#endif  // LUMO_VIEWER_PROFILE_VIEWER_H_
