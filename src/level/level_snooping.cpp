#include <cmath>

#include "core/normal_quantile.h"
#include "core/test_value.h"
#include "level/level_net.h"

namespace brenu {

namespace {
constexpr double kApriori = 0.001;        // standard error of 1 km of levelling, metres
constexpr double kRemovedWeight = 1e-10;  // below this an observation counts as taken out
// Where the cofactor of the residual is a smaller part of the variance than this, no other
// observation checks this one, and both residual and cofactor are rounding errors.
constexpr double kUnchecked = 1e-9;
}  // namespace

bool LevelNet::IsRemoved(std::size_t observation) const {
  return m_weight[observation] < kRemovedWeight;
}

// The observation in use with the largest standardised residual w = |v| / (0.001 sqrt(q_vv)).
LevelNet::WorstObs LevelNet::FindWorst() const {
  WorstObs worst;
  const auto sights = m_net->Sights();
  for (std::size_t k = 0; k < sights.size(); ++k) {
    if (IsRemoved(k)) continue;
    const double variance = 1.0 / m_weight[k];
    const double cofactor = variance - CofactorOfDifference(sights[k]);
    if (!(cofactor > kUnchecked * variance)) continue;
    const double w = std::fabs(m_residual[k] / (kApriori * std::sqrt(cofactor)));
    if (IsLargerTestValue(w, worst.value)) worst = {static_cast<std::int32_t>(k), w};
  }
  return worst;
}

bool LevelNet::LevelDataSnooping(double alpha) {
  const double critical = NormalQuantile(1.0 - alpha * 0.5);
  if (!CalcApproxHeight()) return false;
  // Each round takes one observation out, so there are no more rounds than observations.
  for (;;) {
    if (!FormNormalEquation()) return false;
    HoldKnownHeights();
    if (!SolveHeight()) return false;
    const double vtpv = CalcVtPV();
    const WorstObs worst = FindWorst();
    if (worst.observation < 0 || !(worst.value > critical)) {
      SetSigma0(vtpv);
      CalcLevelPrecision();
      return true;
    }
    m_weight[static_cast<std::size_t>(worst.observation)] = 0.0;
  }
}

}  // namespace brenu
