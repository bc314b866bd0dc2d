// lumo-profile-export: writes the events of a profiling log, or the statistics
// of logs, as a table.

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "cli/messages.h"
#include "cli/options.h"
#include "cli/output.h"
#include "export/event_table.h"
#include "export/statistics_table.h"
#include "input/find_logs.h"
#include "input/input_log.h"
#include "log/log.h"
#include "text/escape.h"

namespace {

constexpr lumo::Program kProgram = {
    "lumo-profile-export",
    "usage: lumo-profile-export [OPTION]... LOG\n"
    "       lumo-profile-export --statistics [OPTION]... LOG_OR_FOLDER...\n"
    "Writes the events of a profiling log, or the statistics of logs, as\n"
    "comma-separated rows.\n"
    "\n"
    "  --statistics               write a row for each series of each log\n"
    "  --num_warmup W             runs to exclude from statistics; default: 1\n"
    "  --parts                    add statistics of the events below events "
    "and\n"
    "                             operations\n"
    "  --input_profile_data FILE  another way to name a single log\n"
    "  --output FILE              write to FILE; default: standard output\n"
    "  --help                     print this text and exit\n"
    "  --version                  print the version and exit\n"};

struct Options {
  bool statistics = false;
  lumo::StatisticsOptions statistics_options;
  std::string output;
  // At least one; only one without `statistics`.
  std::vector<std::string> logs;
};

// Sets `options`. Returns the exit status, or nothing if the run continues.
std::optional<int> ParseOptions(int argc, char** argv, Options* options) {
  constexpr std::int32_t kNotGiven = -1;
  lumo::StatisticsOptions& statistics = options->statistics_options;
  std::int32_t num_warmup = kNotGiven;
  std::string input;
  std::vector<std::string>& logs = options->logs;
  if (const std::optional<int> status = lumo::ParseCommandLine(
          kProgram, argc, argv,
          {{"statistics", &options->statistics},
           {"num_warmup", &num_warmup},
           {"parts", &statistics.with_parts},
           {"input_profile_data", &input},
           {"output", &options->output}},
          std::numeric_limits<std::size_t>::max(), &logs)) {
    return status;
  }
  if (!input.empty()) {
    logs.insert(logs.begin(), input);
  }
  if (logs.empty() || logs[0].empty()) {
    return lumo::RejectCommandLine(kProgram, "a log is required");
  }
  if (logs.size() > 1 && (!input.empty() || !options->statistics)) {
    return lumo::RejectCommandLine(
        kProgram, lumo::Printable(logs[1]) + ": unexpected argument");
  }
  if (!options->statistics &&
      (num_warmup != kNotGiven || statistics.with_parts)) {
    return lumo::RejectCommandLine(
        kProgram,
        std::string(statistics.with_parts ? "--parts" : "--num_warmup") +
            " requires --statistics");
  }
  if (num_warmup != kNotGiven) {
    statistics.num_warmup = num_warmup;
  }
  return std::nullopt;
}

// Returns the exit status.
int ExportEvents(const Options& options) {
  std::string error;
  const std::optional<lumo::Log> log = lumo::LoadLog(options.logs[0], &error);
  if (!log) {
    return lumo::Fail(kProgram, error);
  }
  return lumo::WriteOutput(kProgram, options.output, options.logs, "table",
                           [&log](std::ostream& stream) {
                             lumo::WriteEventTable(stream, *log->root);
                           });
}

// Returns the exit status.
int ExportStatistics(const Options& options) {
  std::vector<lumo::FoundLog> found;
  for (const std::string& path : options.logs) {
    for (lumo::FoundLog& log : lumo::FindEachLog(path)) {
      found.push_back(std::move(log));
    }
  }
  std::vector<std::string> paths;
  paths.reserve(found.size());
  for (const lumo::FoundLog& log : found) {
    paths.push_back(log.path);
  }
  std::size_t next = 0;
  std::size_t reported = 0;  // logs whose errors have been printed
  bool is_complete = true;
  // Returns the next log that can be read, after messages about those that
  // cannot.
  const auto load_next = [&]() -> std::optional<lumo::InputLog> {
    while (next < found.size()) {
      lumo::FoundLog& entry = found[next++];
      if (entry.error.empty()) {
        if (auto log = lumo::LoadInputLog(entry.path, &entry.error)) {
          return log;
        }
      }
      is_complete = false;
      if (next > reported) {
        lumo::Fail(kProgram, entry.error);
        reported = next;
      }
    }
    return std::nullopt;
  };

  // Without any log, the output must not be touched.
  std::optional<lumo::InputLog> log = load_next();
  if (!log) {
    return lumo::kFailed;
  }
  const int status = lumo::WriteOutput(
      kProgram, options.output, paths, "table", [&](std::ostream& stream) {
        if (!log) {  // the table is written a second time
          next = 0;
          log = load_next();
        }
        lumo::WriteStatisticsColumns(stream);
        while (log && stream) {
          lumo::WriteStatistics(stream, *log, options.statistics_options);
          stream.flush();
          log.reset();  // before the next log is read
          if (stream) {
            log = load_next();
          }
        }
      });
  return is_complete ? status : lumo::kFailed;
}

}  // namespace

int main(int argc, char** argv) {
  lumo::PrepareProcess();

  Options options;
  if (const std::optional<int> status = ParseOptions(argc, argv, &options)) {
    return *status;
  }
  return options.statistics ? ExportStatistics(options) : ExportEvents(options);
}
