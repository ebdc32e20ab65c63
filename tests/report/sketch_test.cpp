// The network as a picture and as a drawing for CAD.
#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <sstream>
#include <string>
#include <vector>

#include "report/dxf_sketch.h"
#include "report/sketch_scale.h"
#include "report/sketch_scene.h"
#include "report/svg_sketch.h"

namespace brenu {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using enum SketchPoint::Kind;

constexpr SketchSight kNone{}, kForward{true, false}, kBothWays{true, true};

SketchPoint Placed(std::string name, double x, double y, SketchPoint::Kind kind = kNew) {
  return {std::move(name), kind, x, y, true, false, {}};
}

std::size_t CountOf(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

// The first tag that has the attribute, from < to >.
std::string TagWith(const std::string& svg, const std::string& attribute) {
  const auto at = svg.find(attribute);
  if (at == std::string::npos) return "";
  const auto begin = svg.rfind('<', at);
  return svg.substr(begin, svg.find('>', at) - begin + 1);
}

double Number(const std::string& tag, const std::string& attribute) {
  const auto at = tag.find(" " + attribute + "=\"");
  return at == std::string::npos ? NAN : std::stod(tag.substr(at + attribute.size() + 3));
}

// The class of the group that holds a line or point.
std::string ClassOf(const std::string& svg, const std::string& attribute) {
  const auto group = svg.rfind("<g class=\"", svg.find(attribute));
  return svg.substr(group + 10, svg.find('"', group + 10) - group - 10);
}

// Tags that match, attributes in quotes, no stray signs: enough for what the writer can get wrong.
testing::AssertionResult IsWellFormed(const std::string& svg) {
  std::vector<std::string> open;
  for (std::size_t at = 0; at < svg.size(); ++at) {
    if (static_cast<unsigned char>(svg[at]) < 0x20 && svg[at] != '\n') {
      return testing::AssertionFailure() << "control character at " << at;
    }
    if (svg[at] == '&' && svg.find(';', at) > at + 5) return testing::AssertionFailure() << "&";
    if (svg[at] != '<') continue;
    const auto end = svg.find('>', at);
    if (end == std::string::npos) return testing::AssertionFailure() << "tag without end";
    const std::string tag = svg.substr(at + 1, end - at - 1);
    if (tag.find('<') != std::string::npos || CountOf(tag, "\"") % 2 != 0) {
      return testing::AssertionFailure() << "tag " << tag;
    }
    const std::string name = tag.substr(0, tag.find_first_of(" />", 1));
    if (tag[0] == '/') {
      if (open.empty() || "/" + open.back() != tag) {
        return testing::AssertionFailure() << tag << " closes nothing";
      }
      open.pop_back();
    } else if (tag.back() != '/' && tag[0] != '?') {
      open.push_back(name);
    }
    at = end;
  }
  if (!open.empty()) return testing::AssertionFailure() << open.back() << " is open";
  return testing::AssertionSuccess();
}

// 50 points 100 m apart, somewhat moved, each observed to its neighbours.
Sketch FiftyPoints() {
  Sketch sketch;
  sketch.title = "Fifty";
  for (int i = 0; i < 50; ++i) {
    const double north = 100.0 * (i / 10) + 7 * (i * 5 % 7), east = 100.0 * (i % 10) + 5 * (i % 9);
    sketch.points.push_back(Placed(std::to_string(100 + i), north, east));
    sketch.points.back().ellipse = SketchEllipse{0.004 + 0.0001 * i, 0.002, 30.0};
    if (i % 10 > 0) sketch.lines.push_back({i - 1, i, kBothWays, kBothWays, kNone});
    if (i >= 10) sketch.lines.push_back({i - 10, i, kNone, kForward, kNone});
  }
  return sketch;
}

// A levelling network: a ring, a branch with many ends, and a point of its own.
Sketch Levelling(int ring, int ends) {
  Sketch sketch;
  const auto add = [&](int from) {
    sketch.points.push_back({.name = std::to_string(sketch.points.size())});
    const int to = static_cast<int>(sketch.points.size()) - 1;
    if (from >= 0) sketch.lines.push_back({from, to, kNone, kNone, kForward});
  };
  add(-1);
  for (int i = 1; i < ring; ++i) add(i - 1);
  sketch.lines.push_back({ring - 1, 0, kNone, kNone, kForward});
  for (int i = 0; i < ends; ++i) add(0);
  add(-1);
  return sketch;
}

double Distance(const SketchPlace& a, const SketchPlace& b) {
  return std::hypot(a.x - b.x, a.y - b.y);
}

TEST(Svg, StaysWellFormedWhateverItIsGiven) {
  Sketch sketch;
  EXPECT_TRUE(IsWellFormed(Svg(sketch)));
  sketch.title = "<\"A\" & B>\x01\xff";
  for (const char* name : {"a<b", "\"&amp;", "\x07", "\xe4\xb8", "\xed\xa0\x80", "北山", ""}) {
    sketch.points.push_back(Placed(name, 10.0 * static_cast<double>(sketch.points.size()), 5.0));
  }
  sketch.points[1].x = NAN;
  sketch.points[2].y = 1e300;
  sketch.points[3].ellipse = SketchEllipse{INFINITY, 0.0, NAN};
  sketch.lines = {{0, 7, kBothWays}, {-1, 0, kBothWays}, {2, 2, kBothWays}, {0, 1, kBothWays}};
  const std::string svg = Svg(sketch);
  EXPECT_TRUE(IsWellFormed(svg));
  EXPECT_EQ(CountOf(svg, "data-point="), 7U);
  EXPECT_EQ(CountOf(svg, "data-line="), 1U);
  EXPECT_THAT(svg, HasSubstr("<title>北山</title>"));
  EXPECT_THAT(svg, Not(testing::HasSubstr("nan")));
  EXPECT_THAT(svg, Not(testing::HasSubstr("inf\"")));
  EXPECT_EQ(ClassOf(svg, "data-point=\"2\""), "new unplaced");
}

TEST(Svg, HasNorthUpEastRightAndTheEllipseAtItsAzimuth) {
  Sketch sketch;
  sketch.points = {Placed("A", 4000.0, 500.0, kControl), Placed("N", 4100.0, 500.0),
                   Placed("E", 4000.0, 600.0, kBenchMark)};
  sketch.points[1].ellipse = SketchEllipse{0.010, 0.005, 30.0};
  sketch.lines = {{0, 1, kBothWays}, {0, 2, kBothWays}};
  const std::string svg = Svg(sketch);
  const std::string north = TagWith(svg, "data-point=\"1\""),
                    east = TagWith(svg, "data-point=\"2\"");
  EXPECT_LT(Number(north, "cy"), Number(east, "cy"));
  EXPECT_LT(Number(north, "cx"), Number(east, "cx"));
  EXPECT_NEAR(Number(east, "cy") - Number(north, "cy"), Number(east, "cx") - Number(north, "cx"),
              0.11);
  EXPECT_EQ(ClassOf(svg, "data-point=\"0\""), "control");
  EXPECT_THAT(TagWith(svg, "data-point=\"0\""), HasSubstr("Z\""));
  // The larger axis points up and is turned clockwise.
  const std::string ellipse = TagWith(svg, "data-ellipse=\"1\"");
  EXPECT_NEAR(Number(ellipse, "ry"), 2.0 * Number(ellipse, "rx"), 0.11);
  EXPECT_THAT(ellipse, HasSubstr("rotate(30)"));
}

TEST(Svg, ShowsWhatWasObservedAndWhatIsInDoubt) {
  Sketch sketch;
  for (int i = 0; i < 8; ++i) sketch.points.push_back(Placed("P", i % 2 * 100.0, i * 50.0));
  sketch.points[7].isFlagged = true;
  sketch.lines = {{0, 1, kBothWays, kBothWays, kNone},
                  {1, 2, kNone, kBothWays, kNone},
                  {2, 3, kBothWays, kNone, kNone},
                  {3, 4, kNone, kNone, kBothWays},
                  {4, 5, kNone, kForward, kNone},
                  {5, 6, kNone, {false, true}, kNone, true, false},
                  {6, 7, kNone, kBothWays, kNone, false, true}};
  const std::string svg = Svg(sketch);
  std::vector<std::string> classes;
  std::vector<std::size_t> strokes;
  for (int i = 0; i < 7; ++i) {
    const std::string attribute = std::string("data-line=\"").append(std::to_string(i)) + "\"";
    classes.push_back(ClassOf(svg, attribute));
    strokes.push_back(CountOf(TagWith(svg, attribute), "M"));
  }
  EXPECT_THAT(classes, ElementsAre("both", "direction", "distance", "levelled", "direction",
                                   "direction flagged", "direction unchecked"));
  // A tick has one stroke, an arrow two.
  EXPECT_THAT(strokes, ElementsAre(1, 1, 2, 1, 3, 3, 1));
  EXPECT_EQ(ClassOf(svg, "data-point=\"7\""), "new flagged");
  sketch.language = Language::kChinese;
  EXPECT_THAT(Svg(sketch), HasSubstr(">待定点</text>"));
}

TEST(Sketch, LabelsOfFiftyPointsKeepApart) {
  const Sketch sketch = FiftyPoints();
  const SketchScene scene = MakeScene(sketch, 0.0);
  EXPECT_EQ(scene.labels.size(), 50U);
  struct Box {
    double left, right, top, bottom;
  };
  std::vector<Box> boxes;
  for (const PagePoint& p : scene.points) {
    const double r = scene.symbolRadius;
    boxes.push_back({p.x - r, p.x + r, p.y - r, p.y + r});
  }
  for (const SketchLabel& label : scene.labels) {
    const double width =
        TextWidth(sketch.points[static_cast<std::size_t>(label.point)].name) * scene.fontSize;
    const double left = label.at.x - width * 0.5 * static_cast<int>(label.anchor);
    const Box box{left, left + width, label.at.y - 0.7 * scene.fontSize, label.at.y};
    for (const Box& other : boxes) {
      EXPECT_TRUE(box.right <= other.left || other.right <= box.left || box.bottom <= other.top ||
                  other.bottom <= box.top)
          << "label of " << label.point;
    }
    boxes.push_back(box);
  }
}

TEST(Sketch, ScalesAreRound) {
  const double most[] = {0.0099, 0.01, 1.0, 1.99, 2.0, 4.9, 9.99, 1000.0, 73000.0};
  const double round[] = {0.005, 0.01, 1.0, 1.0, 2.0, 2.0, 5.0, 1000.0, 50000.0};
  for (std::size_t i = 0; i < std::size(most); ++i) {
    EXPECT_NEAR(RoundDown125(most[i]), round[i], 1e-9 * round[i]) << most[i];
  }
  EXPECT_EQ(RoundDown125(NAN), 0.0);
  EXPECT_EQ(RoundLength(0.0005), "0.5 mm");
  EXPECT_EQ(RoundLength(0.02), "20 mm");
  EXPECT_EQ(RoundLength(5.0), "5 m");
  EXPECT_EQ(RoundLength(2000.0), "2 km");

  const SketchScene scene = MakeScene(FiftyPoints(), 0.0);
  EXPECT_EQ(RoundDown125(scene.exaggeration), scene.exaggeration);
  const double largest = 0.0089 * scene.scale * scene.exaggeration;
  EXPECT_GT(largest, scene.symbolRadius);
  EXPECT_LT(largest, 50.0 * scene.scale) << "half the distance of the points";
}

TEST(Sketch, PointsWithoutCoordinatesStandApartAndNearTheirNeighbours) {
  const Sketch sketch = Levelling(12, 6);
  const SketchLayout layout = LayOut(sketch);
  EXPECT_TRUE(layout.isSchematic);
  for (std::size_t i = 0; i < layout.places.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      EXPECT_GT(Distance(layout.places[i], layout.places[j]), 0.39) << i << " " << j;
    }
  }
  for (const SketchLine& line : sketch.lines) {
    const double length = Distance(layout.places[static_cast<std::size_t>(line.a)],
                                   layout.places[static_cast<std::size_t>(line.b)]);
    EXPECT_GT(length, 0.39);
    EXPECT_LT(length, 1.6);
  }
  // A ring alone becomes a regular polygon.  Its radius R minimizes the sum of (d - R c)^2 / d^2
  // over all pairs, d lines apart, c their chord in the unit circle.
  const SketchLayout ring = LayOut(Levelling(12, 0));
  EXPECT_NEAR(Distance(ring.places[0], ring.places[6]), 2.0 * 2.1855, 0.05);
  EXPECT_NEAR(Distance(ring.places[3], ring.places[9]), 2.0 * 2.1855, 0.05);

  Sketch mixed = FiftyPoints();
  mixed.points[33].isPlaced = false;
  mixed.points[0].isPlaced = false;
  const SketchLayout beside = LayOut(mixed);
  EXPECT_FALSE(beside.isSchematic);
  EXPECT_EQ(beside.places[7].x, mixed.points[7].x);
  EXPECT_LT(Distance(beside.places[33], {mixed.points[33].x, mixed.points[33].y}), 60.0);
  EXPECT_LT(Distance(beside.places[0], beside.places[1]), 200.0);
}

// Any step that looked at pairs of points would take minutes here.
TEST(Sketch, ManyPointsTakeNoLongerEachThanFew) {
  Sketch sketch = Levelling(10'000, 10'000);
  for (int i = 0; i < 10'000; ++i) {
    sketch.points.push_back({.name = "alone"});
    sketch.points.push_back(Placed("here", 0.0, 0.0));
  }
  const std::string svg = Svg(sketch, {.isEmbedded = true});
  EXPECT_EQ(CountOf(svg, "data-point="), sketch.points.size());
  EXPECT_EQ(svg, Svg(sketch, {.isEmbedded = true}));
}

TEST(Dxf, HasExactCoordinatesOnLayersByKind) {
  Sketch sketch = FiftyPoints();
  sketch.points[0] = Placed("北\n1", 4001234.5678, 500123.25, kControl);
  sketch.points[1] = Placed("B", 4001000.0, 500000.0, kBenchMark);
  const std::string dxf = Dxf(sketch);
  std::istringstream in(dxf);
  std::string code, value, last;
  std::vector<std::string> values;
  while (std::getline(in, code) && std::getline(in, value)) {
    EXPECT_EQ(code.find_first_not_of("0123456789"), std::string::npos) << code;
    values.push_back(value);
  }
  EXPECT_EQ(values.back(), "EOF");
  EXPECT_THAT(dxf,
              HasSubstr("INSERT\n8\nCONTROL\n2\nCONTROL\n10\n500123.2500\n20\n4001234.5678\n"));
  EXPECT_THAT(dxf, HasSubstr("INSERT\n8\nBENCH_MARKS\n"));
  EXPECT_THAT(dxf, HasSubstr("LINE\n8\nLINES_BOTH\n10\n500123.2500\n20\n4001234.5678\n"));
  EXPECT_THAT(dxf, HasSubstr("\n1\n\\U+5317\\U+FFFD1\n"));
  EXPECT_EQ(CountOf(dxf, "\nTEXT\n8\nLABELS\n"), 50U);
  EXPECT_THAT(dxf, HasSubstr("error ellipse x "));
}

// Its corners, east and north of the point: the farthest one lies at the azimuth of the semi-axis
// e.
TEST(Dxf, HasTheEllipseAtItsAzimuth) {
  Sketch sketch;
  sketch.points = {Placed("A", 0.0, 0.0, kControl), Placed("P", 700.0, 500.0)};
  sketch.points[1].ellipse = {0.02, 0.01, 30.0};
  sketch.lines = {{0, 1, kBothWays}};
  const std::string dxf = Dxf(sketch);
  const auto note = dxf.find("error ellipse x ");
  ASSERT_NE(note, std::string::npos);
  const double exaggeration = std::stod(dxf.substr(note + 16));
  double largest = 0.0;
  double smallest = 1e9;
  double azimuth = 0.0;
  const std::string vertex = "VERTEX\n8\nELLIPSES\n10\n";
  for (auto at = dxf.find(vertex); at != std::string::npos; at = dxf.find(vertex, at + 1)) {
    const std::size_t north = dxf.find("\n20\n", at) + 4;
    const double dy = std::stod(dxf.substr(at + vertex.size())) - 500.0;
    const double dx = std::stod(dxf.substr(north)) - 700.0;
    const double length = std::hypot(dx, dy);
    smallest = std::min(smallest, length);
    if (length <= largest) continue;
    largest = length;
    azimuth = std::atan2(dy, dx) * 180.0 / std::numbers::pi;
  }
  EXPECT_NEAR(largest, 0.02 * exaggeration, 1e-3);
  EXPECT_NEAR(smallest, 0.01 * exaggeration, 1e-3);
  EXPECT_NEAR(std::fmod(azimuth + 360.0, 180.0), 30.0, 1e-2);
}

}  // namespace
}  // namespace brenu
