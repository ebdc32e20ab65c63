#include "report/make_sketch.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace brenu {

namespace {

std::uint64_t KeyOf(std::int32_t a, std::int32_t b) {
  const auto [low, high] = std::minmax(a, b);
  return static_cast<std::uint64_t>(low) << 32U | static_cast<std::uint32_t>(high);
}

bool IsLevelled(ObsKind kind) { return kind == ObsKind::kHeightDifference; }

}  // namespace

ReportSketch::ReportSketch(const Report& report, Language language) {
  m_sketch.title = report.file.substr(report.file.find_last_of("/\\") + 1);
  m_sketch.language = language;
  AddPoints(report);
  for (const NetworkReport* network :
       {report.plane ? &*report.plane : static_cast<const NetworkReport*>(nullptr),
        report.heights ? &*report.heights : static_cast<const NetworkReport*>(nullptr)}) {
    if (network != nullptr) AddObservations(*network);
  }
  FlagPoints(report);
}

template <typename Row>
SketchPoint& ReportSketch::Point(const Row& row) {
  const auto [at, isNew] =
      m_points.emplace(row.name, static_cast<std::int32_t>(m_sketch.points.size()));
  if (isNew) m_sketch.points.push_back({row.name});
  return m_sketch.points[static_cast<std::size_t>(at->second)];
}

void ReportSketch::AddPoints(const Report& report) {
  if (report.plane) {
    for (const PlanePointRow& row : report.plane->points) {
      SketchPoint& point = Point(row);
      point.x = row.x;
      point.y = row.y;
      point.isPlaced = std::isfinite(row.x) && std::isfinite(row.y);
      if (row.control) point.kind = SketchPoint::Kind::kControl;
      const EllipseRow& ellipse = row.ellipse;
      if (row.control || !(std::isfinite(ellipse.e) && ellipse.e > 0.0)) continue;
      point.ellipse = SketchEllipse{ellipse.e, ellipse.f, ellipse.t};
    }
  }
  if (!report.heights) return;
  for (const HeightRow& row : report.heights->points) {
    SketchPoint& point = Point(row);
    if (row.control && point.kind == SketchPoint::Kind::kNew) {
      point.kind = SketchPoint::Kind::kBenchMark;
    }
    if (point.isPlaced || !row.map) continue;
    std::tie(point.x, point.y) = *row.map;
    point.isPlaced = true;
  }
}

SketchLine& ReportSketch::Line(std::int32_t from, std::int32_t to) {
  const auto [at, isNew] =
      m_lines.emplace(KeyOf(from, to), static_cast<std::int32_t>(m_sketch.lines.size()));
  if (isNew) {
    m_sketch.lines.push_back({from, to});
    m_sketch.lines.back().isNotChecked = true;  // until an observation is checked
  }
  return m_sketch.lines[static_cast<std::size_t>(at->second)];
}

void ReportSketch::AddObservations(const NetworkReport& network) {
  for (const ObservationRow& row : network.observations) {
    const std::int32_t from = PointOf(row.from);
    const std::int32_t to = PointOf(row.to);
    if (from < 0 || to < 0) continue;
    SketchLine& line = Line(from, to);
    SketchSight& sight = row.kind == ObsKind::kDistance ? line.distance
                         : IsLevelled(row.kind)         ? line.levelled
                                                        : line.direction;
    (line.a == from ? sight.forward : sight.backward) = true;
    line.isFlagged = line.isFlagged || row.exceeds || row.removed;
    line.isNotChecked = line.isNotChecked && (row.removed || row.checked == Checked::kNot);
  }
}

// Points that the verdict names.
void ReportSketch::FlagPoints(const Report& report) {
  for (const Finding& reason : report.verdict.reasons) {
    if (reason.code != BRENU_CONTROL_DOES_NOT_FIT || reason.names.empty()) continue;
    const std::int32_t point = PointOf(reason.names.front());
    if (point >= 0) m_sketch.points[static_cast<std::size_t>(point)].isFlagged = true;
  }
}

std::int32_t ReportSketch::PointOf(std::string_view name) const {
  const auto at = m_points.find(name);
  return at == m_points.end() ? -1 : at->second;
}

std::int32_t ReportSketch::LineOf(std::string_view from, std::string_view to) const {
  const std::int32_t a = PointOf(from);
  const std::int32_t b = PointOf(to);
  if (a < 0 || b < 0) return -1;
  const auto at = m_lines.find(KeyOf(a, b));
  return at == m_lines.end() ? -1 : at->second;
}

}  // namespace brenu
