#pragma once

#include <cstdint>
#include <string_view>

#include "core/finding.h"
#include "io/grammar.h"

namespace brenu {

// What the readers take for something else than it says: a number with a slip in it is read up to
// the slip, an unknown key is skipped, an unknown type means a new point.
class Doubts {
 public:
  // More than these would bury what else is said.
  static constexpr std::size_t kMostKept = 10;

  // The doubts that follow are about this line.
  void StartLine(std::size_t number) { m_line = static_cast<std::int32_t>(number); }

  // `excerpt` is the line or field as it stands.
  void Add(Code code, std::string_view excerpt, std::vector<std::string> names = {},
           std::vector<double> values = {});
  // The value of a field that is not empty, doubtful when it is no number from end to end or, for
  // an angle, none of degrees, minutes and seconds.
  double Number(const Field& field, std::string_view text);
  void CheckPoint(const PointData& point, std::string_view type, bool givesPlane, bool givesHeight);
  // The field of a length or height difference of an observation.
  void CheckZero(Code code, std::string_view station, std::string_view target,
                 std::string_view field);

  // All of them, in the order in which they were found.
  Findings Take();

 private:
  // Zeros that stand among other values: they count as absent.
  struct Zeros {
    Finding first;
    std::int32_t count = 0;
    bool hasOther = false;  // something else in the file
  };

  std::int32_t m_line = 0;
  Findings m_found;
  std::int32_t m_more = 0;
  Zeros m_heightDiffs, m_distances;
};

}  // namespace brenu
