#include <cmath>

#include "core/angles.h"
#include "plane/plane_adjustment.h"

namespace brenu {

std::optional<PlaneResult> PlaneAdjustment::ResultOfPoint(std::string_view name) const {
  const PointNo point = m_net->layout.IndexOfPoint(name);
  if (point.IsNone() || m_coords.IsEmpty() || IsLeftOut(point)) return std::nullopt;
  return m_coords[m_net->layout.SlotOf(point)];
}

bool PlaneAdjustment::IsControl(std::string_view name) const {
  return m_net->layout.IsControl(m_net->layout.IndexOfPoint(name));
}

// By the classic rules the residual (arc-seconds) divided by 10000 is read as dd.mmss: exact below
// 100", above that the hundreds count as minutes (docs/computations.md, "Where to take care").
PlaneObsResult PlaneAdjustment::AngleResult(const PlaneObs& o, double observed) const {
  const double adjusted = m_rules == RuleSet::kClassic ? o.observed + DmsToRad(o.residual / 10000.0)
                                                       : FullCircle(o.observed + o.residual / kRho);
  return {observed, o.residual, RadToDms(adjusted), m_param.MO, !o.inUse};
}

std::optional<PlaneObsResult> PlaneAdjustment::ResultOfDirection(std::string_view station,
                                                                 std::string_view target) const {
  const PlaneObs* o = m_obs.FindDirection(m_net->layout.FindSight(station, target));
  if (o == nullptr || o->leftOut) return std::nullopt;
  return AngleResult(*o, m_net->layout.At(o->sight).obs.direction);
}

std::optional<PlaneObsResult> PlaneAdjustment::ResultOfAzimuth(std::string_view station,
                                                               std::string_view target) const {
  const PlaneObs* o = m_obs.FindAzimuth(m_net->layout.FindSight(station, target));
  if (o == nullptr || o->leftOut) return std::nullopt;
  return AngleResult(*o, m_net->layout.At(o->sight).obs.azimuth);
}

std::optional<PlaneObsResult> PlaneAdjustment::ResultOfDistance(std::string_view station,
                                                                std::string_view target) const {
  const PlaneObs* o = m_obs.FindDistance(m_net->layout.FindSight(station, target));
  if (o == nullptr || o->leftOut) return std::nullopt;
  return PlaneObsResult{o->observed, o->residual, o->observed + o->residual,
                        DistanceError(o->observed), !o->inUse};
}

std::optional<LinePrecision> PlaneAdjustment::PrecisionOfLine(std::string_view station,
                                                              std::string_view target) const {
  const NetworkLayout& net = m_net->layout;
  const SightNo sight = net.FindSight(station, target);
  if (sight.IsNone() || !m_normal.IsSolved()) return std::nullopt;
  const Sight& s = net.At(sight);
  const PointNo from = net.PointOf(s.station);
  const PointNo to = net.PointOf(s.target);
  if (from.IsNone() || to.IsNone()) return std::nullopt;
  if (net.IsControl(from) && net.IsControl(to)) return std::nullopt;
  if (IsLeftOut(from) || IsLeftOut(to)) return std::nullopt;

  const LineEquation direction = DirectionCoefficients(s.station, s.target);
  const LineEquation distance = DistanceCoefficients(s.station, s.target);
  LinePrecision line{};
  line.azimuth = RadToDms(direction.value);
  line.azimuthError = std::sqrt(m_normal.QuadraticForm(direction.Terms())) * PrecisionScale();
  line.length = distance.value;
  line.lengthError = std::sqrt(m_normal.QuadraticForm(distance.Terms())) * PrecisionScale();
  line.relativePrecision = TruncateToInt32(1.0 / (line.lengthError / line.length));
  return line;
}

}  // namespace brenu
