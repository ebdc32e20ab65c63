#include "report/svg_legend.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "report/markup.h"
#include "report/sketch_scale.h"
#include "report/sketch_words.h"
#include "report/svg_marks.h"

namespace brenu {

namespace {

constexpr double kMargin = 14.0, kRow = 21.0, kMark = 34.0, kGap = 18.0;
constexpr double kTitleSize = 15.0;
constexpr double kLegendRadius = 4.5, kLegendLine = 1.3;

void AppendText(std::string& out, const PagePoint& at, std::string_view text,
                std::string_view attributes = "") {
  out += "<text";
  AppendAttribute(out, "x", at.x);
  AppendAttribute(out, "y", at.y);
  out += attributes;
  out += '>';
  AppendEscaped(out, text);
  out += "</text>\n";
}

// As much of the text as fits, whole characters.
std::string Shortened(std::string_view text, double ems) {
  if (TextWidth(text) <= ems) return std::string(text);
  double width = 1.0;
  std::size_t end = 0;
  while (end < text.size()) {
    std::size_t next = end + 1;
    while (next < text.size() && (static_cast<unsigned char>(text[next]) & 0xc0U) == 0x80) ++next;
    width += TextWidth(text.substr(end, next - end));
    if (width > ems) break;
    end = next;
  }
  return std::string(text.substr(0, end)) + "…";
}

// What the map shows and the legend explains.
struct Contents {
  explicit Contents(const Sketch& sketch, const SketchScene& scene) {
    for (const SketchPoint& point : sketch.points) {
      kinds[static_cast<std::size_t>(point.kind)] = true;
      hasUnplaced = hasUnplaced || (!scene.layout.isSchematic && !HasPlace(point));
      hasFlagged = hasFlagged || point.isFlagged;
      hasEllipse = hasEllipse || scene.ShowsEllipse(point);
    }
    for (const SketchLine& line : sketch.lines) {
      if (!IsDrawn(sketch, line)) continue;
      lines[static_cast<std::size_t>(KindOf(line))] = true;
      if (IsLevelledToo(line)) lines[static_cast<std::size_t>(LineKind::kLevelled)] = true;
      hasFlagged = hasFlagged || line.isFlagged;
      hasNotChecked = hasNotChecked || line.isNotChecked;
      hasArrow = hasArrow || (OneWay(line) != 0 &&
                              HasRoomForMarks(scene.points[static_cast<std::size_t>(line.a)],
                                              scene.points[static_cast<std::size_t>(line.b)]));
    }
  }

  bool kinds[3] = {}, lines[4] = {};
  bool hasUnplaced = false, hasFlagged = false, hasNotChecked = false, hasArrow = false;
  bool hasEllipse = false;
};

// Entries side by side, in as many rows as they need.
class Flow {
 public:
  Flow(std::string& out, const Sketch& sketch, const SketchScene& scene, double top)
      : m_out(out),
        m_language(sketch.language),
        m_width(scene.width),
        m_fontSize(scene.fontSize),
        m_y(top) {}

  // The middle of the left end of an entry of that width.
  PagePoint Next(double width) {
    if (m_x > kMargin && m_x + width > m_width - kMargin) {
      m_x = kMargin;
      m_y += kRow;
    }
    const PagePoint at{m_x, m_y};
    m_x += width + kGap;
    return at;
  }
  double Bottom() const { return m_y; }

  void AddPoint(const PointLook& look, const Words& words) {
    const std::string_view text = words.In(m_language);
    const PagePoint at = Next(20.0 + TextWidth(text) * m_fontSize);
    AppendPointGroup(m_out, look, kLegendLine);
    std::string_view tag;
    AppendSymbol(m_out, look.kind, {at.x + 7.0, at.y}, kLegendRadius, tag);
    m_out += "/></g>\n";
    AppendText(m_out, {at.x + 20.0, at.y + 4.0}, text);
  }

  void AddLine(const SketchLine& line, const LineLook& look, const Words& words) {
    const std::string_view text = words.In(m_language);
    const PagePoint at = Next(kMark + 8.0 + TextWidth(text) * m_fontSize);
    AppendLineGroup(m_out, look, kLegendLine);
    m_out += "<path d=\"";
    AppendLinePath(m_out, line, at, {at.x + kMark, at.y});
    m_out += "\"/></g>\n";
    AppendText(m_out, {at.x + kMark + 8.0, at.y + 4.0}, text);
  }

  // A bar with its length above its end, and words after it.
  void AddBar(double length, std::string_view name, std::string_view text) {
    const double words = TextWidth(text) * m_fontSize;
    const double nameWidth = TextWidth(name) * m_fontSize;
    const PagePoint at = Next(length + 7.0 + nameWidth + (words > 0.0 ? words + 8.0 : 0.0));
    double x = at.x;
    if (words > 0.0) {
      AppendText(m_out, {x, at.y + 4.0}, text);
      x += words + 8.0;
    }
    m_out += R"(<path class="bar" fill="none" stroke="#1f2933" stroke-width="1.3" d="M)";
    AppendPoint(m_out, {x, at.y - 4.0});
    m_out += "v8m0 -4h";
    AppendUnits(m_out, length);
    m_out += "m0 -4v8m-";
    AppendUnits(m_out, length / 2.0);
    m_out += " -6v4\"/>\n";
    AppendText(m_out, {x + length + 7.0, at.y + 4.0}, name);
  }

 private:
  std::string& m_out;
  Language m_language;
  double m_width, m_fontSize;
  double m_x = kMargin, m_y;
};

void AddScales(Flow& flow, const Sketch& sketch, const SketchScene& scene, bool hasEllipse,
               std::string& out) {
  if (sketch.points.empty()) return;
  if (scene.layout.isSchematic) {
    const PagePoint at =
        flow.Next(TextWidth(sketch_words::kSchematic.In(sketch.language)) * scene.fontSize);
    AppendText(out, {at.x, at.y + 4.0}, sketch_words::kSchematic.In(sketch.language));
    return;
  }
  const double metres = RoundDown125(0.25 * scene.width / scene.scale);
  flow.AddBar(metres * scene.scale, RoundLength(metres), "");
  if (!hasEllipse) return;
  const double enlarged = scene.scale * scene.exaggeration;
  const double size = RoundDown125(80.0 / enlarged);
  const Words& ellipse =
      sketch.hasEllipses95 ? sketch_words::kEllipse95 : sketch_words::kStandardEllipse;
  const std::string text =
      std::string(ellipse.In(sketch.language)) + " × " + RoundNumber(scene.exaggeration);
  flow.AddBar(size * enlarged, RoundLength(size), text);
}

}  // namespace

void AppendSvgHeader(std::string& out, const Sketch& sketch, const SketchScene& scene) {
  const double room = scene.width - 2.0 * kMargin - 50.0;
  AppendText(out, {kMargin, 28.0}, Shortened(sketch.title, room / (1.1 * kTitleSize)),
             R"( class="title" font-size="15" font-weight="bold")");
  if (scene.layout.isSchematic || sketch.points.empty()) return;
  const double x = scene.width - 26.0;
  out += R"(<path class="north" fill="#1f2933" d="M)";
  AppendPoint(out, {x, 20.0});
  out += "l5 24l-5 -6l-5 6Z\"/>\n";
  AppendText(out, {x, 16.0}, sketch_words::kNorth.In(sketch.language), " text-anchor=\"middle\"");
}

double AppendSvgFooter(std::string& out, const Sketch& sketch, const SketchScene& scene,
                       double top) {
  const Contents contents(sketch, scene);
  out += "<g class=\"scales\">\n";
  Flow scales(out, sketch, scene, top + 10.0);
  AddScales(scales, sketch, scene, contents.hasEllipse, out);
  out += "</g>\n<g class=\"legend\">\n";

  Flow flow(out, sketch, scene, scales.Bottom() + kRow + 4.0);
  using enum SketchPoint::Kind;
  const Words names[] = {sketch_words::kControl, sketch_words::kBenchMark, sketch_words::kNewPoint};
  for (const SketchPoint::Kind kind : {kControl, kBenchMark, kNew}) {
    const auto k = static_cast<std::size_t>(kind);
    if (contents.kinds[k]) flow.AddPoint({kind, true, false}, names[k]);
  }
  if (contents.hasUnplaced) flow.AddPoint({kNew, false, false}, sketch_words::kNoCoordinates);

  const SketchSight twoWays{true, true};
  const struct {
    Words words;
    SketchLine line;
  } samples[] = {{sketch_words::kBoth, {0, 1, twoWays, twoWays, {}, false, false}},
                 {sketch_words::kDirection, {0, 1, {}, twoWays, {}, false, false}},
                 {sketch_words::kDistance, {0, 1, twoWays, {}, {}, false, false}},
                 {sketch_words::kLevelled, {0, 1, {}, {}, twoWays, false, false}}};
  LineKind shown = LineKind::kDirection;
  for (const auto& [words, line] : samples) {
    const LineKind kind = KindOf(line);
    if (!contents.lines[static_cast<std::size_t>(kind)]) continue;
    flow.AddLine(line, {kind, false, false}, words);
    shown = kind;
  }
  const SketchLine oneWay{0, 1, {}, {true, false}, {}, false, false};
  const SketchLine plain{0, 1, {}, twoWays, {}, false, false};
  if (contents.hasArrow) flow.AddLine(oneWay, {shown, false, false}, sketch_words::kOneWay);
  if (contents.hasNotChecked) flow.AddLine(plain, {shown, false, true}, sketch_words::kNotChecked);
  if (contents.hasFlagged) flow.AddLine(plain, {shown, true, false}, sketch_words::kFlagged);
  out += "</g>\n";
  return flow.Bottom() + kRow - 5.0;
}

}  // namespace brenu
