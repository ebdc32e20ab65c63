#include "plane/circles.h"

#include <algorithm>
#include <cmath>

namespace brenu {

namespace {
constexpr double kVanishing = 1e-11;
}  // namespace

std::optional<std::pair<Position, Position>> Intersect(const Circle& first, const Circle& second) {
  const double dx = second.centre.x - first.centre.x;
  const double dy = second.centre.y - first.centre.y;
  const double d = std::hypot(dx, dy);
  if (std::fabs(d) < kVanishing) return std::nullopt;
  // Foot of the perpendicular from the intersections: a along the line, h off it.
  const double r1 = first.radius;
  const double a = (r1 * r1 - second.radius * second.radius + d * d) / (2.0 * d);
  const double h = std::sqrt(r1 * r1 - a * a);
  if (std::isnan(h) || std::fabs(h) < kVanishing) return std::nullopt;
  const double xm = first.centre.x + a * dx / d;
  const double ym = first.centre.y + a * dy / d;
  return std::pair(Position{xm - h * dy / d, ym + h * dx / d},
                   Position{xm + h * dy / d, ym - h * dx / d});
}

double SideOf(const Position& a, const Position& b, const Position& s) {
  return (b.x - a.x) * (s.y - a.y) - (b.y - a.y) * (s.x - a.x);
}

double IntersectionQuality(const Circle& first, const Circle& second) {
  if (!Intersect(first, second)) return 0.0;
  const double d2 =
      std::pow(second.centre.x - first.centre.x, 2) + std::pow(second.centre.y - first.centre.y, 2);
  const double r1 = first.radius;
  const double r2 = second.radius;
  const double cosine = (r1 * r1 + r2 * r2 - d2) / (2.0 * r1 * r2);
  return std::sqrt(std::max(0.0, 1.0 - cosine * cosine));
}

}  // namespace brenu
