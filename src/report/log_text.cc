// The library's rendering of a log, with the schema's type tables.

#include "report/log_text.h"

#include <flatbuffers/minireflect.h>

#include "profiling_log_generated.h"

namespace lumo {

std::string RenderLogText(const std::vector<std::uint8_t>& log_storage) {
  return flatbuffers::FlatBufferToString(log_storage.data(),
                                         ProfilingLogTypeTable());
}

}  // namespace lumo
