#include <cmath>

#include "core/normal_quantile.h"
#include "core/parallel.h"
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

// The test values of all observations in use, 0 for the others: directions, distances, azimuths.
std::vector<double> PlaneAdjustment::TestValues() const {
  constexpr std::size_t kSets = 128;  // computed by one thread
  constexpr std::size_t kLines = 512;
  const std::size_t distances = m_obs.directions.size();
  const std::size_t azimuths = distances + m_obs.distances.size();
  std::vector<double> values(azimuths + m_obs.azimuths.size(), 0.0);
  m_normal.MakeCofactors();
  ForEachPart(m_obs.sets.size(), kSets, [&](std::size_t begin, std::size_t end) {
    for (std::size_t i = begin; i < end; ++i) {
      const DirectionSet& set = m_obs.sets[i];
      for (auto k = static_cast<std::size_t>(set.first); k < static_cast<std::size_t>(set.end);
           ++k) {
        const PlaneObs& o = m_obs.directions[k];
        if (!o.inUse) continue;
        LineEquation line = DirectionCoefficients(o.from, o.to);
        const double cofactor = m_normal.QuadraticForm(line.TermsWithOrientation(set.orientation));
        values[k] = TestValue(o.residual, m_param.MO, cofactor);
      }
    }
  });
  ForEachPart(m_obs.distances.size(), kLines, [&](std::size_t begin, std::size_t end) {
    for (std::size_t k = begin; k < end; ++k) {
      const PlaneObs& o = m_obs.distances[k];
      if (!o.inUse) continue;
      const double cofactor = m_normal.QuadraticForm(DistanceCoefficients(o.from, o.to).Terms());
      values[distances + k] = TestValue(o.residual, DistanceError(o.observed), cofactor);
    }
  });
  for (std::size_t k = 0; k < m_obs.azimuths.size(); ++k) {
    const PlaneObs& o = m_obs.azimuths[k];
    if (!o.inUse) continue;
    const double cofactor = m_normal.QuadraticForm(DirectionCoefficients(o.from, o.to).Terms());
    values[azimuths + k] = TestValue(o.residual, m_param.MO, cofactor);
  }
  return values;
}

// The observation in use with the largest test value; of equal ones the first in walk order.
PlaneObs* PlaneAdjustment::FindWorst(double critical) {
  const std::vector<double> values = TestValues();
  PlaneObs* worst = nullptr;
  double largest = 0.0;
  auto value = values.begin();
  for (auto* table : {&m_obs.directions, &m_obs.distances, &m_obs.azimuths}) {
    for (PlaneObs& o : *table) {
      if (IsLargerTestValue(*value, largest)) {
        largest = *value;
        worst = &o;
      }
      ++value;
    }
  }
  return largest > critical ? worst : nullptr;
}

Outcome PlaneAdjustment::DataSnooping(double alpha, const std::function<void(int)>& announceRound) {
  const ThreadTeam team;
  if (Outcome reached = CalcApproxCoordinates(); !reached.ok) return reached;
  m_isPlacedOnly = false;
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
