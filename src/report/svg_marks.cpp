#include "report/svg_marks.h"

#include <algorithm>
#include <cmath>

namespace brenu {

namespace {

constexpr double kShortestMarked = 26.0;
constexpr double kTick = 4.0, kArrow = 6.5;

void AppendStroke(std::string& out, const PagePoint& from, const PagePoint& to) {
  out += 'M';
  AppendPoint(out, from);
  out += 'L';
  AppendPoint(out, to);
}

void AppendColour(std::string& out, std::string_view attribute, const SvgPaint& paint) {
  out += ' ';
  out += attribute;
  out += "=\"";
  out += paint.colour;
  out += '"';
}

}  // namespace

SvgPaint PaintOf(LineKind kind) {
  switch (kind) {
    case LineKind::kLevelled:
      return {"levelled", "#a15c07"};
    case LineKind::kDirection:
      return {"direction", "#7b8794"};
    case LineKind::kDistance:
      return {"distance", "#0b7fa5"};
    case LineKind::kBoth:
      break;
  }
  return {"both", "#1f2933"};
}

std::string_view NameOf(LineKind kind) { return PaintOf(kind).name; }

double StrokeOf(LineKind kind) {
  return kind == LineKind::kBoth ? 1.2 : kind == LineKind::kDirection ? 0.8 : 1.0;
}

void AppendLineGroup(std::string& out, const LineLook& look, double lineWidth) {
  out += "<g class=\"";
  out += NameOf(look.kind);
  if (look.isFlagged) out += " flagged";
  if (look.isNotChecked) out += " unchecked";
  out += '"';
  AppendColour(out, "stroke", look.isFlagged ? kFlag : PaintOf(look.kind));
  out += " stroke-width=\"";
  const double stroke = lineWidth * StrokeOf(look.kind);
  AppendUnits(out, look.isFlagged ? std::max(stroke + 0.8, 2.2) : std::max(stroke, 0.3));
  out += '"';
  if (look.isNotChecked) {
    out += " stroke-dasharray=\"";
    AppendPoint(out, {4.6 * lineWidth, 3.6 * lineWidth});
    out += '"';
  }
  out += ">\n";
}

bool HasRoomForMarks(const PagePoint& a, const PagePoint& b) {
  return std::hypot(b.x - a.x, b.y - a.y) > kShortestMarked;
}

void AppendLinePath(std::string& out, const SketchLine& line, const PagePoint& a,
                    const PagePoint& b) {
  AppendStroke(out, a, b);
  if (!HasRoomForMarks(a, b)) return;
  const double length = std::hypot(b.x - a.x, b.y - a.y);
  const double ux = (b.x - a.x) / length, uy = (b.y - a.y) / length;
  // A place on the line, and beside it.
  const auto at = [&](double along, double across) {
    return PagePoint{a.x + along * ux - across * uy, a.y + along * uy + across * ux};
  };
  if (KindOf(line) == LineKind::kDistance) {
    AppendStroke(out, at(0.5 * length, -kTick), at(0.5 * length, kTick));
  }
  const int way = OneWay(line);
  if (way == 0) return;
  // Two strokes from the tip, so that dashes begin there.
  const double tip = (0.5 + 0.16 * way) * length, back = tip - way * kArrow;
  AppendStroke(out, at(tip, 0.0), at(back, 0.45 * kArrow));
  AppendStroke(out, at(tip, 0.0), at(back, -0.45 * kArrow));
}

void AppendPointGroup(std::string& out, const PointLook& look, double lineWidth) {
  const bool isFilled = look.kind != SketchPoint::Kind::kNew;
  out += "<g class=\"";
  out += look.kind == SketchPoint::Kind::kControl     ? "control"
         : look.kind == SketchPoint::Kind::kBenchMark ? "bench"
                                                      : "new";
  if (look.isFlagged) out += " flagged";
  if (!look.isPlaced) out += " unplaced";
  out += '"';
  const SvgPaint& stroke = look.isFlagged ? kFlag : kInk;
  AppendColour(out, "stroke", stroke);
  AppendColour(out, "fill", isFilled ? stroke : kPaper);
  out += " stroke-width=\"";
  AppendUnits(out, lineWidth + (look.isFlagged ? 0.8 : 0.0));
  out += '"';
  if (!look.isPlaced) out += " stroke-dasharray=\"2 2\"";
  if (!look.isPlaced && isFilled) out += " fill-opacity=\"0.4\"";
  out += ">\n";
}

void AppendSymbol(std::string& out, SketchPoint::Kind kind, const PagePoint& at, double radius,
                  std::string_view& tag) {
  if (kind == SketchPoint::Kind::kControl) {
    tag = "path";
    const double half = 1.25 * radius;
    out += "<path d=\"M";
    AppendPoint(out, {at.x, at.y - 1.44 * radius});
    out += 'L';
    AppendPoint(out, {at.x + half, at.y + 0.72 * radius});
    out += 'L';
    AppendPoint(out, {at.x - half, at.y + 0.72 * radius});
    out += "Z\"";
    return;
  }
  tag = "circle";
  out += "<circle";
  AppendAttribute(out, "cx", at.x);
  AppendAttribute(out, "cy", at.y);
  AppendAttribute(out, "r", radius);
}

}  // namespace brenu
