#pragma once

#include <cstdint>
#include <string>

#include "review/language.h"

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
constexpr Words WordsOf(ObsKind kind) {
  constexpr Words kWords[] = {{"direction", "方向"},
                              {"distance", "边长"},
                              {"azimuth", "方位角"},
                              {"height difference", "高差"}};
  return kWords[static_cast<int>(kind)];
}
// "directions"
constexpr Words PluralOf(ObsKind kind) {
  constexpr const char* const kPlurals[] = {"directions", "distances", "azimuths",
                                            "height differences"};
  return {kPlurals[static_cast<int>(kind)], WordsOf(kind).chinese};
}
// As programs read it.
constexpr const char* KeyOf(ObsKind kind) {
  return kind == ObsKind::kHeightDifference ? "height_difference" : WordsOf(kind).english;
}

}  // namespace brenu
