#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace brenu {

// Which unknowns of a network meet: in an equation, or in a cofactor that is asked for.
//
// Unknowns that always come together (the coordinates of a point and the orientation of its
// direction set) form a group.  All unknowns of a group meet each other, and so do all unknowns of
// two groups that are connected.
struct UnknownPattern {
  std::vector<std::int32_t> groupOfUnknown;                        // by unknown
  std::int32_t groupCount = 0;                                     // groups are 0..groupCount-1
  std::vector<std::pair<std::int32_t, std::int32_t>> connections;  // in any order, repeats allowed

  std::int32_t UnknownCount() const { return static_cast<std::int32_t>(groupOfUnknown.size()); }
  // A connection with something that has no unknowns, a negative group, is none.
  void Connect(std::int32_t a, std::int32_t b) {
    if (a >= 0 && b >= 0) connections.emplace_back(a, b);
  }
};

// The unknowns of points, one group a point: `perPoint` consecutive ones each, in point order.
inline UnknownPattern PointPattern(std::int32_t points, std::int32_t perPoint) {
  UnknownPattern pattern;
  pattern.groupCount = points;
  for (std::int32_t i = 0; i < points; ++i) {
    pattern.groupOfUnknown.insert(pattern.groupOfUnknown.end(), static_cast<std::size_t>(perPoint),
                                  i);
  }
  return pattern;
}

}  // namespace brenu
