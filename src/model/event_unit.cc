// The one mapping of units to words.

#include "model/event_unit.h"

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

}  // namespace lumo
