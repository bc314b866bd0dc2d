// The steps of a run after the command line.

#include "app/profile_viewer.h"

#include <fstream>
#include <iostream>
#include <utility>

#include <sys/stat.h>

#include "app/console.h"
#include "log/log_file.h"
#include "model/message_grouping.h"
#include "report/event_listing.h"
#include "report/log_text.h"
#include "report/op_sections.h"
#include "report/report_header.h"

namespace lumo {
namespace {

// Returns whether both paths lead to one file, which must exist for that.
bool IsSameFile(const std::string& a, const std::string& b) {
  struct stat a_status = {};
  struct stat b_status = {};
  return stat(a.c_str(), &a_status) == 0 && stat(b.c_str(), &b_status) == 0 &&
         a_status.st_dev == b_status.st_dev &&
         a_status.st_ino == b_status.st_ino;
}

}  // namespace

bool ProfileViewer::LoadProfilingLog(const std::string& path) {
  std::vector<std::uint8_t> bytes;
  if (!ReadLogFile(path, &bytes)) {
    return ReportError("Cannot open the input file.");
  }
  return AcceptLog(std::move(bytes));
}

bool ProfileViewer::AcceptLog(std::vector<std::uint8_t> bytes) {
  log_storage = std::move(bytes);
  root = VerifyLog(log_storage);
  if (root == nullptr) {
    return ReportError(
        "Verify Profiling Log Buffer failed. The buffer might be "
        "ill-formatted");
  }
  return true;
}

bool ProfileViewer::ReadDataFromLog() {
  if (!CheckMessageCounts()) {
    return ReportLocation("ReadDataFromLog", 119);
  }
  const std::int32_t execute_end = prepare_count + inference_count;
  std::string error;
  if (!CheckGraphIndices(*root, execute_end, graph_count, &error)) {
    ReportError(error);
    return ReportLocation("ReadDataFromLog", 119);
  }
  const auto finalize_series =
      CollectEventSeries(*root, 0, prepare_count, graph_count);
  const auto execute_series =
      CollectEventSeries(*root, prepare_count, execute_end, graph_count);
  const auto node_series =
      CollectNodeSeries(*root, prepare_count, execute_end, graph_count);
  CheckWarmupCount();
  if (!ComputeRunStatistics(finalize_series, num_warmup, &finalize_statistics,
                            &error) ||
      !ComputeRunStatistics(execute_series, num_warmup, &execute_statistics,
                            &error)) {
    ReportError(error);
    return ReportLocation("ReadDataFromLog", 119);
  }
  for (const EventSeriesMap& graph : node_series) {
    AggregateNodeTimes(graph, topK, &op_averages, &top_ops);
  }
  return true;
}

bool ProfileViewer::CheckMessageCounts() {
  graph_count = CountGraphs(root->messages());
  prepare_count = CountMessagesWithEventName(root->messages(), "(finalize)");
  inference_count = CountMessagesWithEventName(root->messages(), "(execute)");
  if (graph_count < 1 || prepare_count < 1 || inference_count < 1) {
    return ReportError("Number of graph, prepare, or inference < 1.");
  }
  return true;
}

void ProfileViewer::CheckWarmupCount() {
  // Wraps around at 32 bits: the comparison is defined for that product.
  const auto warmups =
      static_cast<std::int32_t>(static_cast<std::uint32_t>(graph_count) *
                                static_cast<std::uint32_t>(num_warmup));
  if (warmups > inference_count) {
    const std::int32_t executes = inference_count / graph_count;
    std::cout << "[Profile Viewer] Warning! Number of Warmup: " << num_warmup
              << " > Number of Execution " << static_cast<float>(executes)
              << ", reset Number of Warmup to 1." << std::endl;
    num_warmup = 1;
  }
}

bool ProfileViewer::ExportData() {
  const std::string report = ComposeReport();
  // Every run renders the log, whether or not its text is wanted.
  const std::string log_text = RenderLogText(log_storage);
  if (output.empty() && log_text_path.empty()) {
    std::cout << report;
    return true;
  }
  if (!output.empty() && !WriteTextFile(output, report)) {
    return ReportLocation("ExportData", 311);
  }
  if (!log_text_path.empty() && !WriteTextFile(log_text_path, log_text)) {
    return ReportLocation("ExportData", 314);
  }
  return true;
}

std::string ProfileViewer::ComposeReport() {
  const std::int32_t execute_end = prepare_count + inference_count;
  WriteReportHeader(report_stream, root, graph_count, prepare_count,
                    inference_count);
  WriteSection("----------Finalize Info----------", finalize_statistics, 0,
               prepare_count);
  WriteSection("------------Execute Info------------", execute_statistics,
               prepare_count, execute_end);
  // Only a detailed log has operations; graph 0 speaks for all.
  if (!op_averages.empty() && !op_averages.front().empty()) {
    WriteOpSections(report_stream, op_averages, top_ops, topK);
  }
  return std::move(report_stream).str();
}

void ProfileViewer::WriteSection(const char* heading,
                                 const std::vector<StatisticsMap>& statistics,
                                 std::int32_t first, std::int32_t end) {
  report_stream << heading << '\n';
  if (!WriteEventData(report_stream, root, statistics, first, end,
                      num_warmup)) {
    ReportError("Fail to write event data to .txt");
  }
}

bool ProfileViewer::WriteTextFile(const std::string& path,
                                  const std::string& text) const {
  // The log must survive: a path that leads to it, by whatever name, is
  // refused.
  std::ofstream file;
  if (!IsSameFile(path, input_profile_data)) {
    file.open(path);
  }
  if (!file.is_open()) {
    return ReportError("Failed to create " + path + ".");
  }
  file << text;
  return true;
}

}  // namespace lumo
