#include <cmath>

#include "plane/iteration.h"
#include "plane/plane_net.h"

namespace brenu {

bool PlaneNet::AdjustDistances() {
  if (m_coords.empty()) return false;  // never set up
  for (std::int32_t i = 0; i < m_net->PointCount(); ++i) {
    if (!HasCoordinates(m_net->SlotOf(i))) return false;
  }
  m_firstUnknownPoint = m_net->ControlCount();
  m_normal.SetPattern(MakeDistancePattern());
  const bool solved = IterateUntilSettled(
      [this] { return BuildDistanceNormals() ? SolveAndUpdate() : kPassFailed; });
  if (!solved) return false;

  // The redundancy is that of all observations stored, though only distances take part.
  CountRedundancy(m_obs.storedSetCount);
  m_sigma0 = std::sqrt(CalcDistanceResiduals() / m_redundancy);
  if (m_directionsDerived) DeriveDirections();
  CalcPointPrecision();
  return true;
}

bool PlaneNet::BuildDistanceNormals() {
  m_normal.Reset();
  for (const PlaneObs& o : m_obs.distances) {
    if (!o.inUse) continue;
    if (m_net->PointOf(o.from) < 0 || m_net->PointOf(o.to) < 0) return false;
    const LineEquation line = DistanceCoefficients(o.from, o.to);
    const double error = DistanceError(o.observed);
    m_normal.Add(line.Terms(), 1.0 / (error * error), line.value - o.observed);
  }
  return true;
}

}  // namespace brenu
