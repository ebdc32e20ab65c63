// Where the points of a sketch stand: by their coordinates, or so that the picture shows who is
// connected with whom.
#pragma once

#include <vector>

#include "report/sketch.h"
#include "report/sketch_place.h"

namespace brenu {

struct SketchLayout {
  std::vector<SketchPlace> places;  // by point, metres, or lines of length 1 when schematic
  bool isSchematic = false;         // no point has coordinates
};

// A point that is said to be placed but has no finite coordinates counts as not placed.
bool HasPlace(const SketchPoint& point);

// Whether both ends are points, and different ones.
bool IsDrawn(const Sketch& sketch, const SketchLine& line);

SketchLayout LayOut(const Sketch& sketch);

}  // namespace brenu
