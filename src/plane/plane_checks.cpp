// How the observations of an adjusted plane network check each other.
#include <algorithm>
#include <cmath>
#include <span>

#include "core/parallel.h"
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

PlaneObsCheck PlaneAdjustment::CheckOf(PlaneKind kind, const PlaneObs& o,
                                       std::int32_t orientation) const {
  LineEquation line = kind == PlaneKind::kDistance ? DistanceCoefficients(o.from, o.to)
                                                   : DirectionCoefficients(o.from, o.to);
  const auto terms = orientation < 0 ? line.Terms() : line.TermsWithOrientation(orientation);
  const double sigma = kind == PlaneKind::kDistance ? DistanceError(o.observed) : m_param.MO;
  double product[LineEquation::kMostTerms];
  m_normal.Multiply(terms, product);
  double cofactor = 0.0;
  for (std::size_t k = 0; k < terms.size(); ++k) cofactor += terms[k].coefficient * product[k];
  const double effect = o.inUse ? EffectOn(terms, product, 1.0 / (sigma * sigma)) : 0.0;
  return {{kind, o.sight},
          {o.inUse, o.residual, sigma, std::sqrt(std::max(cofactor, 0.0)), effect}};
}

std::vector<PlaneObsCheck> PlaneAdjustment::ObservationChecks() const {
  if (!m_normal.IsSolved()) return {};
  struct Wanted {
    PlaneKind kind;
    std::int32_t orientation;
    const PlaneObs* obs;
  };
  std::vector<Wanted> wanted;
  wanted.reserve(m_obs.directions.size() + m_obs.distances.size() + m_obs.azimuths.size());
  const auto add = [&](PlaneKind kind, const PlaneObs& o, std::int32_t orientation) {
    if (!o.leftOut) wanted.push_back({kind, orientation, &o});
  };
  for (const DirectionSet& set : m_directionsDerived ? std::vector<DirectionSet>() : m_obs.sets) {
    for (std::int32_t k = set.first; k < set.end; ++k) {
      add(PlaneKind::kDirection, m_obs.directions[static_cast<std::size_t>(k)], set.orientation);
    }
  }
  for (const PlaneObs& o : m_obs.distances) add(PlaneKind::kDistance, o, -1);
  for (const PlaneObs& o : m_obs.azimuths) add(PlaneKind::kAzimuth, o, -1);

  m_normal.MakeCofactors();
  std::vector<PlaneObsCheck> checks(wanted.size());
  constexpr std::size_t kPart = 1024;
  ForEachPart(wanted.size(), kPart, [&](std::size_t begin, std::size_t end) {
    for (std::size_t k = begin; k < end; ++k) {
      checks[k] = CheckOf(wanted[k].kind, *wanted[k].obs, wanted[k].orientation);
    }
  });
  return checks;
}

}  // namespace brenu
