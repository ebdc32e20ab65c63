#include "plane/traverse.h"

#include <cmath>
#include <limits>

#include "core/angles.h"

namespace brenu {

namespace {

std::vector<TraversePoint> MakePoints(const MeasuredTraverse& m) {
  std::vector<TraversePoint> points(m.names.size());
  for (std::size_t i = 0; i < points.size(); ++i) {
    points[i].name = m.names[i];
    if (i > 0 && i < m.names.size() - 1) points[i].angle = m.angles[i - 1];
    if (i < m.sides.size()) points[i].length = m.sides[i];
  }
  return points;
}

// Azimuths of all sides from that of the first; each angle with its correction.
void CarryAzimuths(std::vector<TraversePoint>& points, double firstAzimuth) {
  double azimuth = firstAzimuth;
  for (std::size_t i = 0; i + 1 < points.size(); ++i) {
    if (i > 0) azimuth += kPi + points[i].angle + points[i].angleCorrection / kRho;
    points[i].azimuth = FullCircle(azimuth);
  }
}

// Increments, linear misclosure, its distribution, coordinates.
void CloseCoordinates(Traverse& t, const MeasuredTraverse& m) {
  auto& points = t.points;
  double x = m.startX;
  double y = m.startY;
  for (std::size_t i = 0; i + 1 < points.size(); ++i) {
    points[i].dx = points[i].length * std::cos(points[i].azimuth);
    points[i].dy = points[i].length * std::sin(points[i].azimuth);
    x += points[i].dx;
    y += points[i].dy;
    t.length += points[i].length;
  }
  const double fx = x - m.endX;
  const double fy = y - m.endY;
  t.lengthMisclosure = std::sqrt(fx * fx + fy * fy);
  t.relativePrecision = RelativePrecision(t.lengthMisclosure, t.length);

  points.front().x = m.startX;
  points.front().y = m.startY;
  for (std::size_t i = 0; i + 1 < points.size(); ++i) {
    points[i].dxCorrection = -fx * points[i].length / t.length;
    points[i].dyCorrection = -fy * points[i].length / t.length;
    points[i + 1].x = points[i].x + points[i].dx + points[i].dxCorrection;
    points[i + 1].y = points[i].y + points[i].dy + points[i].dyCorrection;
  }
}

// The azimuth of the first side of a chain known at neither end: the chain is laid out with a
// provisional azimuth of 0 and turned onto the azimuth between its end points.
double TurnedAzimuth(const MeasuredTraverse& m, std::vector<TraversePoint> points) {
  CarryAzimuths(points, 0.0);
  double x = 0.0;
  double y = 0.0;
  for (const TraversePoint& p : points) {
    x += p.length * std::cos(p.azimuth);
    y += p.length * std::sin(p.azimuth);
  }
  return CalcAzimuth(m.startX, m.startY, m.endX, m.endY) - CalcAzimuth(0.0, 0.0, x, y);
}

// With an orientation at the end only, the azimuth of the first side follows backwards.
double AzimuthFromEnd(const MeasuredTraverse& m) {
  double azimuth = m.end->azimuth - m.end->angle - kPi;  // of the last side
  for (const double angle : m.angles) azimuth -= angle + kPi;
  return azimuth;
}

void DistributeAngles(Traverse& t) {
  const double share = -t.angleMisclosure / t.angleCount;
  for (TraversePoint& p : t.points) {
    if (p.angle >= 0.0) p.angleCorrection = share;
  }
}

}  // namespace

double ReduceToHalfCircle(double angle) {
  const double rest = FullCircle(angle);
  return rest > kPi ? rest - kTwoPi : rest;
}

std::int32_t RelativePrecision(double misclosure, double length) {
  constexpr double kMost = std::numeric_limits<std::int32_t>::max();
  const double n = length / misclosure;
  return n >= kMost ? std::numeric_limits<std::int32_t>::max() : TruncateToInt32(n);
}

Traverse ComputeTraverse(const MeasuredTraverse& m) {
  Traverse t;
  t.points = MakePoints(m);
  TraversePoint& first = t.points.front();
  TraversePoint& last = t.points.back();
  if (m.start) first.angle = m.start->angle;
  if (m.end) last.angle = m.end->angle;

  double azimuth = 0.0;
  if (m.start && m.end) {
    double carried = m.start->azimuth + m.start->angle;
    for (const double angle : m.angles) carried += kPi + angle;
    carried += kPi + m.end->angle;
    t.angleCount = static_cast<std::int32_t>(m.angles.size()) + 2;
    t.angleMisclosure = ReduceToHalfCircle(carried - m.end->azimuth) * kRho;
    DistributeAngles(t);
  }
  if (m.start) {
    azimuth = m.start->azimuth + m.start->angle + first.angleCorrection / kRho;
  } else if (m.end) {
    azimuth = AzimuthFromEnd(m);
  } else {
    azimuth = TurnedAzimuth(m, t.points);
  }
  CarryAzimuths(t.points, azimuth);
  if (m.end) last.azimuth = FullCircle(m.end->azimuth);
  CloseCoordinates(t, m);
  last.x = m.endX;
  last.y = m.endY;
  return t;
}

Traverse ComputeClosedTraverse(const MeasuredTraverse& m, double closingAngle,
                               double startAzimuth) {
  Traverse t;
  t.points = MakePoints(m);
  t.points.front().angle = closingAngle;
  double sum = closingAngle;
  for (const double angle : m.angles) sum += angle;
  t.angleCount = static_cast<std::int32_t>(m.angles.size()) + 1;
  // From back sight to fore sight clockwise is the angle on the left of the way: going round with
  // the inside on the left these are the inner angles, otherwise 360 degrees less those.
  const double inner = (t.angleCount - 2) * kPi;
  const double outer = (t.angleCount + 2) * kPi;
  const bool measuredInside = std::fabs(sum - inner) <= std::fabs(sum - outer);
  const double excess = ReduceToHalfCircle(measuredInside ? sum - inner : sum - outer) * kRho;
  t.angleMisclosure = excess;
  DistributeAngles(t);
  if (!measuredInside) t.angleMisclosure = -excess;
  CarryAzimuths(t.points, startAzimuth);
  CloseCoordinates(t, m);
  // The last row is the first point again.
  t.points.back().x = m.endX;
  t.points.back().y = m.endY;
  return t;
}

}  // namespace brenu
