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

std::string ResourceMaskText(std::uint8_t mask) {
  constexpr std::string_view kEngines[] = {"VPU", "TMU", "DMA"};
  std::string text;
  unsigned bit = 1;
  for (const std::string_view engine : kEngines) {
    if ((mask & bit) != 0) {
      text += text.empty() ? "" : ", ";
      text += engine;
    }
    bit <<= 1;
  }
  return text;
}

std::string ValueText(const ProfilingEvent& event) {
  std::string text = ": ";
  switch (event.type()) {
    case ProfileEventType::ORX_PROFILE_EVENTTYPE_NODE_CRITICAL_BG_OP_ID:
    case ProfileEventType::ORX_PROFILE_EVENTTYPE_NODE_WAIT_BG_OP_ID:
      return "";
    case ProfileEventType::ORX_PROFILE_EVENTTYPE_NODE_RESOURCEMASK:
      return text + ResourceMaskText(static_cast<std::uint8_t>(event.value()));
    default:
      text += std::to_string(event.value());
      text += ' ';
      text += UnitText(event.unit());
      return text;
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

std::string_view BareName(std::string_view name) {
  constexpr std::string_view kPrefix = "node_id_";
  if (!name.starts_with(kPrefix)) {
    return name;
  }
  const std::size_t end = name.find_first_not_of("0123456789", kPrefix.size());
  const bool has_id = end != kPrefix.size() && end != std::string_view::npos &&
                      name[end] == ':';
  return has_id ? name.substr(end + 1) : name;
}

}  // namespace lumo
