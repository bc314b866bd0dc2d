// lumo-profile-page: writes profiling logs as an HTML page.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "cli/messages.h"
#include "cli/options.h"
#include "cli/output.h"
#include "compare/comparison.h"
#include "compare/side.h"
#include "page/page_data.h"
#include "page/page_graphs.h"
#include "page/page_model.h"
#include "page/page_overview.h"
#include "page/page_template.h"

namespace {

constexpr lumo::Program kProgram = {
    "lumo-profile-page",
    "usage: lumo-profile-page [OPTION]... LOG [LOG]\n"
    "Writes profiling logs, or a comparison of two sides, as a page for a "
    "browser.\n"
    "LOG is a log, or a folder of logs (files named *.bin).\n"
    "\n"
    "  --num_warmup W     runs of each log to exclude as warm-up; default: 1\n"
    "  --ignore_node_ids  pair operations by their names without node_id_N:\n"
    "  --output FILE      write to FILE; default: standard output\n"
    "  --help             print this text and exit\n"
    "  --version          print the version and exit\n"};

void WritePage(std::ostream& stream, const lumo::Page& page) {
  stream << lumo::kPageBeforeTitle << lumo::MakeTitle(page)
         << lumo::kPageBeforeHeading;
  lumo::WriteHeading(stream, page);
  lumo::WriteOverview(stream, page);
  stream << lumo::kPageBeforeTables;
  lumo::WriteGraphs(stream, page);
  stream << lumo::kPageBeforeData;
  lumo::WritePageData(stream, page);
  stream << lumo::kPageEnd;
}

}  // namespace

int main(int argc, char** argv) {
  lumo::PrepareProcess();

  std::int32_t num_warmup = 1;
  bool ignore_node_ids = false;
  std::string output;
  std::vector<std::string> paths;
  if (const auto status =
          lumo::ParseCommandLine(kProgram, argc, argv,
                                 {{"num_warmup", &num_warmup},
                                  {"ignore_node_ids", &ignore_node_ids},
                                  {"output", &output}},
                                 2, &paths)) {
    return *status;
  }
  if (paths.empty() || std::ranges::count(paths, "") > 0) {
    return lumo::RejectCommandLine(kProgram, "a log is required");
  }
  std::string error;
  lumo::Names names;
  std::vector<std::vector<lumo::LogFacts>> facts(paths.size());
  const auto sides = lumo::ReadSides(
      paths, num_warmup, &names,
      [&facts](std::size_t side, const lumo::InputLog& log) {
        facts[side].push_back(lumo::ReadFacts(log));
      },
      &error);
  if (!sides) {
    return lumo::Fail(kProgram, error);
  }
  std::optional<lumo::Comparison> comparison;
  if (sides->size() == 2) {
    comparison =
        lumo::CompareSides(sides->front(), sides->back(),
                           lumo::kDefaultConfidence, ignore_node_ids, &error);
    if (!comparison) {
      return lumo::Fail(kProgram, error);
    }
  }
  const lumo::Page page =
      lumo::MakePage(*sides, facts, comparison ? &*comparison : nullptr);
  if (error = lumo::ExplainSize(page); !error.empty()) {
    return lumo::Fail(kProgram, error);
  }
  return lumo::WriteOutput(
      kProgram, output, lumo::AllLogs(*sides), "page",
      [&page](std::ostream& stream) { WritePage(stream, page); });
}
