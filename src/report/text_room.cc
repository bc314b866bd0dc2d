#include "report/text_room.h"

#include <algorithm>

#include <flatbuffers/flatbuffers.h>

#include "model/message_groups.h"

namespace lumo {
namespace {

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

std::size_t EstimateTextSize(const ProfilingLog& log, std::size_t log_size,
                             std::size_t bytes_per_event) {
  // Messages of one kind are alike, and visiting all events would take a tenth
  // of a run.
  constexpr flatbuffers::uoffset_t kSamples = 16;
  const auto* const messages = log.messages();
  const auto count =
      static_cast<flatbuffers::uoffset_t>(flatbuffers::VectorLength(messages));
  const flatbuffers::uoffset_t step = count / kSamples + 1;
  std::size_t size = 0;
  for (flatbuffers::uoffset_t i = 0; i < count; i += step) {
    size += MeasureEvents(messages->Get(i)->events(), bytes_per_event);
  }
  // If the sample has the only large message among thousands of small ones, the
  // product could exceed the memory.
  return std::min(size * step, log_size * 6);
}

}  // namespace lumo
