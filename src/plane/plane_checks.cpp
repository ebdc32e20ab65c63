// How the observations of an adjusted plane network check each other.
#include <algorithm>
#include <cmath>
#include <span>

#include "plane/plane_adjustment.h"

namespace brenu {

// By how much an error of 1 in the observation of that equation moves the farther moved end: its
// coordinates change by Q a p.
double PlaneAdjustment::EffectOn(std::span<const Term> terms, std::span<const double> product,
                                 double weight) const {
  double largest = 0.0;
  for (std::size_t k = 0; k + 1 < std::min<std::size_t>(terms.size(), 4); k += 2) {
    const PointNo point(terms[k].unknown / 2 + m_firstUnknownPoint.Number());
    if (m_net->layout.IsControl(point)) continue;
    largest = std::max(largest, std::hypot(product[k], product[k + 1]) * weight);
  }
  return largest;
}

std::vector<PlaneObsCheck> PlaneAdjustment::ObservationChecks() const {
  std::vector<PlaneObsCheck> checks;
  if (!m_normal.IsSolved()) return checks;
  checks.reserve(m_obs.directions.size() + m_obs.distances.size() + m_obs.azimuths.size());
  const auto add = [&](PlaneKind kind, const PlaneObs& o, std::span<const Term> terms,
                       double sigma) {
    double product[LineEquation::kMostTerms];
    m_normal.Multiply(terms, product);
    double cofactor = 0.0;
    for (std::size_t k = 0; k < terms.size(); ++k) cofactor += terms[k].coefficient * product[k];
    const double effect = o.inUse ? EffectOn(terms, product, 1.0 / (sigma * sigma)) : 0.0;
    checks.push_back({{kind, o.sight},
                      {o.inUse, o.residual, sigma, std::sqrt(std::max(cofactor, 0.0)), effect}});
  };
  for (const DirectionSet& set : m_directionsDerived ? std::vector<DirectionSet>() : m_obs.sets) {
    for (std::int32_t k = set.first; k < set.end; ++k) {
      const PlaneObs& o = m_obs.directions[static_cast<std::size_t>(k)];
      if (o.leftOut) continue;
      LineEquation line = DirectionCoefficients(o.from, o.to);
      const auto terms =
          set.orientation < 0 ? line.Terms() : line.TermsWithOrientation(set.orientation);
      add(PlaneKind::kDirection, o, terms, m_param.MO);
    }
  }
  for (const PlaneObs& o : m_obs.distances) {
    if (o.leftOut) continue;
    add(PlaneKind::kDistance, o, DistanceCoefficients(o.from, o.to).Terms(),
        DistanceError(o.observed));
  }
  for (const PlaneObs& o : m_obs.azimuths) {
    if (o.leftOut) continue;
    add(PlaneKind::kAzimuth, o, DirectionCoefficients(o.from, o.to).Terms(), m_param.MO);
  }
  return checks;
}

}  // namespace brenu
