// The records of the public header, seen from C++: what their codes and markers mean.
#pragma once

#include <cstddef>
#include <cstring>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "brenu/brenu.h"

namespace brenu {

static_assert(sizeof(AdjParam) == 48);
static_assert(sizeof(PointData) == 160 && offsetof(PointData, x) == 136);
static_assert(sizeof(ObsData) == 32);
static_assert(sizeof(CloseError) == 344 && offsetof(CloseError, lengthLimit) == 312 &&
              offsetof(CloseError, heightWithinLimit) == 321);
static_assert(sizeof(PlaneResult) == 64 && sizeof(VerticalResult) == 24);
static_assert(sizeof(CircleRecord) == 32 || sizeof(void*) != 8);

inline constexpr std::size_t kMaxNameLength = sizeof(PointData::name) - 1;

// What a fresh context holds.
inline constexpr AdjParam kDefaultParam = {2.5, 5.0, 5.0, 4, 20, 4, 5, 3, 0};

inline constexpr double kAbsentAngle = -1.0;  // marks a direction or azimuth as absent
inline constexpr double kAbsentLength = 0.0;  // marks a distance or height difference as absent

// Values of AdjParam::format that change a computation.
inline constexpr int kFormatNoOrientation = 1;
inline constexpr int kFormatDistancesOnly = 3;

enum NetType : int { kNoControl = 0, kLevelling = 1, kPlane = 2, kPlaneAndLevelling = 3 };

// The exact comparisons are meant: the markers are exact values.
inline bool HasDirection(const ObsData& o) { return o.direction != kAbsentAngle; }
inline bool HasAzimuth(const ObsData& o) { return o.azimuth != kAbsentAngle; }
inline bool HasDistance(const ObsData& o) { return o.distance != kAbsentLength; }
inline bool IsLevelled(const ObsData& o) {
  return o.distance != kAbsentLength && o.heightDiff != kAbsentLength;
}

inline bool IsPlaneControl(const PointData& p) { return p.type == 10 || p.type == 11; }
inline bool IsHeightControl(const PointData& p) { return p.type == 1 || p.type == 11; }
inline bool HasLevelling(int netType) {
  return netType == kLevelling || netType == kPlaneAndLevelling;
}
inline bool HasPlane(int netType) { return netType == kPlane || netType == kPlaneAndLevelling; }

inline std::string_view NameOf(const PointData& p) {
  const void* end = std::memchr(p.name, '\0', kMaxNameLength);
  return {p.name,
          end ? static_cast<std::size_t>(static_cast<const char*>(end) - p.name) : kMaxNameLength};
}

// Station name -> target name -> what was observed; both levels in byte order of the names.
using TargetMap = std::map<std::string, ObsData, std::less<>>;
using ObservationMap = std::map<std::string, TargetMap, std::less<>>;

// Limit coefficients that belong to a grade (mm per sqrt(km); arc-seconds per sqrt(angles)).  The
// values of levelling grade 6 and of unlisted grades are as the tables of practice have them here.
constexpr int LevellingLimitOfGrade(int grade) {
  switch (grade) {
    case 2:
      return 4;
    case 3:
      return 12;
    case 4:
      return 20;
    case 6:
      return 35;
    default:
      return 40;
  }
}
constexpr int AngleLimitOfGrade(int grade) {
  switch (grade) {
    case 2:
      return 1;
    case 3:
      return 3;
    case 4:
      return 5;
    case 5:
      return 10;
    case 6:
      return 16;
    case 8:
      return 40;
    default:
      return 24;
  }
}
// N of the limit 1:N of the relative linear misclosure customary for a grade of traverse.  Grade 2
// is that of high-speed railway control, grades 3 to 7 are third and fourth order and first to
// third class of engineering surveying, grade 8 is mapping control (Code for engineering surveying
// GB 50026; Code for high-speed railway engineering survey TB 10601).
constexpr double RelativeLimitOfGrade(int grade) {
  switch (grade) {
    case 2:
      return 100000.0;
    case 3:
      return 55000.0;
    case 4:
      return 35000.0;
    case 5:
      return 15000.0;
    case 6:
      return 10000.0;
    case 8:
      return 2000.0;
    default:
      return 5000.0;
  }
}

}  // namespace brenu
