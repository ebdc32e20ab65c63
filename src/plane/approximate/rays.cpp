#include "plane/approximate/rays.h"

#include <algorithm>

#include "core/angles.h"

namespace brenu::approximate {

Rays MakeRays(const PlaneNet& net, const Selection& selection) {
  const NetworkLayout& layout = net.layout;
  const auto length = [](double distance) {
    return std::isfinite(distance) && distance > 0.0 ? distance : 0.0;
  };
  const auto angle = [&](double dms) {
    const bool isThere = selection.directions && dms != kAbsentAngle && std::isfinite(dms);
    return isThere ? DmsToRad(dms) : kNone;
  };
  Rays rays;
  rays.Reserve(layout.Sights().Size());
  for (const Sight& s : layout.Sights()) {
    const bool named = !layout.PointOf(s.station).IsNone() && !layout.PointOf(s.target).IsNone();
    if (!named || s.station == s.target) {
      rays.Add({kNone, 0.0, kNone});
      continue;
    }
    double distance = length(s.obs.distance);
    if (const ObsData* back = layout.FindObs(s.target, s.station)) {
      const double other = length(back->distance);
      // Two that contradict each other are kept apart: the better one is found out later.
      const bool agree = std::fabs(other - distance) < 0.1 + 1e-3 * distance;
      if (distance == 0.0) distance = other;
      if (other > 0.0 && agree) distance = (distance + other) / 2.0;
    }
    rays.Add({angle(s.obs.direction), distance, angle(s.obs.azimuth)});
  }
  return rays;
}

Accuracy::Accuracy(const AdjParam& param) {
  constexpr double kArcSecond = 1.0 / kRho;
  const auto within = [](double value, double least, double most) {
    return std::isnan(value) ? least : std::clamp(value, least, most);
  };
  direction = within(param.MO, 0.1, 60.0) * kArcSecond;
  // Left at their defaults the parameters of distances stand for metres and for 500 %.
  m_constant = within(param.MS, 0.0005, 0.05);
  m_proportional = within(param.MR, 0.0, 1e-4);
}

double Accuracy::Distance(double length) const { return m_constant + m_proportional * length; }

}  // namespace brenu::approximate
