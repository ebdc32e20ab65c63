#include <cmath>

#include "core/normal_quantile.h"
#include "core/test_value.h"
#include "level/level_adjustment.h"

namespace brenu {

namespace {
constexpr double kRemovedWeight = 1e-10;  // below this an observation counts as taken out
// Where the cofactor of the residual is a smaller part of the variance than this, no other
// observation checks this one, and both residual and cofactor are rounding errors.
constexpr double kUnchecked = 1e-9;
}  // namespace

bool LevelAdjustment::IsRemoved(SightNo observation) const {
  if (!m_state.IsEmpty()) return m_state[observation] != LineState::kInUse;
  return m_weight[observation] < kRemovedWeight;
}

// The observation in use with the largest standardised residual w = |v| / (0.001 sqrt(q_vv)).
LevelAdjustment::WorstObs LevelAdjustment::FindWorst() const {
  WorstObs worst;
  const auto& sights = m_net->layout.Sights();
  for (const SightNo k : sights.Indices()) {
    if (IsRemoved(k)) continue;
    const double variance = 1.0 / m_weight[k];
    const double cofactor = variance - CofactorOfDifference(sights[k]);
    if (!(cofactor > kUnchecked * variance)) continue;
    const double w = std::fabs(m_residual[k] / (m_apriori * std::sqrt(cofactor)));
    if (IsLargerTestValue(w, worst.value)) worst = {k, w};
  }
  return worst;
}

Outcome LevelAdjustment::LevelDataSnooping(double alpha,
                                           const std::function<void(int)>& announceRound) {
  const double critical = NormalQuantile(1.0 - alpha * 0.5);
  if (Outcome reached = CalcApproxHeight(); !reached.ok) return reached;
  // Each round takes one observation out, so there are no more rounds than observations.
  for (int round = 1;; ++round) {
    if (announceRound) announceRound(round);
    if (Outcome formed = FormNormalEquation(); !formed.ok) return formed;
    HoldKnownHeights();
    if (Outcome solved = SolveHeight(); !solved.ok) return solved;
    const double vtpv = CalcVtPV();
    const WorstObs worst = FindWorst();
    if (worst.observation.IsNone() || !(worst.value > critical)) {
      SetSigma0(vtpv);
      CalcLevelPrecision();
      return ExplainNotFinite();
    }
    m_weight[worst.observation] = 0.0;
  }
}

}  // namespace brenu
