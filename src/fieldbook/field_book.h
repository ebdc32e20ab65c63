// What instruments write, whatever the format: setups with their sights, level lines with their
// readings, points with coordinates.  Lengths in metres, angles in radians; circles run clockwise.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/angles.h"
#include "core/finding.h"
#include "fieldbook/point_names.h"

namespace brenu {

enum class BookFormat : std::uint8_t { kUnknown, kGsi8, kGsi16, kSdr, kJobXml, kM5, kGkf };

// As a person calls it, such as "Leica GSI-16".
const char* NameOf(BookFormat format);

enum class Face : std::uint8_t { kOne, kTwo };

// As the zenith angle tells it, where the file has no mark of its own.
inline Face FaceOf(std::optional<double> zenith) {
  return zenith.value_or(0.0) > kPi ? Face::kTwo : Face::kOne;
}

// Where an eccentric prism stood, as the instrument sees the point.
struct Eccentric {
  double front = 0.0;  // in front of the point; behind it when negative
  double right = 0.0;  // right of the point; left when negative
};

// One pointing at a target.  What was not measured is absent.
struct BookSight {
  std::int32_t line = 0;
  NameNo target;
  Face face = Face::kOne;
  std::optional<double> direction;   // circle reading
  std::optional<double> zenith;      // circle reading
  std::optional<double> slope;       // distance as it stands in the file
  std::optional<double> horizontal;  // distance, as the instrument computed it
  std::optional<double> azimuth;     // from the X axis
  // Heights over the points.
  std::optional<double> instrumentHeight, targetHeight;
  // What the slope distance still lacks: scale in mm/km, constant in metres.
  double ppm = 0.0, prismConstant = 0.0;
  Eccentric eccentric;
  std::string time;  // as it stands in the file; empty for none
};

// The instrument at a station, with one orientation of its circle.
struct Setup {
  std::int32_t line = 0;
  NameNo station;
  std::vector<BookSight> sights;
};

enum class Staff : std::uint8_t { kBack, kFore, kIntermediate };

struct LevelReading {
  std::int32_t line = 0;
  Staff staff = Staff::kBack;
  std::uint8_t repeat = 0;  // 1 or 2, of two readings of a staff; 0 when the file does not say
  NameNo point;             // none for a turning point without name
  double reading = 0.0;     // negative on an inverted staff
  std::optional<double> distance;
};

struct LevelLine {
  std::int32_t line = 0;
  int readingsEach = 1;  // of back and fore staff in a complete setup
  std::vector<LevelReading> readings;
};

// A height difference that the file has as such.
struct HeightLine {
  std::int32_t line = 0;
  NameNo from, to;
  double difference = 0.0;  // to minus from
  double length = 0.0;      // 0 when there is none
};

enum class BookPointKind : std::uint8_t {
  kControl,     // entered or known
  kListed,      // entered at some time: control where the file is given for its control only
  kApproximate  // worth a start
};

struct BookPoint {
  std::int32_t line = 0;
  NameNo name;
  BookPointKind kind = BookPointKind::kControl;
  std::optional<double> x, y, h;
};

// What a line of the file became.
enum class LineRole : std::uint8_t {
  kHeader,
  kInstrument,
  kSetup,
  kHeights,  // of instrument or target, or constants
  kSight,
  kControl,
  kCoordinates,  // that are no control
  kOrientation,
  kLevelLine,
  kReading,
  kHeightDifference,
  kResult,  // computed from lines that are used
  kCode,
  kNote,
  kTransfer,  // what serial transfers add
  kLeftOut    // a finding says why
};

struct LineNote {
  std::int32_t line = 0;
  LineRole role = LineRole::kNote;
  Code why = BRENU_NOTHING;  // of a line that is left out
};

// A-priori standard errors: arc-seconds, metres, a ratio.
struct APriori {
  double direction = 0.0, distance = 0.0, distanceRatio = 0.0;
};

struct FieldBook {
  BookFormat format = BookFormat::kUnknown;
  std::int32_t lineCount = 0;
  std::vector<Setup> setups;
  std::vector<LevelLine> levelLines;
  std::vector<HeightLine> heightLines;
  std::vector<BookPoint> points;
  std::optional<APriori> aPriori;  // when the file states them
  std::vector<LineNote> notes;     // in the order of the lines, one or more a line
  Findings findings;               // why lines were left out, and doubts
};

}  // namespace brenu
