#include "plane/approximate/fit.h"

#include <algorithm>

namespace brenu::approximate {

namespace {

Position Turned(const Position& p, double turn) {
  const double c = std::cos(turn);
  const double s = std::sin(turn);
  return {c * p.x - s * p.y, s * p.x + c * p.y};
}

Position Mirrored(const Position& p) { return {p.x, -p.y}; }

// Through two points.
std::optional<Similarity> Through(const CommonPlace& a, const CommonPlace& b, bool scaleIsFree,
                                  bool mirrors) {
  Position own = b.own - a.own;
  if (mirrors) own = Mirrored(own);
  const Position known = b.known - a.known;
  if (!(LengthOf(own) > 0.0) || !(LengthOf(known) > 0.0)) return std::nullopt;
  Similarity s;
  s.mirrors = mirrors;
  s.turn = AngleOf(known) - AngleOf(own);
  s.scale = scaleIsFree ? LengthOf(known) / LengthOf(own) : 1.0;
  const Position middle = 0.5 * (a.own + b.own);
  s.shift = 0.5 * (a.known + b.known) - s(middle);
  return s;
}

// Sum of capped squared misfits.
double CostOf(const Similarity& s, const std::vector<CommonPlace>& common, double reach) {
  double cost = 0.0;
  for (const CommonPlace& c : common) {
    const double ratio = LengthOf(s(c.own) - c.known) / reach;
    cost += std::min(1.0, ratio * ratio);
  }
  return cost;
}

// Least squares over the points that agree.
Similarity Refined(const Similarity& s, const std::vector<CommonPlace>& common, double reach,
                   bool scaleIsFree) {
  std::vector<CommonPlace> agreeing;
  for (const CommonPlace& c : common) {
    if (LengthOf(s(c.own) - c.known) < reach) agreeing.push_back(c);
  }
  if (agreeing.size() < 2) return s;
  Position own{0.0, 0.0};
  Position known{0.0, 0.0};
  for (CommonPlace& c : agreeing) {
    if (s.mirrors) c.own = Mirrored(c.own);
    own = own + c.own;
    known = known + c.known;
  }
  const auto count = static_cast<double>(agreeing.size());
  own = (1.0 / count) * own;
  known = (1.0 / count) * known;
  double along = 0.0;
  double across = 0.0;
  double size = 0.0;
  for (const CommonPlace& c : agreeing) {
    const Position p = c.own - own;
    const Position q = c.known - known;
    along += Dot(p, q);
    across += Cross(p, q);
    size += Dot(p, p);
  }
  Similarity refined = s;
  refined.turn = std::atan2(across, along);
  if (scaleIsFree && size > 0.0) refined.scale = std::hypot(along, across) / size;
  refined.shift = known - refined.scale * Turned(own, refined.turn);
  return refined;
}

}  // namespace

Position Similarity::operator()(const Position& p) const {
  return scale * Turned(mirrors ? Mirrored(p) : p, turn) + shift;
}

std::optional<Similarity> FitPlaces(const std::vector<CommonPlace>& common, bool scaleIsFree,
                                    bool mayMirror) {
  if (common.size() < (mayMirror ? 3U : 2U)) return std::nullopt;
  double extent = 0.0;
  for (const CommonPlace& c : common) {
    extent = std::max(extent, LengthOf(c.known - common.front().known));
  }
  const double reach = 0.2 + 2e-3 * extent;
  std::optional<Similarity> best[2];  // as it is, and mirrored
  double least[2] = {0.0, 0.0};
  const std::size_t count = common.size();
  // Each with one far along the list, and its next: enough pairs to meet two good points.
  for (std::size_t i = 0; i < std::min<std::size_t>(count, 40); ++i) {
    for (const std::size_t step : {std::size_t{1}, (count + 1) / 2}) {
      const std::size_t j = (i + step) % count;
      if (i == j) continue;
      for (std::size_t side = 0; side < (mayMirror ? 2U : 1U); ++side) {
        const auto s = Through(common[i], common[j], scaleIsFree, side == 1);
        if (!s) continue;
        const double cost = CostOf(*s, common, reach);
        if (best[side] && cost >= least[side]) continue;
        least[side] = cost;
        best[side] = s;
      }
    }
  }
  constexpr double kClear = 0.5;  // points on a line fit both ways
  if (best[0] && best[1] && std::fabs(least[0] - least[1]) < kClear) return std::nullopt;
  const std::size_t side = best[1] && (!best[0] || least[1] < least[0]) ? 1 : 0;
  if (!best[side]) return std::nullopt;
  return Refined(*best[side], common, reach, scaleIsFree);
}

}  // namespace brenu::approximate
