#include <cmath>

#include "level/level_net.h"

namespace brenu {

namespace {
// Known heights stay unknowns of the system and are held by this diagonal element.
constexpr double kFixingWeight = 1e30;
}  // namespace

bool LevelNet::LevelAdjust() {
  if (!CalcApproxHeight()) return false;
  if (!FormNormalEquation()) return false;
  HoldKnownHeights();
  if (!SolveHeight()) return false;
  SetSigma0(CalcVtPV());
  CalcLevelPrecision();
  return true;
}

// Lines of weight 0 stay in the pattern.
UnknownPattern LevelNet::MakePattern() const {
  UnknownPattern pattern = PointPattern(m_net->PointCount(), 1);
  for (const Sight& s : m_net->Sights()) {
    pattern.Connect(m_net->PointOf(s.station), m_net->PointOf(s.target));
  }
  return pattern;
}

bool LevelNet::FormNormalEquation() {
  if (!m_normal.HasPattern()) m_normal.SetPattern(MakePattern());
  m_normal.Reset();
  const auto sights = m_net->Sights();
  for (std::size_t k = 0; k < sights.size(); ++k) {
    const Sight& s = sights[k];
    const std::int32_t i = m_net->PointOf(s.station);
    const std::int32_t j = m_net->PointOf(s.target);
    if (i < 0 || j < 0) return false;
    const double computed = m_heights[static_cast<std::size_t>(s.target)] -
                            m_heights[static_cast<std::size_t>(s.station)];
    const Term equation[] = {{i, -1.0}, {j, 1.0}};
    m_normal.Add(equation, m_weight[k], computed - s.obs.heightDiff);
  }
  return true;
}

void LevelNet::HoldKnownHeights() {
  for (std::int32_t i = 0; i < m_net->ControlCount(); ++i) {
    m_normal.ReplaceDiagonal(m_net->PointOf(m_net->SlotOf(i)), kFixingWeight);
  }
}

bool LevelNet::SolveHeight() {
  if (!m_normal.Solve()) return false;
  const auto solution = m_normal.Solution();
  for (std::int32_t slot = 0; slot < m_net->SlotCount(); ++slot) {
    const std::int32_t point = m_net->PointOf(slot);
    if (point < 0) return false;
    const auto i = static_cast<std::size_t>(point);
    m_solution[i] = solution[i];
    m_heights[static_cast<std::size_t>(slot)] += solution[i];
  }
  return true;
}

double LevelNet::CalcVtPV() {
  double sum = 0.0;
  const auto sights = m_net->Sights();
  for (std::size_t k = 0; k < sights.size(); ++k) {
    const Sight& s = sights[k];
    const double v = m_heights[static_cast<std::size_t>(s.target)] -
                     m_heights[static_cast<std::size_t>(s.station)] - s.obs.heightDiff;
    m_residual[k] = v;
    sum += m_weight[k] * v * v;
  }
  return sum;
}

// The divisor is the number of new heights, not the redundancy.
void LevelNet::SetSigma0(double vtpv) {
  m_sigma0 = std::sqrt(vtpv / (m_net->PointCount() - m_net->ControlCount()));
}

double LevelNet::CofactorOfDifference(const Sight& sight) const {
  const std::int32_t i = m_net->PointOf(sight.station);
  const std::int32_t j = m_net->PointOf(sight.target);
  return m_normal.Cofactor(j, j) + m_normal.Cofactor(i, i) - 2.0 * m_normal.Cofactor(i, j);
}

void LevelNet::CalcLevelPrecision() {
  for (std::int32_t i = 0; i < m_net->PointCount(); ++i) {
    m_pointSigma[static_cast<std::size_t>(i)] = m_sigma0 * std::sqrt(m_normal.Cofactor(i, i));
  }
  const auto sights = m_net->Sights();
  for (std::size_t k = 0; k < sights.size(); ++k) {
    m_obsSigma[k] = m_sigma0 * std::sqrt(CofactorOfDifference(sights[k]));
  }
}

}  // namespace brenu
