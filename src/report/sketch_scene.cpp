#include "report/sketch_scene.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <string_view>
#include <utility>

#include "core/median.h"
#include "report/sketch_scale.h"

namespace brenu {

namespace {

constexpr double kFontSize = 12.0;
constexpr double kNarrowest = 500.0, kWidest = 1120.0;
constexpr double kTallest = 1.3, kFlattest = 0.3;  // height by width
// Among many points a name may cover few lines only.
constexpr std::size_t kManyPoints = 300;
constexpr double kMostCover = 2.0;
constexpr double kSmallestEllipse = 0.4;  // semi-axis, units of the page

// Few points in large letters for a telephone, many on a page that paper still shows readably.
double WidthFor(std::size_t points) {
  const double ratio = static_cast<double>(std::max<std::size_t>(points, 1)) / 20.0;
  return std::clamp(kNarrowest * std::pow(ratio, 0.22), kNarrowest, kWidest);
}

bool IsEllipse(const SketchPoint& point) {
  return point.ellipse && point.ellipse->e > 0.0 && std::isfinite(point.ellipse->e) &&
         point.ellipse->f >= 0.0 && std::isfinite(point.ellipse->f) &&
         std::isfinite(point.ellipse->t);
}

// The median length of the lines on the page; 0 without lines.
double UsualLine(const Sketch& sketch, const SketchScene& scene) {
  std::vector<double> lengths;
  for (const SketchLine& line : sketch.lines) {
    if (!IsDrawn(sketch, line)) continue;
    const PagePoint& a = scene.points[static_cast<std::size_t>(line.a)];
    const PagePoint& b = scene.points[static_cast<std::size_t>(line.b)];
    lengths.push_back(std::hypot(b.x - a.x, b.y - a.y));
  }
  return lengths.empty() ? 0.0 : Median(std::move(lengths));
}

// Three of four ellipses come out at most as large as suits the lines, and the largest one stays on
// the page.
double Exaggeration(const Sketch& sketch, const SketchScene& scene) {
  if (scene.layout.isSchematic) return 0.0;
  std::vector<double> axes;
  for (const SketchPoint& point : sketch.points) {
    if (IsEllipse(point) && HasPlace(point)) axes.push_back(point.ellipse->e);
  }
  if (axes.empty()) return 0.0;
  std::sort(axes.begin(), axes.end());
  const double usual = axes[axes.size() * 3 / 4] * scene.scale;
  const double largest = axes.back() * scene.scale;
  return RoundDown125(std::min(0.35 * std::min(UsualLine(sketch, scene), 100.0) / usual,
                               0.12 * std::min(scene.width, scene.height) / largest));
}

// What the reader looks for first finds room first.
std::vector<std::int32_t> LabelOrder(const Sketch& sketch) {
  std::vector<std::int32_t> order(sketch.points.size());
  std::iota(order.begin(), order.end(), 0);
  std::stable_sort(order.begin(), order.end(), [&sketch](std::int32_t a, std::int32_t b) {
    const auto rank = [&sketch](std::int32_t i) {
      const SketchPoint& point = sketch.points[static_cast<std::size_t>(i)];
      return point.isFlagged ? 0 : 1 + static_cast<int>(point.kind);
    };
    return rank(a) < rank(b);
  });
  return order;
}

void AddLabels(const Sketch& sketch, SketchScene& scene) {
  LabelField field(scene.width, scene.height);
  for (const SketchLine& line : sketch.lines) {
    if (!IsDrawn(sketch, line)) continue;
    field.AddLine(scene.points[static_cast<std::size_t>(line.a)],
                  scene.points[static_cast<std::size_t>(line.b)], line.isFlagged ? 8 : 1);
  }
  std::vector<std::string_view> names;
  std::vector<bool> isMarked;
  for (std::size_t i = 0; i < sketch.points.size(); ++i) {
    names.emplace_back(sketch.points[i].name);
    isMarked.push_back(sketch.points[i].isFlagged ||
                       sketch.points[i].kind != SketchPoint::Kind::kNew);
    field.AddSymbol(scene.points[i], scene.symbolRadius, isMarked.back());
  }
  const double mostCover =
      sketch.points.size() > kManyPoints ? kMostCover : LabelField::kOverSymbol - 1.0;
  scene.labels = PlaceLabels(field, scene.points, names, LabelOrder(sketch), isMarked,
                             {scene.fontSize, scene.symbolRadius + 1.0, mostCover});
}

}  // namespace

bool SketchScene::ShowsEllipse(const SketchPoint& point) const {
  return exaggeration > 0.0 && IsEllipse(point) && HasPlace(point) &&
         point.ellipse->e * scale * exaggeration > kSmallestEllipse;
}

SketchPlace SketchScene::OnGround(const PagePoint& page) const {
  const SketchPlace& place = layout.places.front();
  const PagePoint& at = points.front();
  return {place.x + (at.y - page.y) / scale, place.y + (page.x - at.x) / scale};
}

SketchScene MakeScene(const Sketch& sketch, double width) {
  SketchScene scene{};
  const std::size_t count = sketch.points.size();
  scene.width = width > 0.0 ? width : WidthFor(count);
  scene.fontSize = kFontSize;
  scene.layout = LayOut(sketch);

  // Room for a name beside the outermost points.
  double longest = 3.0;
  for (const SketchPoint& point : sketch.points) {
    longest = std::max(longest, std::min(8.0, TextWidth(point.name)));
  }
  const double side = longest * scene.fontSize + 12.0, edge = 36.0;
  const SketchExtent extent = count > 0 ? ExtentOf(scene.layout.places) : SketchExtent{0, 0, 0, 0};
  const double inner = std::max(scene.width - 2.0 * side, 0.4 * scene.width);
  const double tallest = kTallest * scene.width - 2.0 * edge;
  scene.scale = std::min(inner / extent.Width(), tallest / extent.Height());
  if (!std::isfinite(scene.scale)) scene.scale = 1.0;  // one point, or all on one place
  scene.height = std::max(extent.Height() * scene.scale + 2.0 * edge, kFlattest * scene.width);

  const double left = (scene.width - extent.Width() * scene.scale) / 2.0;
  const double top = (scene.height - extent.Height() * scene.scale) / 2.0;
  scene.points.reserve(count);
  for (const SketchPlace& place : scene.layout.places) {
    scene.points.push_back({left + (place.y - extent.yMin) * scene.scale,
                            top + (extent.xMax - place.x) * scene.scale});
  }
  const double spacing =
      std::sqrt(scene.width * scene.height / static_cast<double>(std::max<std::size_t>(count, 1)));
  scene.symbolRadius = std::clamp(0.14 * spacing, 1.5, 4.5);
  scene.lineWidth = std::clamp(0.035 * spacing, 0.5, 1.3);
  scene.exaggeration = Exaggeration(sketch, scene);
  AddLabels(sketch, scene);
  return scene;
}

}  // namespace brenu
