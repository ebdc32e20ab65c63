// A well-determined network of known truth: all directions, distances and height differences
// between three control points and two new points, rounded to a second and a millimetre.
#pragma once

#include <cmath>
#include <cstdint>
#include <string>

#include "support/job.h"

namespace brenu::testing {

struct PlaneExample : Job {
  // MO 2.5", distances 5 mm + 5 ppm.  Lengths and heights are observed at the station of the
  // earlier name, heights good to 1 mm.  `baseType` is the type of A and B: 11 makes them bench
  // marks, so that the levelling counts.
  explicit PlaneExample(std::int32_t baseType = 10) {
    constexpr struct {
      const char* name;
      double x, y, h;
    } kTruth[] = {{"P", 1600, 1300, 102},
                  {"Q", 1400, 1750, 107},
                  {"C", 2000, 1500, 104},
                  {"A", 1000, 1000, 100},
                  {"B", 1000, 2000, 105}};
    SetAdjParam(*this, Errors(2.5, 0.005, 5e-6));
    for (const auto& p : kTruth) {
      const std::int32_t type = p.name[0] >= 'P' ? 0 : p.name[0] == 'C' ? 10 : baseType;
      type == 0 ? Add(p.name) : Add(p.name, type, p.x, p.y, type == 11 ? p.h : 0.0);
    }
    for (const auto& from : kTruth) {
      for (const auto& to : kTruth) {
        if (from.name == to.name) continue;
        // The circle reads 40 degrees to the north.
        const double azimuth = std::atan2(to.y - from.y, to.x - from.x) * 57.295779513082323;
        const long seconds = std::lround((azimuth + 360 + 40) * 3600) % 1296000;
        ObsData obs = Direction(static_cast<double>(seconds / 3600) +
                                static_cast<double>(seconds / 60 % 60) / 100.0 +
                                static_cast<double>(seconds % 60) / 10000.0);
        if (from.name[0] < to.name[0]) {
          obs.distance = std::round(1000.0 * std::hypot(to.x - from.x, to.y - from.y)) / 1000.0;
          obs.heightDiff = to.h - from.h + 0.001 * ((from.name[0] + 2 * to.name[0]) % 3 - 1);
        }
        Observe(from.name, to.name, obs);
      }
    }
  }

  // A minute less in the direction B-Q, 0.2 m more in the distance C-P.
  void PlantBlunders() const {
    ObsData direction = Stored(*this, "B", "Q");
    direction.direction -= 0.01;
    Change("B", "Q", direction);
    ObsData distance = Stored(*this, "C", "P");
    distance.distance += 0.2;
    Change("C", "P", distance);
  }
  // Leaves out what PlantBlunders spoils; the distance B-Q stays.
  void DeleteBlunders() const {
    Change("B", "Q", Distance(Stored(*this, "B", "Q").distance));
    Change("C", "P", Direction(Stored(*this, "C", "P").direction));
  }
};

}  // namespace brenu::testing
