#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "core/finding.h"
#include "fieldbook/field_book.h"

namespace brenu {

// The mean of the readings of a staff.
struct StaffMean {
  NameNo point;
  double reading = 0.0;
  double distance = 0.0;
  bool hasDistance = false;  // in all readings
};

// One position of the level.
struct LevelSetup {
  std::int32_t line = 0;
  StaffMean back;
  std::optional<StaffMean> fore;  // none where only intermediate sights follow
  std::vector<LevelReading> intermediates;
};

// Puts the readings of a line together: so many of the back and of the fore staff make a setup
// complete.  A reading again, or of another point, before that begins the setup anew, which is
// said.
std::vector<LevelSetup> LevelSetupsOf(const LevelLine& line, const PointNames& names,
                                      Findings& findings);

}  // namespace brenu
