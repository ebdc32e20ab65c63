#include <cmath>

#include "core/normal_quantile.h"
#include "core/test_value.h"
#include "plane/iteration.h"
#include "plane/plane_adjustment.h"

namespace brenu {

namespace {

// |v| / (sqrt(a-priori variance - cofactor of the adjusted observation) + 1e-12).  Not a number,
// and so never the largest, when the cofactor exceeds the variance.
double TestValue(double residual, double apriori, double cofactor) {
  return std::fabs(residual) / (std::sqrt(apriori * apriori - cofactor) + 1e-12);
}

}  // namespace

// The observation in use with the largest test value; of equal ones the first in walk order.
PlaneObs* PlaneAdjustment::FindWorst(double critical) {
  PlaneObs* worst = nullptr;
  double largest = 0.0;
  const auto compare = [&](PlaneObs& o, double value) {
    if (!IsLargerTestValue(value, largest)) return;
    largest = value;
    worst = &o;
  };
  for (const DirectionSet& set : m_obs.sets) {
    for (std::int32_t k = set.first; k < set.end; ++k) {
      PlaneObs& o = m_obs.directions[static_cast<std::size_t>(k)];
      if (!o.inUse) continue;
      LineEquation line = DirectionCoefficients(o.from, o.to);
      const double cofactor = m_normal.QuadraticForm(line.TermsWithOrientation(set.orientation));
      compare(o, TestValue(o.residual, m_param.MO, cofactor));
    }
  }
  for (PlaneObs& o : m_obs.distances) {
    if (!o.inUse) continue;
    const double cofactor = m_normal.QuadraticForm(DistanceCoefficients(o.from, o.to).Terms());
    compare(o, TestValue(o.residual, DistanceError(o.observed), cofactor));
  }
  for (PlaneObs& o : m_obs.azimuths) {
    if (!o.inUse) continue;
    const double cofactor = m_normal.QuadraticForm(DirectionCoefficients(o.from, o.to).Terms());
    compare(o, TestValue(o.residual, m_param.MO, cofactor));
  }
  return largest > critical ? worst : nullptr;
}

Outcome PlaneAdjustment::DataSnooping(double alpha, const std::function<void(int)>& announceRound) {
  if (Outcome reached = CalcApproxCoordinates(); !reached.ok) return reached;
  const double critical = NormalQuantile(1.0 - alpha * 0.5);
  std::int32_t removed = 0;
  // Each round takes one observation out, so there are no more rounds than observations.
  for (;;) {
    if (announceRound) announceRound(removed + 1);
    if (Outcome formed = BuildNormals(); !formed.ok) return formed;
    HoldKnownPoints();
    // One Gauss-Newton step a round; a step that cannot be solved leaves the coordinates.
    const bool solved = SolveAndUpdate() != kPassFailed;
    const double pvv = CalcResiduals();
    PlaneObs* worst = FindWorst(critical);
    if (worst == nullptr) {
      // The removed observations are taken off twice (docs/computations.md, "Data snooping").
      CountRedundancy(OrientationCount());
      m_redundancy -= 2 * removed;
      m_sigma0 = std::sqrt(pvv / m_redundancy);
      CalcPointPrecision();
      Outcome outcome = ExplainResult();
      // The system calls it a success all the same.
      if (!solved) outcome.findings = {Error(BRENU_SNOOPING_UNDETERMINED)};
      return outcome;
    }
    worst->inUse = false;
    ++removed;
  }
}

}  // namespace brenu
