// The sketch as a drawing for CAD.
#pragma once

#include <string>

#include "report/sketch.h"

namespace brenu {

// An ASCII drawing of release 12 (AC1009) in metres, east = x and north = y.  Layers: CONTROL,
// BENCH_MARKS, NEW_POINTS (blocks that are inserted at the points), LINES_BOTH, LINES_DIRECTION,
// LINES_DISTANCE, LINES_LEVELLED, ELLIPSES (closed polylines, enlarged as a text says), LABELS
// (all of the names), NOTES.  What is in doubt is red, what is not checked dashed; a line with an
// arrow was observed one way.  Characters beyond ASCII are written as \U+XXXX.  In a schematic
// layout lines are about 1 long, and a text says so.
std::string Dxf(const Sketch& sketch);

}  // namespace brenu
