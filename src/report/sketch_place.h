// Where a point of the sketch stands.
#pragma once

#include <algorithm>
#include <limits>
#include <vector>

namespace brenu {

struct SketchPlace {
  double x = 0.0, y = 0.0;  // north and east
};

struct SketchExtent {
  double xMin = std::numeric_limits<double>::max(), xMax = std::numeric_limits<double>::lowest();
  double yMin = std::numeric_limits<double>::max(), yMax = std::numeric_limits<double>::lowest();

  void Include(const SketchPlace& place) {
    xMin = std::min(xMin, place.x);
    xMax = std::max(xMax, place.x);
    yMin = std::min(yMin, place.y);
    yMax = std::max(yMax, place.y);
  }
  double Height() const { return std::max(0.0, xMax - xMin); }
  double Width() const { return std::max(0.0, yMax - yMin); }
};

inline SketchExtent ExtentOf(const std::vector<SketchPlace>& places) {
  SketchExtent extent;
  for (const SketchPlace& place : places) extent.Include(place);
  return extent;
}

}  // namespace brenu
