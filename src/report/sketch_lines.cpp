#include "report/sketch_lines.h"

namespace brenu {

namespace {

bool IsPlane(const SketchLine& line) { return line.direction.IsAny() || line.distance.IsAny(); }

}  // namespace

LineKind KindOf(const SketchLine& line) {
  if (line.direction.IsAny() && line.distance.IsAny()) return LineKind::kBoth;
  if (line.distance.IsAny()) return LineKind::kDistance;
  if (line.direction.IsAny() || !line.levelled.IsAny()) return LineKind::kDirection;
  return LineKind::kLevelled;
}

bool IsLevelledToo(const SketchLine& line) { return line.levelled.IsAny() && IsPlane(line); }

int OneWay(const SketchLine& line) {
  SketchSight sight = line.levelled;
  if (IsPlane(line)) {
    sight = {line.direction.forward || line.distance.forward,
             line.direction.backward || line.distance.backward};
  }
  return static_cast<int>(sight.forward) - static_cast<int>(sight.backward);
}

}  // namespace brenu
