// A network as it is drawn: points, the lines between them and the words of the picture.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brenu {

struct SketchEllipse {
  double e, f;  // semi-axes, metres, e the larger one
  double t;     // azimuth of e, clockwise from north, radians
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

// The words of the picture, UTF-8.
struct SketchTexts {
  std::string_view control, benchMark, newPoint, noCoordinates;
  std::string_view both, distance, direction, levelled, oneWay, flagged, notChecked;
  std::string_view ellipse;
  std::string_view schematic;  // said where no point has coordinates
  std::string_view north;
};
SketchTexts EnglishSketchTexts();
SketchTexts ChineseSketchTexts();

struct Sketch {
  std::string title;
  std::vector<SketchPoint> points;
  std::vector<SketchLine> lines;  // one for each pair; ends that are no points are left out
  SketchTexts texts = EnglishSketchTexts();
};

}  // namespace brenu
