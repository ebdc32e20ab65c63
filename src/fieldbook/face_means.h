#pragma once

#include <optional>

#include "fieldbook/setup_reduction.h"

namespace brenu {

// What was measured to a target in one set, after its two faces.
struct SetValue {
  std::int32_t line = 0;
  std::optional<double> direction, distance, azimuth, height, slope;
  bool lacksHeights = false;
};

// Averages the sights in the two faces, of which one may be null: direction + 180 degrees and 360
// degrees - zenith angle in face 2.
SetValue MeanOfFaces(const BookSight* face1, const BookSight* face2,
                     const ReductionOptions& options, ReductionNotes& notes);

// The mean of two angles that lie together, whatever the zero between them.
double MeanAngle(double first, double second);

}  // namespace brenu
