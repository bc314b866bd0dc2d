#include "report/log_text.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include <flatbuffers/flatbuffers.h>
#include <flatbuffers/minireflect.h>

#include "model/message_groups.h"

namespace lumo {
namespace {

// Whether the library writes `c` as it is inside a text.
bool IsPlain(char c) { return c >= ' ' && c <= '~' && c != '"' && c != '\\'; }

// The visitor of FlatBufferToString(), with two members replaced. The library
// creates a stream to print each 64-bit number, which takes a fifth of a whole
// run, and escapes texts character by character, which takes a tenth, although
// few texts contain a character to escape.
struct LogTextVisitor : public flatbuffers::ToStringVisitor {
  using ToStringVisitor::ToStringVisitor;
  void ULong(std::uint64_t number) override { s += std::to_string(number); }
  void String(const flatbuffers::String* text) override {
    const std::string_view plain = text->string_view();
    if (std::all_of(plain.begin(), plain.end(), IsPlain)) {
      s += '"';
      s += plain;
      s += '"';
    } else {
      ToStringVisitor::String(text);
    }
  }
};

// `events` may be null.
std::size_t MeasureEvents(const EventVector* events,
                          std::size_t bytes_per_event) {
  std::size_t size = flatbuffers::VectorLength(events) * bytes_per_event;
  for (flatbuffers::uoffset_t i = 0; i < flatbuffers::VectorLength(events);
       ++i) {
    const ProfilingEvent& event = *events->Get(i);
    size += flatbuffers::GetStringView(event.name()).size();
    size += MeasureEvents(event.sub_events(), bytes_per_event);
  }
  return size;
}

}  // namespace

std::string LogTextConverter::RenderLogText(
    const std::vector<std::uint8_t>& log_storage) const {
  // Like FlatBufferToString(), but with memory reserved and without a final
  // copy, which saves a fifth of a run and a third of its memory.
  constexpr std::size_t kBytesPerEvent = 150;
  LogTextVisitor visitor(/*delimiter=*/" ", /*quotes=*/false, /*indent=*/"",
                         /*vdelimited=*/true);
  visitor.s.reserve(EstimateTextSize(*GetProfilingLog(log_storage.data()),
                                     log_storage.size(), kBytesPerEvent));
  flatbuffers::IterateFlatBuffer(log_storage.data(), ProfilingLogTypeTable(),
                                 &visitor);
  return std::move(visitor.s);
}

std::size_t EstimateTextSize(const ProfilingLog& log, std::size_t log_size,
                             std::size_t bytes_per_event) {
  // Messages of one kind are alike, and visiting all events would take a tenth
  // of a run.
  constexpr flatbuffers::uoffset_t kSamples = 16;
  const auto* const messages = log.messages();
  const auto count =
      static_cast<flatbuffers::uoffset_t>(flatbuffers::VectorLength(messages));
  const flatbuffers::uoffset_t step = count / kSamples + 1;
  std::size_t total = 0;
  std::size_t largest = 0;
  std::size_t samples = 0;
  for (flatbuffers::uoffset_t i = 0; i < count; i += step) {
    const std::size_t size =
        MeasureEvents(messages->Get(i)->events(), bytes_per_event);
    total += size;
    largest = std::max(largest, size);
    ++samples;
  }
  // The largest message may be the only one of its size, so it counts once. The
  // limit is for logs with several such messages in the sample, for which the
  // estimate could exceed the memory.
  const std::size_t others =
      samples < 2 ? 0 : (total - largest) / (samples - 1) * (count - 1);
  return std::min(largest + others, log_size * 6);
}

}  // namespace lumo
