// A well-determined plane network of known truth: all directions and all distances between three
// control points and two new points, rounded to a second and a millimetre.
#pragma once

#include <cmath>
#include <cstdint>
#include <iterator>
#include <string>

#include "support/job.h"

namespace brenu::testing {

class PlaneExample {
 public:
  struct Point {
    const char* name;
    std::int32_t type;
    double x, y, h;
  };
  static constexpr Point kPoints[] = {{"P", 0, 1600, 1300, 102},
                                      {"Q", 0, 1400, 1750, 107},
                                      {"C", 10, 2000, 1500, 104},
                                      {"A", 10, 1000, 1000, 100},
                                      {"B", 10, 1000, 2000, 105}};
  static constexpr double kDirectionBlunder = 60.0;  // of B-Q, arc-seconds
  static constexpr double kDistanceBlunder = 0.2;    // of C-P, metres

  // MO 2.5", distances 5 mm + 5 ppm.  Distances are observed at the station of the earlier name.
  static void Fill(Job& job) {
    SetAdjParam(job, Errors(2.5, 0.005, 5e-6));
    for (const Point& p : kPoints) {
      const bool known = p.type == 10;
      job.Add(p.name, p.type, known ? p.x : 0.0, known ? p.y : 0.0);
    }
    for (const Point& from : kPoints) {
      for (const Point& to : kPoints) {
        if (from.name != to.name) job.Observe(from.name, to.name, Observe(from, to));
      }
    }
  }

  static void PlantBlunders(const Job& job) {
    ObsData direction = Stored(job, "B", "Q");
    direction.direction = Dms(Azimuth(kPoints[4], kPoints[1]) + kDirectionBlunder + kCircle);
    ObsData distance = Stored(job, "C", "P");
    distance.distance += kDistanceBlunder;
    job.Change("B", "Q", direction);
    job.Change("C", "P", distance);
  }

  // Leaves out the observations that PlantBlunders spoils; the distance B-Q stays.
  static void DeleteBlunders(const Job& job) {
    job.Change("B", "Q", Distance(Stored(job, "B", "Q").distance));
    job.Change("C", "P", Direction(Stored(job, "C", "P").direction));
  }

  // Makes A and B bench marks and adds height differences, good to 1 mm, to the distances, but for
  // those from and to `except`.
  static void AddHeights(Job& job, const std::string& except = {}) {
    for (const Point& from : kPoints) {
      if (from.name == std::string("A") || from.name == std::string("B")) {
        SetPoint(job, job.Index(from.name), MakePoint(from.name, 11, from.x, from.y, from.h));
      }
      for (const Point& to : kPoints) {
        if (from.name == except || to.name == except || from.name[0] >= to.name[0]) continue;
        ObsData o = Stored(job, from.name, to.name);
        o.heightDiff = to.h - from.h + 0.001 * ((from.name[0] + 2 * to.name[0]) % 3 - 1);
        job.Change(from.name, to.name, o);
      }
    }
  }

 private:
  // The circle reads 40 degrees to the north at every station.
  static constexpr double kCircle = 40.0 * 3600.0;

  // Arc-seconds in [0, 360 degrees).
  static double Azimuth(const Point& from, const Point& to) {
    const double degrees = std::atan2(to.y - from.y, to.x - from.x) * 57.295779513082323;
    return (degrees < 0.0 ? degrees + 360.0 : degrees) * 3600.0;
  }
  static double Dms(double seconds) {
    const long whole = std::lround(seconds) % 1296000;
    return static_cast<double>(whole / 3600) + static_cast<double>(whole / 60 % 60) / 100.0 +
           static_cast<double>(whole % 60) / 10000.0;
  }
  static ObsData Observe(const Point& from, const Point& to) {
    const double distance = std::round(1000.0 * std::hypot(to.x - from.x, to.y - from.y)) / 1000.0;
    return Direction(Dms(Azimuth(from, to) + kCircle), from.name[0] < to.name[0] ? distance : 0.0);
  }
};

}  // namespace brenu::testing
