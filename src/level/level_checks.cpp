// How the lines of an adjusted levelling network check each other.
#include <algorithm>
#include <cmath>

#include "level/level_adjustment.h"

namespace brenu {

Table<SightNo, ObservationCheck> LevelAdjustment::ObservationChecks() const {
  Table<SightNo, ObservationCheck> checks;
  if (!m_normal.IsSolved()) return checks;
  const NetworkLayout& net = m_net->layout;
  checks.Reserve(net.Sights().Size());
  for (const SightNo k : net.Sights().Indices()) {
    const bool isLeftOut = !m_state.IsEmpty() && m_state[k] == LineState::kLeftOut;
    if (isLeftOut) {
      checks.Add({false, std::nan(""), std::nan(""), std::nan(""), 0.0});
      continue;
    }
    const Sight& s = net.At(k);
    const bool isInUse = !IsRemoved(k);
    const double sigma = m_apriori * std::sqrt(s.obs.distance / 1000.0);
    const Term terms[] = {{net.PointOf(s.station).Number(), -1.0},
                          {net.PointOf(s.target).Number(), 1.0}};
    double product[2];
    m_normal.Multiply(terms, product);
    const double cofactor = std::max(product[1] - product[0], 0.0);
    const double effect = std::max(std::fabs(product[0]), std::fabs(product[1])) * m_weight[k];
    checks.Add(
        {isInUse, m_residual[k], sigma, m_apriori * std::sqrt(cofactor), isInUse ? effect : 0.0});
  }
  return checks;
}

}  // namespace brenu
