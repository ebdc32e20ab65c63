#include "report/dxf_sketch.h"

#include <cmath>
#include <cstddef>
#include <numbers>

#include "report/dxf_writer.h"
#include "report/sketch_lines.h"
#include "report/sketch_scale.h"
#include "report/sketch_scene.h"
#include "report/sketch_words.h"

namespace brenu {

namespace {

constexpr int kEllipseCorners = 36;

constexpr std::string_view BlockOf(SketchPoint::Kind kind) {
  return kind == SketchPoint::Kind::kControl     ? "CONTROL"
         : kind == SketchPoint::Kind::kBenchMark ? "BENCH_MARK"
                                                 : "NEW_POINT";
}

constexpr std::string_view LayerOf(SketchPoint::Kind kind) {
  return kind == SketchPoint::Kind::kControl     ? "CONTROL"
         : kind == SketchPoint::Kind::kBenchMark ? "BENCH_MARKS"
                                                 : "NEW_POINTS";
}

constexpr std::string_view LayerOf(LineKind kind) {
  switch (kind) {
    case LineKind::kLevelled:
      return "LINES_LEVELLED";
    case LineKind::kDirection:
      return "LINES_DIRECTION";
    case LineKind::kDistance:
      return "LINES_DISTANCE";
    case LineKind::kBoth:
      break;
  }
  return "LINES_BOTH";
}

class Drawing {
 public:
  explicit Drawing(const Sketch& sketch)
      : m_sketch(sketch),
        m_scene(MakeScene(sketch, 0.0)),
        m_extent(ExtentOf(m_scene.layout.places)),
        m_unit(1.0 / m_scene.scale) {
    if (sketch.points.empty()) m_extent = {0.0, 0.0, 0.0, 0.0};
  }

  std::string Write() {
    m_dxf.Begin(m_extent, 5.0 * m_unit,
                {{"CONTROL", 7},
                 {"BENCH_MARKS", 7},
                 {"NEW_POINTS", 7},
                 {"LINES_BOTH", 7},
                 {"LINES_DIRECTION", 8},
                 {"LINES_DISTANCE", 4},
                 {"LINES_LEVELLED", 30},
                 {"ELLIPSES", 6},
                 {"LABELS", 7},
                 {"NOTES", 7}});
    WriteBlocks();
    m_dxf.BeginEntities();
    for (const SketchLine& line : m_sketch.lines) {
      if (IsDrawn(m_sketch, line)) WriteLine(line);
    }
    for (std::size_t i = 0; i < m_sketch.points.size(); ++i) WritePoint(i);
    WriteLabels();
    WriteNotes();
    return m_dxf.Finish();
  }

 private:
  // The symbols of the picture.
  void WriteBlocks() {
    const double r = m_scene.symbolRadius * m_unit;
    m_dxf.BeginBlocks();
    m_dxf.BeginBlock(BlockOf(SketchPoint::Kind::kControl));
    m_dxf.AddTriangle(kOfBlock, {{1.44 * r, 0.0}, {-0.72 * r, 1.25 * r}, {-0.72 * r, -1.25 * r}});
    m_dxf.EndBlock();
    m_dxf.BeginBlock(BlockOf(SketchPoint::Kind::kBenchMark));
    m_dxf.AddDisc(kOfBlock, {0.0, 0.0}, r);
    m_dxf.EndBlock();
    m_dxf.BeginBlock(BlockOf(SketchPoint::Kind::kNew));
    m_dxf.AddCircle(kOfBlock, {0.0, 0.0}, r);
    m_dxf.EndBlock();
  }

  void WriteLine(const SketchLine& line) {
    const DxfLook look{LayerOf(KindOf(line)), line.isFlagged, line.isNotChecked};
    const SketchPlace& a = At(line.a);
    const SketchPlace& b = At(line.b);
    m_dxf.AddLine(look, a, b);
    if (IsLevelledToo(line)) {
      m_dxf.AddLine({LayerOf(LineKind::kLevelled), line.isFlagged, line.isNotChecked}, a, b);
    }
    const double dx = b.x - a.x, dy = b.y - a.y, length = std::hypot(dx, dy);
    const int way = OneWay(line);
    if (way == 0 || !(length > 0.0)) return;
    const double size = way * std::min(6.5 * m_unit, 0.25 * length) / length;
    const double tip = 0.5 + 0.16 * way, back = tip - size, across = 0.45 * size;
    for (const double side : {across, -across}) {
      m_dxf.AddLine({look.layer, look.isRed, false}, {a.x + tip * dx, a.y + tip * dy},
                    {a.x + back * dx - side * dy, a.y + back * dy + side * dx});
    }
  }

  void WritePoint(std::size_t i) {
    const SketchPoint& point = m_sketch.points[i];
    const SketchPlace& place = m_scene.layout.places[i];
    const bool isPlaced = m_scene.layout.isSchematic || HasPlace(point);
    m_dxf.AddInsert({LayerOf(point.kind), point.isFlagged, !isPlaced}, BlockOf(point.kind), place);
    if (!m_scene.ShowsEllipse(point)) return;
    const double e = point.ellipse->e * m_scene.exaggeration;
    const double f = point.ellipse->f * m_scene.exaggeration;
    const double t = point.ellipse->t * std::numbers::pi / 180.0;
    const double c = std::cos(t), s = std::sin(t);
    std::vector<SketchPlace> corners;
    for (int k = 0; k < kEllipseCorners; ++k) {
      const double angle = 2.0 * std::numbers::pi * k / kEllipseCorners;
      const double u = e * std::cos(angle), v = f * std::sin(angle);
      corners.push_back({place.x + c * u - s * v, place.y + s * u + c * v});
    }
    m_dxf.AddPolygon({"ELLIPSES"}, corners);
  }

  // Where the picture has them; names without room there stand beside their points all the same.
  void WriteLabels() {
    std::vector<bool> isWritten(m_sketch.points.size(), false);
    for (const SketchLabel& label : m_scene.labels) {
      const auto i = static_cast<std::size_t>(label.point);
      isWritten[i] = true;
      WriteLabel(i, m_scene.OnGround(label.at), label.anchor);
    }
    const double away = (m_scene.symbolRadius + 2.0) * m_unit;
    for (std::size_t i = 0; i < m_sketch.points.size(); ++i) {
      const SketchPlace& place = m_scene.layout.places[i];
      if (isWritten[i] || m_sketch.points[i].name.empty()) continue;
      WriteLabel(i, {place.x + away, place.y + away}, SketchLabel::Anchor::kStart);
    }
  }

  void WriteLabel(std::size_t i, const SketchPlace& at, SketchLabel::Anchor anchor) {
    m_dxf.AddText({"LABELS", m_sketch.points[i].isFlagged}, at, TextHeight(),
                  m_sketch.points[i].name, static_cast<DxfWriter::Align>(anchor));
  }

  // Title and scale of the ellipses, below the drawing.
  void WriteNotes() {
    std::vector<std::string> notes{m_sketch.title};
    if (m_scene.layout.isSchematic)
      notes.emplace_back(sketch_words::kSchematic.In(m_sketch.language));
    if (m_scene.exaggeration > 0.0) {
      const Words& ellipse =
          m_sketch.hasEllipses95 ? sketch_words::kEllipse95 : sketch_words::kStandardEllipse;
      notes.push_back(std::string(ellipse.In(m_sketch.language)) + " x " +
                      RoundNumber(m_scene.exaggeration));
    }
    double x = m_extent.xMin - 4.0 * TextHeight();
    for (const std::string& note : notes) {
      if (!note.empty()) m_dxf.AddText({"NOTES"}, {x, m_extent.yMin}, TextHeight(), note);
      x -= 2.0 * TextHeight();
    }
  }

  const SketchPlace& At(std::int32_t i) const {
    return m_scene.layout.places[static_cast<std::size_t>(i)];
  }
  // Of capitals, what CAD calls the height of a text.
  double TextHeight() const { return 0.72 * m_scene.fontSize * m_unit; }

  const Sketch& m_sketch;
  SketchScene m_scene;
  SketchExtent m_extent;
  double m_unit;  // of the page, on the ground
  DxfWriter m_dxf;
};

}  // namespace

std::string Dxf(const Sketch& sketch) { return Drawing(sketch).Write(); }

}  // namespace brenu
