// The symbols of points and the strokes of lines, alike on the map and in the legend.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "report/sketch.h"
#include "report/sketch_lines.h"
#include "report/svg_writer.h"

namespace brenu {

// A class of the picture with a colour that a page may replace by the variable of that name.
struct SvgPaint {
  std::string_view name, colour;
};
inline constexpr SvgPaint kPaper = {"paper", "#fff"};
inline constexpr SvgPaint kInk = {"ink", "#1f2933"};
inline constexpr SvgPaint kFlag = {"flag", "#d3122f"};
inline constexpr SvgPaint kEllipse = {"ellipse", "#7a4fd0"};
inline constexpr SvgPaint kSelection = {"selection", "#f59f00"};
SvgPaint PaintOf(LineKind kind);
std::string_view NameOf(LineKind kind);  // of the class

// Its stroke in terms of the line width of the map.
double StrokeOf(LineKind kind);

struct LineLook {
  LineKind kind;
  bool isFlagged, isNotChecked;
};
// The opening tag of a group of such lines.
void AppendLineGroup(std::string& out, const LineLook& look, double lineWidth);

// The attribute d of the path: the line, a tick across a distance without direction, an arrow for
// what was observed one way.
void AppendLinePath(std::string& out, const SketchLine& line, const PagePoint& a,
                    const PagePoint& b);
// Whether a line between these has room for tick and arrow.
bool HasRoomForMarks(const PagePoint& a, const PagePoint& b);

struct PointLook {
  SketchPoint::Kind kind;
  bool isPlaced, isFlagged;
};
void AppendPointGroup(std::string& out, const PointLook& look, double lineWidth);
// A symbol up to the end of its attributes: "<circle cx=... r=..."; `tag` receives its name.
void AppendSymbol(std::string& out, SketchPoint::Kind kind, const PagePoint& at, double radius,
                  std::string_view& tag);

}  // namespace brenu
