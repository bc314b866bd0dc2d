#include "report/report_header.h"

#include <flatbuffers/flatbuffers.h>

#include "model/message_groups.h"

namespace lumo {
namespace {

void WriteGraphStats(std::ostream& stream, const ProfilingMessage& message,
                     std::int32_t finalizes, std::int32_t executes) {
  stream << "        Graph index: " << message.graph_index() << '\n'
         << "            Backend type: "
         << EnumNameBackendId(message.delegate_type()) << '\n'
         << "            Number of Finalize: " << finalizes << '\n'
         << "            Number of Execute: " << executes << '\n'
         << '\n';
}

}  // namespace

bool WriteReportHeader(std::ostream& stream, const ProfilingLog* root,
                       std::int32_t graph_count, std::int32_t prepare_count,
                       std::int32_t inference_count) {
  if (root == nullptr) {
    return false;
  }
  using flatbuffers::GetCstring;
  stream << "[PROFILER API VERSION] : "
         << GetCstring(root->profiler_api_version()) << '\n'
         << "[ORX API VERSION] : " << GetCstring(root->orx_api_version())
         << '\n'
         << "[ORX DELEGATE API VERSION] : "
         << GetCstring(root->orx_delegate_api_version()) << '\n'
         << "[LOG DATE] : " << GetCstring(root->log_date()) << "\n\n"
         << "Orx Delegate Finalize/Execute Statistics:\n\n"
         << "---------------Graph Stats----------------\n"
         << "    Total Graph #: " << graph_count << '\n';
  for (std::int32_t i = 0; i < graph_count; ++i) {
    WriteGraphStats(stream, MessageAt(*root->messages(), i),
                    prepare_count / graph_count, inference_count / graph_count);
  }
  return true;
}

}  // namespace lumo
