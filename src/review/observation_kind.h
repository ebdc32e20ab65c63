#pragma once

#include <cstdint>
#include <string>

namespace brenu {

// Kinds of observations, as they stand in the values of findings.
enum class ObsKind : std::uint8_t { kDirection, kDistance, kAzimuth, kHeightDifference };
constexpr int kObsKindCount = 4;

constexpr bool IsAngle(ObsKind kind) {
  return kind == ObsKind::kDirection || kind == ObsKind::kAzimuth;
}

struct ObservationName {
  ObsKind kind;
  std::string from, to;
};

// "direction"
constexpr const char* NameOf(ObsKind kind) {
  constexpr const char* const kNames[] = {"direction", "distance", "azimuth", "height difference"};
  return kNames[static_cast<int>(kind)];
}
// As programs read it.
constexpr const char* KeyOf(ObsKind kind) {
  return kind == ObsKind::kHeightDifference ? "height_difference" : NameOf(kind);
}

}  // namespace brenu
