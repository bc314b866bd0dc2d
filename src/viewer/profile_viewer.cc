#include "viewer/profile_viewer.h"

#include <array>
#include <fstream>
#include <utility>

#include "cli/streams.h"
#include "log/log.h"
#include "report/event_listing.h"
#include "report/op_sections.h"
#include "report/report_header.h"

namespace lumo {

ProfileViewer::ProfileViewer(const Console& streams) : console(streams) {
  // Otherwise a failed allocation would silently truncate the report.
  report_stream.exceptions(std::ios::badbit);
}

bool ProfileViewer::LoadProfilingLog(const std::string& path) {
  LogFile log = ReadLogFile(path);
  if (!log.open_error.empty()) {
    return ReportError(console, "Cannot open the input file.");
  }
  // A read error is ignored, as is required: missing bytes count as 0.
  loaded_path = path;
  return TakeLog(std::move(log.bytes));
}

bool ProfileViewer::TakeLog(std::vector<std::uint8_t> bytes) {
  log_storage = std::move(bytes);
  std::string error;
  root = VerifyLog(log_storage, &error);
  if (root == nullptr) {
    return ReportError(console, error);
  }
  return true;
}

bool ProfileViewer::ReadDataFromLog() {
  std::string error;
  if (!ComputeResults(&error)) {
    ReportError(console, error);
    return ReportLocation(console, "ReadDataFromLog", 119);
  }
  return true;
}

bool ProfileViewer::ComputeResults(std::string* error) {
  const MessageGroups groups = GroupMessages(*root);
  if (!CheckMessageCounts(groups, error)) {
    return false;
  }
  const auto finalize_series = CollectEventSeries(groups, RunKind::kFinalize);
  const auto execute_series = CollectEventSeries(groups, RunKind::kExecute);
  const auto node_series = CollectNodeSeries(groups);
  CheckWarmupCount();
  if (!ComputeRunStatistics(finalize_series, num_warmup, &finalize_statistics,
                            error) ||
      !ComputeRunStatistics(execute_series, num_warmup, &execute_statistics,
                            error)) {
    return false;
  }
  for (const EventSeriesMap& graph : node_series) {
    AggregateNodeTimes(graph, topK, &op_averages, &top_ops);
  }
  return true;
}

bool ProfileViewer::CheckMessageCounts(const MessageGroups& groups,
                                       std::string* error) {
  graph_count = groups.graph_count;
  prepare_count = groups.prepare_count;
  inference_count = groups.inference_count;
  finalize_runs = groups.finalize_runs;
  execute_runs = groups.execute_runs;
  if (graph_count < 1 || prepare_count < 1 || inference_count < 1) {
    *error = "Number of graph, prepare, or inference < 1.";
    return false;
  }
  *error = groups.graph_error;
  return error->empty();
}

void ProfileViewer::CheckWarmupCount() {
  // The comparison is defined for the product in 32 bits, which wraps around.
  const auto warmups =
      static_cast<std::int32_t>(static_cast<std::uint32_t>(graph_count) *
                                static_cast<std::uint32_t>(num_warmup));
  if (warmups > inference_count) {
    console.out << "[Profile Viewer] Warning! Number of Warmup: " << num_warmup
                << " > Number of Execution " << inference_count / graph_count
                << ", reset Number of Warmup to 1." << std::endl;
    num_warmup = 1;
  }
}

bool ProfileViewer::ExportData() {
  const std::string report = ComposeReport();
  // Every run is required to render the log, even if the text is not written.
  const std::string log_text = log_text_converter.RenderLogText(log_storage);
  if (output.empty() && log_text_path.empty()) {
    console.out << report;
    return true;
  }
  if (!output.empty() && !WriteTextFile(output, report)) {
    return ReportLocation(console, "ExportData", 311);
  }
  if (!log_text_path.empty() && !WriteTextFile(log_text_path, log_text)) {
    return ReportLocation(console, "ExportData", 314);
  }
  return true;
}

std::string ProfileViewer::ComposeReport() {
  // Reserve memory, which the stream keeps, so that a long report is not
  // reallocated while it grows.
  constexpr std::size_t kBytesPerEvent = 60;
  std::string buffer;
  buffer.reserve(EstimateTextSize(*root, log_storage.size(), kBytesPerEvent));
  report_stream.str(std::move(buffer));

  // As is required, a section that fails is skipped, and the report continues.
  WriteReportHeader(report_stream, root, graph_count, prepare_count,
                    inference_count);
  WriteSection("----------Finalize Info----------", finalize_statistics,
               finalize_runs);
  WriteSection("------------Execute Info------------", execute_statistics,
               execute_runs);
  // Only a detailed log has operations. Graph 0 decides for all graphs.
  if (!op_averages.empty() && !op_averages.front().empty()) {
    WriteOpSections(report_stream, op_averages, top_ops, topK);
  }
  return std::move(report_stream).str();
}

void ProfileViewer::WriteSection(const char* heading,
                                 const std::vector<StatisticsMap>& statistics,
                                 const MessageRange& runs) {
  report_stream << heading << '\n';
  if (!WriteEventData(report_stream, root, statistics, runs.first, runs.end,
                      num_warmup)) {
    ReportError(console, "Fail to write event data to .txt");
  }
}

bool ProfileViewer::WriteTextFile(const std::string& path,
                                  const std::string& text) const {
  // The text is written in one piece and needs no buffer. Allocating a buffer
  // after truncating the file could fail and lose the old report.
  std::array<char, 1> no_buffer{};
  std::ofstream file;
  file.rdbuf()->pubsetbuf(no_buffer.data(), no_buffer.size());
  // Never overwrite the log, by whatever path.
  if (!IsSameFile(path, loaded_path)) {
    file.open(path);
  }
  if (!file.is_open()) {
    return ReportError(console, "Failed to create " + path + ".");
  }
  file << text;
  return true;
}

bool ReportError(const Console& console, std::string_view text) {
  console.out << "[Profile Viewer] Error: " << text << std::endl;
  return false;
}

bool ReportLocation(const Console& console, std::string_view step, int number) {
  // Write one string, because standard error is not buffered.
  const std::string line = "Error in lumo-profile-viewer function at " +
                           std::string(step) + ":" + std::to_string(number) +
                           "\n";
  console.err << line;
  return false;
}

}  // namespace lumo
