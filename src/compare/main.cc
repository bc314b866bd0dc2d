// lumo-profile-compare: compares two profiling logs and tests which differences
// are significant.

#include <cstdint>
#include <cstdlib>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include <unistd.h>

#include "cli/messages.h"
#include "cli/options.h"
#include "cli/output.h"
#include "compare/compared_log.h"
#include "compare/comparison.h"
#include "compare/comparison_rows.h"
#include "compare/comparison_text.h"

namespace {

constexpr lumo::Program kProgram = {
    "lumo-profile-compare",
    "usage: lumo-profile-compare [OPTION]... BEFORE AFTER\n"
    "Compares two profiling logs and tests which differences are significant.\n"
    "\n"
    "  --num_warmup W          runs to exclude as warm-up; default: 1\n"
    "  --confidence PERCENT    confidence level of the test; default: 99\n"
    "  --max_slowdown PERCENT  exit with status 3 if a time or a number of "
    "cycles\n"
    "                          rises significantly and by more than this\n"
    "  --csv                   write comma-separated rows for other programs\n"
    "  --output FILE           write to FILE; default: standard output\n"
    "  --help                  print this text and exit\n"
    "  --version               print the version and exit\n"};

constexpr int kTooSlow = 3;

struct Options {
  std::int32_t num_warmup = 1;
  double confidence = lumo::kDefaultConfidence;
  std::optional<double> max_slowdown;
  bool csv = false;
  std::string output;
  std::string before;
  std::string after;
};

// Sets `options`. Returns the exit status, or nothing if the run continues.
std::optional<int> ParseOptions(int argc, char** argv, Options* options) {
  std::optional<std::string> num_warmup;
  std::optional<std::string> confidence;
  std::optional<std::string> max_slowdown;
  std::optional<std::string> output;
  std::vector<std::string> logs;
  if (const std::optional<int> status =
          lumo::ParseCommandLine(kProgram, argc, argv,
                                 {{"num_warmup", &num_warmup},
                                  {"confidence", &confidence},
                                  {"max_slowdown", &max_slowdown},
                                  {"csv", &options->csv},
                                  {"output", &output}},
                                 2, &logs)) {
    return status;
  }
  if (num_warmup &&
      !lumo::ParseWholeNumber(*num_warmup, &options->num_warmup)) {
    return lumo::RejectArgument(kProgram, "--num_warmup", lumo::kWholeNumber,
                                *num_warmup);
  }
  if (confidence &&
      (!lumo::ParsePercentage(*confidence, &options->confidence) ||
       options->confidence <= 0.0 || options->confidence >= 100.0)) {
    return lumo::RejectArgument(kProgram, "--confidence",
                                "a percentage above 0 and below 100",
                                *confidence);
  }
  if (max_slowdown &&
      !lumo::ParsePercentage(*max_slowdown, &options->max_slowdown.emplace())) {
    return lumo::RejectArgument(kProgram, "--max_slowdown",
                                "a percentage of 0 or more", *max_slowdown);
  }
  options->output = output.value_or("");
  if (logs.size() < 2 || logs[0].empty() || logs[1].empty()) {
    return lumo::RejectCommandLine(kProgram, "two logs are required");
  }
  options->before = logs[0];
  options->after = logs[1];
  return std::nullopt;
}

// Returns whether to color lines: on a terminal, unless NO_COLOR is set.
bool UseColor(const std::string& output) {
  const char* const no_color = std::getenv("NO_COLOR");
  return output.empty() && isatty(STDOUT_FILENO) == 1 &&
         (no_color == nullptr || *no_color == '\0');
}

}  // namespace

int main(int argc, char** argv) {
  lumo::PrepareProcess();

  Options options;
  if (const std::optional<int> status = ParseOptions(argc, argv, &options)) {
    return *status;
  }
  std::string error;
  const auto before = lumo::LoadComparedLog(options.before, &error);
  if (!before) {
    return lumo::Fail(kProgram, error);
  }
  const auto after = lumo::LoadComparedLog(options.after, &error);
  if (!after) {
    return lumo::Fail(kProgram, error);
  }
  const std::vector<lumo::ComparedRuns> all_runs = lumo::CompareSeries(
      before->series, after->series, options.num_warmup, options.confidence);
  const int status = lumo::WriteOutput(
      kProgram, options.output, {options.before, options.after}, "comparison",
      [&](std::ostream& stream) {
        if (options.csv) {
          lumo::WriteComparisonRows(stream, all_runs);
        } else {
          lumo::WriteComparison(stream, all_runs,
                                {options.before, options.after,
                                 options.num_warmup, options.confidence},
                                UseColor(options.output));
        }
      });
  if (status != 0 || !options.max_slowdown) {
    return status;
  }
  const std::optional<std::string> slowdown =
      lumo::DescribeWorstSlowdown(all_runs, *options.max_slowdown);
  if (!slowdown) {
    return 0;
  }
  lumo::Fail(kProgram, *slowdown);
  return kTooSlow;
}
