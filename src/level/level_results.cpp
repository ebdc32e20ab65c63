#include "level/level_adjustment.h"

namespace brenu {

std::int32_t LevelAdjustment::Redundancy() const {
  std::int32_t inUse = 0;
  for (const SightNo k : m_weight.Indices()) inUse += IsRemoved(k) ? 0 : 1;
  std::int32_t newHeights = m_net->layout.NewPointCount();
  for (const char isLeftOut : m_isLeftOut) newHeights -= isLeftOut;
  return inUse - newHeights;
}

std::optional<VerticalResult> LevelAdjustment::ResultOfPoint(std::string_view name) const {
  const PointNo point = m_net->layout.IndexOfPoint(name);
  if (!m_solution.Has(point) || IsLeftOut(point)) return std::nullopt;
  return VerticalResult{m_solution[point], m_heights[m_net->layout.SlotOf(point)],
                        m_pointSigma[point]};
}

std::optional<HeightObsResult> LevelAdjustment::ResultOfObs(std::string_view station,
                                                            std::string_view target) const {
  const SightNo k = m_net->layout.FindSight(station, target);
  if (!m_residual.Has(k)) return std::nullopt;
  const bool isTextbook = !m_state.IsEmpty();
  if (isTextbook && m_state[k] == LineState::kLeftOut) return std::nullopt;
  const double observed = m_net->layout.At(k).obs.heightDiff;
  const bool removed = isTextbook ? IsRemoved(k) : m_weight[k] == 0.0;
  return HeightObsResult{observed,      m_residual[k], observed + m_residual[k],
                         m_obsSigma[k], m_weight[k],   removed};
}

}  // namespace brenu
