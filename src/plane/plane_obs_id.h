#pragma once

#include <cstdint>

#include "core/network_layout.h"
#include "core/observation_check.h"

namespace brenu {

enum class PlaneKind : std::uint8_t { kDirection, kDistance, kAzimuth };

// An observation of the plane by its sight and kind.
struct PlaneObsId {
  PlaneKind kind;
  SightNo sight;
};

struct PlaneObsCheck {
  PlaneObsId id;
  ObservationCheck check;
};

}  // namespace brenu
