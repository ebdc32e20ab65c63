#pragma once

#include <cstdint>
#include <vector>

#include "fieldbook/point_names.h"

namespace brenu {

// The steps from sights to observations.
enum class Step : std::uint8_t {
  kFacesDirection,  // raw: face 1 as read, result: mean of the faces
  kFacesZenith,
  kInstrumentScale,  // what the file says that its distances lack: scale and constant
  kAtmosphere,
  kConstants,
  kHorizontal,  // raw: slope distance, result: horizontal distance
  kCurvature,   // of the Earth, and refraction
  kEccentricDistance,
  kEccentricDirection,
  kEllipsoid,
  kProjection,
  kSetTurned,      // raw: direction in its set, result: on the circle of the first
  kSetsDirection,  // raw: of the first set, result: mean of the sets
  kSetsDistance,
  kSetupTurned,  // raw: direction of a later setup on the station, result: on the first one's
                 // circle
  kSetupsDirection,
  kSetupsDistance,
  kHeightDifference,  // raw: slope distance times the cosine of the zenith angle
  kLevelSetup,        // raw: mean back reading, result: height difference of the setup
  kLevelLine          // raw: first run, result: mean of the runs of a line
};

// One correction of one value.  Angles in radians, lengths in metres.
struct LogEntry {
  Step step = Step::kHorizontal;
  std::int32_t book = 0;  // which of the field books, counted from 0
  std::int32_t line = 0;
  NameNo station, target;
  std::int32_t set = 0;  // counted from 1; 0 for what is no part of a set
  double raw = 0.0, correction = 0.0, result = 0.0;
};

using ReductionLog = std::vector<LogEntry>;

}  // namespace brenu
