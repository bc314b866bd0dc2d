#include "page/page_logs.h"

#include <algorithm>
#include <cstddef>

#include <flatbuffers/flatbuffers.h>

namespace lumo {
namespace {

DisplayText FieldText(const flatbuffers::String* text) {
  return MakeDisplayText(flatbuffers::GetStringView(text));
}

// "ORX_BACKEND_ID_GPU", or the number if it has no name.
std::string BackendText(BackendId backend) {
  const std::string name = EnumNameBackendId(backend);
  return name.empty() ? std::to_string(static_cast<std::uint32_t>(backend))
                      : name;
}

// The backends of each graph, in the order of its runs.
std::vector<std::string> ListBackends(const MessageGroups& groups) {
  std::vector<std::vector<BackendId>> backends(
      static_cast<std::size_t>(groups.graph_count));
  for (std::int32_t i = 0; i < groups.execute_runs.end; ++i) {
    const ProfilingMessage& message = MessageAt(*groups.messages, i);
    std::vector<BackendId>& known =
        backends[*GraphOf(message, groups.graph_count)];
    if (std::find(known.begin(), known.end(), message.delegate_type()) ==
        known.end()) {
      known.push_back(message.delegate_type());
    }
  }
  std::vector<std::string> texts;
  for (const std::vector<BackendId>& known : backends) {
    std::string& text = texts.emplace_back();
    for (const BackendId backend : known) {
      text += (text.empty() ? "" : ", ") + BackendText(backend);
    }
  }
  return texts;
}

// "ORX_BACKEND_ID_GPU", or "graph 0: ORX_BACKEND_ID_GPU; graph 1: 9".
std::string BackendsText(const MessageGroups& groups) {
  const std::vector<std::string> texts = ListBackends(groups);
  if (std::count(texts.begin(), texts.end(), texts.front()) ==
      std::ssize(texts)) {
    return texts.front();
  }
  std::string all;
  for (std::size_t graph = 0; graph < texts.size(); ++graph) {
    all += (graph == 0 ? "graph " : "; graph ") + std::to_string(graph) + ": " +
           texts[graph];
  }
  return all;
}

}  // namespace

void AddPageLog(const InputLog& log, std::vector<RunSeries> all_runs,
                PageLogs* logs) {
  const ProfilingLog& root = *log.log.root;
  logs->size += log.log.bytes.size();
  logs->facts.push_back(
      {FieldText(root.log_date()), FieldText(root.profiler_api_version()),
       FieldText(root.orx_api_version()),
       FieldText(root.orx_delegate_api_version()), BackendsText(log.groups)});
  logs->values.clear();
  for (RunSeries& runs : all_runs) {
    std::vector<RunValues>& values = logs->values[{runs.kind, runs.graph}];
    for (Series& series : runs.series) {
      RunValues& own = values.emplace_back();
      if (series.level != Level::kPart && logs->facts.size() == 1) {
        own = {std::move(series.values), std::move(series.runs)};
      }
    }
  }
}

}  // namespace lumo
