#include <algorithm>
#include <cmath>

#include "core/angles.h"
#include "plane/plane_adjustment.h"

namespace brenu {

// Residuals of all observations from the coordinates after the last pass, and [pvv] of those in
// use.
double PlaneAdjustment::CalcResiduals() {
  const auto x = m_normal.Solution();
  const double angleWeight = 1.0 / (m_param.MO * m_param.MO);
  double sum = 0.0;

  for (const DirectionSet& set : m_obs.sets) {
    const double orientation =
        set.orientation < 0 ? 0.0 : x[static_cast<std::size_t>(set.orientation)];
    for (std::int32_t k = set.first; k < set.end; ++k) {
      PlaneObs& o = m_obs.directions[static_cast<std::size_t>(k)];
      // v = l + sum a x: l is that of the last pass, the coefficients are of the new coordinates.
      double v = o.residual - orientation;
      const LineEquation line = DirectionCoefficients(o.from, o.to);
      for (const Term& t : line.Terms()) {
        v += t.coefficient * x[static_cast<std::size_t>(t.unknown)];
      }
      o.residual = v;
      if (o.inUse) sum += v * v * angleWeight;
    }
  }
  sum += CalcDistanceResiduals();
  for (PlaneObs& o : m_obs.azimuths) {
    o.residual = (DirectionCoefficients(o.from, o.to).value - o.observed) * kRho;
    if (o.inUse) sum += o.residual * o.residual * angleWeight;
  }
  return sum;
}

double PlaneAdjustment::CalcDistanceResiduals() {
  double sum = 0.0;
  for (PlaneObs& o : m_obs.distances) {
    if (o.leftOut) continue;
    o.residual = DistanceCoefficients(o.from, o.to).value - o.observed;
    const double error = DistanceError(o.observed);
    if (o.inUse) sum += o.residual * o.residual / (error * error);
  }
  return sum;
}

// The orientation unknowns of the last normal equations.
std::int32_t PlaneAdjustment::OrientationCount() const {
  return static_cast<std::int32_t>(
      std::count_if(m_obs.sets.begin(), m_obs.sets.end(),
                    [](const DirectionSet& set) { return set.orientation >= 0; }));
}

// Observations taken out by data snooping still count (docs/computations.md, "Data snooping").
void PlaneAdjustment::CountRedundancy(std::int32_t orientations) {
  m_redundancy = m_obs.storedCount - 2 * m_net->layout.NewPointCount() - orientations;
}

}  // namespace brenu
