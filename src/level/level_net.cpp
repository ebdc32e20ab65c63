#include "level/level_net.h"

#include <utility>

namespace brenu {

void LevelNet::Fill(std::vector<PointData> points, std::int32_t knownPointCount,
                    const ObservationMap& observations, const AdjParam& param) {
  m_layout = std::make_shared<NetworkLayout>(points, knownPointCount, observations, IsLevelled);
  m_points = std::move(points);
  m_param = param;
}

bool LevelNet::PrepareLevel() {
  // Results are there when these two are: should memory end on the way, there are none.
  m_solution.clear();
  m_residual.clear();
  m_net = m_layout;
  m_normal.Clear();
  const auto points = static_cast<std::size_t>(m_net->PointCount());
  const auto sights = m_net->Sights();
  m_sigma0 = 0.0;
  m_pointSigma.assign(points, 0.0);
  m_obsSigma.assign(sights.size(), 0.0);

  // A name that no point has stands at height 0.
  m_heights.assign(static_cast<std::size_t>(m_net->SlotCount()), 0.0);
  for (std::size_t i = 0; i < points; ++i) {
    m_heights[static_cast<std::size_t>(m_net->SlotOf(static_cast<std::int32_t>(i)))] =
        m_points[i].h;
  }
  m_weight.clear();
  m_weight.reserve(sights.size());
  for (const Sight& s : sights) m_weight.push_back(1000.0 / s.obs.distance);
  m_solution.assign(points, 0.0);
  m_residual.assign(sights.size(), 0.0);
  return points > 0 && !sights.empty();
}

std::int32_t LevelNet::Redundancy() const {
  std::int32_t inUse = 0;
  for (std::size_t k = 0; k < m_weight.size(); ++k) inUse += IsRemoved(k) ? 0 : 1;
  return inUse - (m_net->PointCount() - m_net->ControlCount());
}

std::optional<VerticalResult> LevelNet::ResultOfPoint(std::string_view name) const {
  const std::int32_t point = m_net->IndexOfPoint(name);
  const auto i = static_cast<std::size_t>(point);
  if (point < 0 || i >= m_solution.size()) return std::nullopt;
  const auto slot = static_cast<std::size_t>(m_net->SlotOf(point));
  return VerticalResult{m_solution[i], m_heights[slot], m_pointSigma[i]};
}

std::optional<HeightObsResult> LevelNet::ResultOfObs(std::string_view station,
                                                     std::string_view target) const {
  const std::int32_t sight = m_net->FindSight(station, target);
  const auto k = static_cast<std::size_t>(sight);
  if (sight < 0 || k >= m_residual.size()) return std::nullopt;
  const double observed = m_net->Sights()[k].obs.heightDiff;
  return HeightObsResult{m_residual[k], observed + m_residual[k], m_obsSigma[k], m_weight[k],
                         m_weight[k] == 0.0};
}

}  // namespace brenu
