// lumo-profile-page: writes one profiling log, or two to compare, as an HTML
// page.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "cli/messages.h"
#include "cli/options.h"
#include "cli/output.h"
#include "compare/compared_log.h"
#include "page/page_data.h"
#include "page/page_html.h"
#include "page/page_tables.h"
#include "page/page_template.h"

namespace {

constexpr lumo::Program kProgram = {
    "lumo-profile-page",
    "usage: lumo-profile-page [--num_warmup W] [--output FILE] LOG [LOG]\n"
    "Writes a profiling log, or two to compare, as a page for a browser.\n"
    "\n"
    "  --num_warmup W  runs to exclude as warm-up; default: 1\n"
    "  --output FILE   write to FILE; default: standard output\n"
    "  --help          print this text and exit\n"
    "  --version       print the version and exit\n"};

// A browser takes minutes for more rows. Only an artificial log has as many.
constexpr std::size_t kMaxSeries = 100000;

std::size_t CountSeries(const lumo::Page& page) {
  std::size_t count = 0;
  for (const lumo::ComparedRuns& runs : page.all_runs) {
    count += runs.pairs.size();
  }
  return count;
}

void WritePage(std::ostream& stream, const lumo::Page& page) {
  stream << lumo::kPageBeforeTitle << lumo::MakeTitle(page)
         << lumo::kPageBeforeHeading;
  lumo::WriteHeading(stream, page);
  stream << lumo::kPageBeforeTables;
  lumo::WriteTables(stream, page);
  stream << lumo::kPageBeforeData;
  lumo::WritePageData(stream, page);
  stream << lumo::kPageEnd;
}

}  // namespace

int main(int argc, char** argv) {
  lumo::PrepareProcess();

  std::int32_t num_warmup = 1;
  std::string output;
  std::vector<std::string> paths;
  if (const std::optional<int> status = lumo::ParseCommandLine(
          kProgram, argc, argv,
          {{"num_warmup", &num_warmup}, {"output", &output}}, 2, &paths)) {
    return *status;
  }
  if (paths.empty() || std::count(paths.begin(), paths.end(), "") > 0) {
    return lumo::RejectCommandLine(kProgram, "a log is required");
  }
  std::vector<lumo::ComparedLog> logs;
  std::string error;
  for (const std::string& path : paths) {
    std::optional<lumo::ComparedLog> log = lumo::LoadComparedLog(path, &error);
    if (!log) {
      return lumo::Fail(kProgram, error);
    }
    logs.push_back(std::move(*log));
  }
  const lumo::Page page = lumo::MakePage(
      logs.front(), logs.size() == 2 ? &logs.back() : nullptr, num_warmup);
  if (const std::size_t count = CountSeries(page); count > kMaxSeries) {
    return lumo::Fail(kProgram, "too many different events for a page: " +
                                    std::to_string(count) + ", more than " +
                                    std::to_string(kMaxSeries));
  }
  return lumo::WriteOutput(
      kProgram, output, paths, "page",
      [&page](std::ostream& stream) { WritePage(stream, page); });
}
