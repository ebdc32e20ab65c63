#include "report/svg_sketch.h"

#include <cmath>

#include "core/text_number.h"
#include "report/markup.h"
#include "report/sketch_scene.h"
#include "report/svg_legend.h"
#include "report/svg_marks.h"
#include "report/svg_writer.h"

namespace brenu {

namespace {

constexpr std::string_view kFonts =
    "Arial,Helvetica,'Liberation Sans','Microsoft YaHei','Noto Sans CJK SC',sans-serif";

void AppendNumber(std::string& out, std::string_view name, std::size_t number) {
  out += ' ';
  out += name;
  out += "=\"";
  AppendInt(out, static_cast<std::int32_t>(number));
  out += '"';
}

// Colours stand as attributes, too, for programs that know no variables.
void AppendRule(std::string& out, std::string_view selector, std::string_view property,
                const SvgPaint& paint) {
  out += ".sketch ";
  out += selector;
  out += '{';
  out += property;
  out += ":var(--sketch-";
  out += paint.name;
  out += ',';
  out += paint.colour;
  out += ")}\n";
}

void AppendStyle(std::string& out) {
  out += "<style>\n";
  AppendRule(out, ".paper,.sketch .new", "fill", kPaper);
  AppendRule(out, "text,.sketch .north,.sketch .control,.sketch .bench", "fill", kInk);
  AppendRule(out, ".points g,.sketch .legend g,.sketch .bar", "stroke", kInk);
  for (const LineKind kind : kLineKinds) {
    std::string selector = ".lines g.";
    selector.append(NameOf(kind)).append(",.sketch .legend g.").append(NameOf(kind));
    AppendRule(out, selector, "stroke", PaintOf(kind));
  }
  AppendRule(out, ".ellipses", "stroke", kEllipse);
  AppendRule(out, ".ellipses", "fill", kEllipse);
  AppendRule(out, ".lines g.flagged,.sketch .legend g.flagged,.sketch .points g.flagged", "stroke",
             kFlag);
  AppendRule(out, "text.flagged,.sketch .control.flagged,.sketch .bench.flagged", "fill", kFlag);
  AppendRule(out, ".labels", "stroke", kPaper);
  AppendRule(out, "path.selected,.sketch circle.selected,.sketch ellipse.selected", "stroke",
             kSelection);
  out += ".sketch .selected{stroke-width:4px}\n.sketch text.selected{font-weight:bold}\n</style>\n";
}

class Picture {
 public:
  Picture(const Sketch& sketch, const SketchScene& scene, std::string& out)
      : m_sketch(sketch), m_scene(scene), m_out(out) {}

  void AppendLines() {
    m_out += "<g class=\"lines\" fill=\"none\" stroke-linecap=\"round\">\n";
    AppendLevelledToo();
    for (const bool isFlagged : {false, true}) {
      for (const LineKind kind : kLineKinds) {
        for (const bool isNotChecked : {false, true}) {
          AppendLinesLike({kind, isFlagged, isNotChecked});
        }
      }
    }
    m_out += "</g>\n";
  }

  void AppendEllipses() {
    m_out +=
        "<g class=\"ellipses\" stroke=\"#7a4fd0\" fill=\"#7a4fd0\" fill-opacity=\"0.12\" "
        "stroke-width=\"0.8\">\n";
    for (std::size_t i = 0; i < m_sketch.points.size(); ++i) {
      const SketchPoint& point = m_sketch.points[i];
      if (!m_scene.ShowsEllipse(point)) continue;
      const double enlarged = m_scene.scale * m_scene.exaggeration;
      m_out += "<ellipse";
      AppendNumber(m_out, "data-ellipse", i);
      // At azimuth 0 the larger axis points up.
      AppendAttribute(m_out, "rx", point.ellipse->f * enlarged);
      AppendAttribute(m_out, "ry", point.ellipse->e * enlarged);
      m_out += " transform=\"translate(";
      AppendPoint(m_out, m_scene.points[i]);
      m_out += ")rotate(";
      AppendUnits(m_out, std::remainder(point.ellipse->t, 180.0));
      m_out += ")\"/>\n";
    }
    m_out += "</g>\n";
  }

  void AppendPoints() {
    m_out += "<g class=\"points\">\n";
    using enum SketchPoint::Kind;
    for (const bool isFlagged : {false, true}) {
      for (const SketchPoint::Kind kind : {kNew, kBenchMark, kControl}) {
        for (const bool isPlaced : {true, false}) AppendPointsLike({kind, isPlaced, isFlagged});
      }
    }
    m_out += "</g>\n";
  }

  void AppendLabels() {
    m_out +=
        "<g class=\"labels\" paint-order=\"stroke\" stroke=\"#fff\" stroke-width=\"3\" "
        "stroke-linejoin=\"round\">\n";
    using enum SketchLabel::Anchor;
    const std::string_view names[] = {"start", "middle", "end"};
    for (const SketchLabel::Anchor anchor : {kStart, kMiddle, kEnd}) {
      m_out += "<g text-anchor=\"";
      m_out += names[static_cast<std::size_t>(anchor)];
      m_out += "\">\n";
      for (const SketchLabel& label : m_scene.labels) {
        if (label.anchor == anchor) AppendLabel(label);
      }
      m_out += "</g>\n";
    }
    m_out += "</g>\n";
  }

 private:
  const PagePoint& At(std::int32_t i) const { return m_scene.points[static_cast<std::size_t>(i)]; }

  // A broad pale band under lines of the plane that were levelled, too.
  void AppendLevelledToo() {
    std::string bands;
    for (const SketchLine& line : m_sketch.lines) {
      if (!IsDrawn(m_sketch, line) || !IsLevelledToo(line)) continue;
      bands += 'M';
      AppendPoint(bands, At(line.a));
      bands += 'L';
      AppendPoint(bands, At(line.b));
    }
    if (bands.empty()) return;
    m_out += R"(<g class="levelled" stroke="#a15c07" stroke-opacity="0.3" stroke-width=")";
    AppendUnits(m_out, 4.5 * m_scene.lineWidth);
    m_out += "\"><path d=\"";
    m_out += bands;
    m_out += "\"/></g>\n";
  }

  void AppendLinesLike(const LineLook& look) {
    bool isOpen = false;
    for (std::size_t i = 0; i < m_sketch.lines.size(); ++i) {
      const SketchLine& line = m_sketch.lines[i];
      if (!IsDrawn(m_sketch, line) || KindOf(line) != look.kind ||
          line.isFlagged != look.isFlagged || line.isNotChecked != look.isNotChecked) {
        continue;
      }
      if (!isOpen) AppendLineGroup(m_out, look, m_scene.lineWidth);
      isOpen = true;
      m_out += "<path";
      AppendNumber(m_out, "data-line", i);
      m_out += " d=\"";
      AppendLinePath(m_out, line, At(line.a), At(line.b));
      m_out += "\"/>\n";
    }
    if (isOpen) m_out += "</g>\n";
  }

  void AppendPointsLike(const PointLook& look) {
    bool isOpen = false;
    for (std::size_t i = 0; i < m_sketch.points.size(); ++i) {
      const SketchPoint& point = m_sketch.points[i];
      const bool isPlaced = m_scene.layout.isSchematic || HasPlace(point);
      if (point.kind != look.kind || isPlaced != look.isPlaced ||
          point.isFlagged != look.isFlagged) {
        continue;
      }
      if (!isOpen) AppendPointGroup(m_out, look, m_scene.lineWidth);
      isOpen = true;
      std::string_view tag;
      AppendSymbol(m_out, look.kind, m_scene.points[i], m_scene.symbolRadius, tag);
      AppendNumber(m_out, "data-point", i);
      m_out += "><title>";
      AppendEscaped(m_out, point.name);
      m_out += "</title></";
      m_out += tag;
      m_out += ">\n";
    }
    if (isOpen) m_out += "</g>\n";
  }

  void AppendLabel(const SketchLabel& label) {
    const SketchPoint& point = m_sketch.points[static_cast<std::size_t>(label.point)];
    m_out += "<text";
    AppendNumber(m_out, "data-label", static_cast<std::size_t>(label.point));
    AppendAttribute(m_out, "x", label.at.x);
    AppendAttribute(m_out, "y", label.at.y);
    if (point.isFlagged) m_out += R"( class="flagged" fill="#d3122f")";
    m_out += '>';
    AppendEscaped(m_out, point.name);
    m_out += "</text>\n";
  }

  const Sketch& m_sketch;
  const SketchScene& m_scene;
  std::string& m_out;
};

}  // namespace

std::string Svg(const Sketch& sketch, const SvgOptions& options) {
  const SketchScene scene = MakeScene(sketch, options.width);
  std::string map;
  map += "<g transform=\"translate(0 ";
  AppendUnits(map, kSvgHeader);
  map += ")\">\n";
  Picture picture(sketch, scene, map);
  picture.AppendLines();
  picture.AppendEllipses();
  picture.AppendPoints();
  picture.AppendLabels();
  map += "</g>\n";

  AppendSvgHeader(map, sketch, scene);
  const double height = AppendSvgFooter(map, sketch, scene, kSvgHeader + scene.height);

  std::string out;
  out.reserve(map.size() + 4096);
  if (!options.isEmbedded) out += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  out += R"(<svg xmlns="http://www.w3.org/2000/svg" class="sketch" role="img" aria-label=")";
  AppendEscaped(out, sketch.title);
  out += "\" viewBox=\"0 0 ";
  AppendPoint(out, {scene.width, height});
  out += "\" font-family=\"";
  out += kFonts;
  out += "\" font-size=\"";
  AppendUnits(out, scene.fontSize);
  out += "\" fill=\"#1f2933\">\n";
  AppendStyle(out);
  out += "<rect class=\"paper\" width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n";
  out += map;
  out += "</svg>\n";
  return out;
}

}  // namespace brenu
