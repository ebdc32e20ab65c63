// A context for a test, with short ways to fill it.
#pragma once

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

#include "brenu/brenu.h"

namespace brenu::testing {

inline PointData MakePoint(const std::string& name, std::int32_t type = 0, double x = 0.0,
                           double y = 0.0, double h = 0.0) {
  PointData point{};
  std::strncpy(point.name, name.c_str(), sizeof(point.name) - 1);
  point.type = type;
  point.x = x;
  point.y = y;
  point.h = h;
  return point;
}

inline ObsData Levelled(double length, double heightDiff) {
  return {length, -1.0, heightDiff, -1.0};
}
inline ObsData Direction(double dms, double distance = 0.0) { return {distance, dms, 0.0, -1.0}; }
inline ObsData Distance(double metres) { return {metres, -1.0, 0.0, -1.0}; }
inline ObsData Azimuth(double dms) { return {0.0, -1.0, 0.0, dms}; }

// Owns a context; converts to it, so that it stands wherever a context is asked for.
class Job {
 public:
  Job() : m_context(StartAdjustment(), &EndAdjustment) {}
  operator AdjustmentContext*() const { return m_context.get(); }

  // Adds a point under the next index, which it returns (-1 when refused).
  std::int32_t Add(const std::string& name, std::int32_t type = 0, double x = 0.0, double y = 0.0,
                   double h = 0.0) {
    return AddPoint(*this, static_cast<std::int32_t>(GetPointCount(*this)),
                    MakePoint(name, type, x, y, h));
  }
  std::int32_t Observe(const std::string& station, const std::string& target, ObsData obs) {
    return AddObsData(*this, Index(station), target.c_str(), obs);
  }
  std::int32_t Index(const std::string& name) const { return GetPointNum(*this, name.c_str()); }

 private:
  std::unique_ptr<AdjustmentContext, void (*)(AdjustmentContext*)> m_context;
};

}  // namespace brenu::testing
