// A network as it is drawn: points and the lines between them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "review/language.h"

namespace brenu {

struct SketchEllipse {
  double e, f;  // semi-axes, metres, e the larger one
  double t;     // azimuth of e, clockwise from north, decimal degrees
};

struct SketchPoint {
  enum class Kind : std::uint8_t { kControl, kBenchMark, kNew };

  std::string name;  // UTF-8
  Kind kind = Kind::kNew;
  double x = 0.0, y = 0.0;  // north and east, metres
  bool isPlaced = false;    // without coordinates a place is found that shows who is connected
  bool isFlagged = false;
  std::optional<SketchEllipse> ellipse = {};
};

// From which ends of a line something was observed.
struct SketchSight {
  bool forward = false;   // from a to b
  bool backward = false;  // from b to a

  bool IsAny() const { return forward || backward; }
};

// Everything observed between two points.
struct SketchLine {
  std::int32_t a, b;           // positions in the list of points
  SketchSight distance = {};   // horizontal distances
  SketchSight direction = {};  // directions and azimuths
  SketchSight levelled = {};   // height differences
  bool isFlagged = false;      // an observation was found in error
  bool isNotChecked = false;
};

struct Sketch {
  std::string title;
  std::vector<SketchPoint> points;
  std::vector<SketchLine> lines;  // one for each pair; ends that are no points are left out
  bool hasEllipses95 = false;     // the ellipses hold the point with 95 %, else standard ellipses
  Language language = Language::kEnglish;
};

}  // namespace brenu
