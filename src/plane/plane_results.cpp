#include <cmath>

#include "core/angles.h"
#include "plane/plane_net.h"

namespace brenu {

std::optional<PlaneResult> PlaneNet::ResultOfPoint(std::string_view name) const {
  const std::int32_t point = m_net->IndexOfPoint(name);
  if (point < 0 || m_coords.empty()) return std::nullopt;
  return m_coords[static_cast<std::size_t>(m_net->SlotOf(point))];
}

namespace {

// The residual (arc-seconds) divided by 10000 is read as dd.mmss: exact below 100", above that the
// hundreds count as minutes.  The getters have always answered so.
PlaneObsResult AngleResult(const PlaneObs& o, double apriori) {
  const double adjusted = o.observed + DmsToRad(o.residual / 10000.0);
  return {o.residual, RadToDms(adjusted), apriori, !o.inUse};
}

}  // namespace

std::optional<PlaneObsResult> PlaneNet::ResultOfDirection(std::string_view station,
                                                          std::string_view target) const {
  const PlaneObs* o = FindObs(m_obs.directions, m_net->FindSight(station, target));
  if (o == nullptr) return std::nullopt;
  return AngleResult(*o, m_param.MO);
}

std::optional<PlaneObsResult> PlaneNet::ResultOfAzimuth(std::string_view station,
                                                        std::string_view target) const {
  const PlaneObs* o = FindObs(m_obs.azimuths, m_net->FindSight(station, target));
  if (o == nullptr) return std::nullopt;
  return AngleResult(*o, m_param.MO);
}

std::optional<PlaneObsResult> PlaneNet::ResultOfDistance(std::string_view station,
                                                         std::string_view target) const {
  const PlaneObs* o = FindObs(m_obs.distances, m_net->FindSight(station, target));
  if (o == nullptr) return std::nullopt;
  return PlaneObsResult{o->residual, o->observed + o->residual, DistanceError(o->observed),
                        !o->inUse};
}

std::optional<LinePrecision> PlaneNet::PrecisionOfLine(std::string_view station,
                                                       std::string_view target) const {
  const std::int32_t sight = m_net->FindSight(station, target);
  if (sight < 0 || !m_normal.IsSolved()) return std::nullopt;
  const Sight& s = m_net->Sights()[static_cast<std::size_t>(sight)];
  const std::int32_t from = m_net->PointOf(s.station);
  const std::int32_t to = m_net->PointOf(s.target);
  if (from < 0 || to < 0) return std::nullopt;
  if (from < m_net->ControlCount() && to < m_net->ControlCount()) return std::nullopt;

  const LineEquation direction = DirectionCoefficients(s.station, s.target);
  const LineEquation distance = DistanceCoefficients(s.station, s.target);
  LinePrecision line{};
  line.azimuth = RadToDms(direction.value);
  line.azimuthError = std::sqrt(m_normal.QuadraticForm(direction.Terms())) * m_sigma0;
  line.length = distance.value;
  line.lengthError = std::sqrt(m_normal.QuadraticForm(distance.Terms())) * m_sigma0;
  line.relativePrecision = TruncateToInt32(1.0 / (line.lengthError / line.length));
  return line;
}

}  // namespace brenu
