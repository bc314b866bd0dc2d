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
  std::optional<double> confidence = lumo::kDefaultConfidence;
  std::optional<double> max_slowdown;
  bool csv = false;
  std::string output;
  std::string before;
  std::string after;
};

// Sets `options`. Returns the exit status, or nothing if the run continues.
std::optional<int> ParseOptions(int argc, char** argv, Options* options) {
  using lumo::Percentage;
  std::vector<std::string> logs;
  if (const std::optional<int> status = lumo::ParseCommandLine(
          kProgram, argc, argv,
          {{"num_warmup", &options->num_warmup},
           {"confidence",
            Percentage{&options->confidence, Percentage::kBetween0And100}},
           {"max_slowdown",
            Percentage{&options->max_slowdown, Percentage::kFrom0}},
           {"csv", &options->csv},
           {"output", &options->output}},
          2, &logs)) {
    return status;
  }
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
      before->series, after->series, options.num_warmup, *options.confidence);
  const int status = lumo::WriteOutput(
      kProgram, options.output, {options.before, options.after}, "comparison",
      [&](std::ostream& stream) {
        if (options.csv) {
          lumo::WriteComparisonRows(stream, all_runs);
        } else {
          lumo::WriteComparison(stream, all_runs,
                                {options.before, options.after,
                                 options.num_warmup, *options.confidence},
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
