#include "model/event_fields.h"

#include <charconv>
#include <cstddef>
#include <system_error>

namespace lumo {

std::string_view UnitText(ProfileEventUnit unit) {
  switch (unit) {
    case ProfileEventUnit::ORX_PROFILE_EVENTUNIT_MICROSEC:
      return "us";
    case ProfileEventUnit::ORX_PROFILE_EVENTUNIT_BYTES:
      return "bytes";
    case ProfileEventUnit::ORX_PROFILE_EVENTUNIT_CYCLES:
      return "cycles";
    case ProfileEventUnit::ORX_PROFILE_EVENTUNIT_COUNT:
      return "count";
    default:
      return "";
  }
}

std::int32_t ParseNodeId(std::string_view name) {
  constexpr std::string_view kPrefix = "node_id_";
  if (!name.starts_with(kPrefix) ||
      name.find(kPrefix, 1) != std::string_view::npos) {
    return -1;
  }
  const std::size_t digits = name.find_first_of("0123456789");
  if (digits == std::string_view::npos) {
    return -1;
  }
  std::int32_t id = -1;
  const auto [end, failure] =
      std::from_chars(name.data() + digits, name.data() + name.size(), id);
  return failure == std::errc() ? id : -1;
}

}  // namespace lumo
