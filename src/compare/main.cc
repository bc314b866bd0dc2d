// lumo-profile-compare: compares profiling logs and tests which differences are
// significant.

#include <algorithm>
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
#include "compare/comparison.h"
#include "compare/comparison_text.h"
#include "compare/gate.h"
#include "compare/side.h"

namespace {

constexpr lumo::Program kProgram = {
    "lumo-profile-compare",
    "usage: lumo-profile-compare [OPTION]... BEFORE AFTER\n"
    "Compares profiling logs and tests which differences are significant.\n"
    "BEFORE and AFTER are each a log, or a folder of logs (files named "
    "*.bin).\n"
    "\n"
    "  --num_warmup W          runs of each log to exclude as warm-up; "
    "default: 1\n"
    "  --confidence PERCENT    confidence level of the test; default: 99\n"
    "  --ignore_node_ids       pair operations by their names without "
    "node_id_N:\n"
    "  --max_slowdown PERCENT  exit with status 3 if an event or operation in "
    "us or\n"
    "                          cycles, of execute or finalize runs, rises\n"
    "                          significantly and by more than this; exit with\n"
    "                          status 1 if none of the execute runs is tested\n"
    "  --csv                   write comma-separated rows for other programs\n"
    "  --output FILE           write to FILE; default: standard output\n"
    "  --help                  print this text and exit\n"
    "  --version               print the version and exit\n"};

constexpr int kTooSlow = 3;

// Returns whether to color lines: on a terminal, unless NO_COLOR is set.
bool UseColor(const std::string& output) {
  const char* const no_color = std::getenv("NO_COLOR");
  return output.empty() && isatty(STDOUT_FILENO) == 1 &&
         (no_color == nullptr || *no_color == '\0');
}

}  // namespace

int main(int argc, char** argv) {
  lumo::PrepareProcess();

  std::int32_t num_warmup = 1;
  std::optional<double> confidence = lumo::kDefaultConfidence;
  std::optional<double> max_slowdown;
  bool ignore_node_ids = false;
  bool csv = false;
  std::string output;
  std::vector<std::string> paths;
  using lumo::Percentage;
  if (const auto status = lumo::ParseCommandLine(
          kProgram, argc, argv,
          {{"num_warmup", &num_warmup},
           {"confidence", Percentage{&confidence, Percentage::kBetween0And100}},
           {"max_slowdown", Percentage{&max_slowdown, Percentage::kFrom0}},
           {"ignore_node_ids", &ignore_node_ids},
           {"csv", &csv},
           {"output", &output}},
          2, &paths)) {
    return *status;
  }
  if (paths.size() < 2 || std::ranges::count(paths, "") > 0) {
    return lumo::RejectCommandLine(kProgram,
                                   "two logs or folders are required");
  }
  std::string error;
  lumo::Names names;
  const auto sides =
      lumo::ReadSides(paths, num_warmup, &names, nullptr, &error);
  if (!sides) {
    return lumo::Fail(kProgram, error);
  }
  const auto comparison = lumo::CompareSides(
      sides->front(), sides->back(), *confidence, ignore_node_ids, &error);
  if (!comparison) {
    return lumo::Fail(kProgram, error);
  }
  const int status = lumo::WriteOutput(
      kProgram, output, lumo::AllLogs(*sides), "comparison",
      [&](std::ostream& stream) {
        if (csv) {
          lumo::WriteComparisonRows(stream, *comparison);
        } else {
          lumo::WriteComparison(stream, *comparison, UseColor(output));
        }
      });
  if (status != 0 || !max_slowdown) {
    return status;
  }
  const lumo::GateResult gate =
      lumo::CheckSlowdowns(*comparison, *max_slowdown);
  for (const std::string& line : gate.lines) {
    lumo::Fail(kProgram, line);
  }
  if (!gate.is_tested) {
    return lumo::kFailed;
  }
  return gate.is_exceeded ? kTooSlow : 0;
}
