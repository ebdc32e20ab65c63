#include "core/pass_queue.h"
#include "level/level_net.h"

namespace brenu {

namespace {
constexpr double kUnknownHeight = -9999.9;
constexpr double kLowestHeight = -9999.0;  // below this a height counts as not yet determined
}  // namespace

bool LevelNet::CalcApproxHeight() {
  if (!PrepareLevel()) return false;
  const std::int32_t unknownCount = m_net->PointCount() - m_net->ControlCount();
  for (std::int32_t i = m_net->ControlCount(); i < m_net->PointCount(); ++i) {
    m_heights[static_cast<std::size_t>(m_net->SlotOf(i))] = kUnknownHeight;
  }

  const auto sights = m_net->Sights();
  PassQueue queue(static_cast<std::int32_t>(sights.size()));
  std::int32_t determined = 0;
  const auto determine = [&](std::int32_t slot, double height) {
    m_heights[static_cast<std::size_t>(slot)] = height;
    ++determined;
    const auto range = m_net->SightsFrom(slot);
    for (std::int32_t k = range.first; k < range.end; ++k) queue.Add(k);
    for (const std::int32_t k : m_net->SightsTo(slot)) queue.Add(k);
  };

  for (std::int32_t pass = 0; pass <= unknownCount && queue.StartPass(); ++pass) {
    for (std::int32_t k = queue.Next(); k >= 0; k = queue.Next()) {
      const Sight& s = sights[static_cast<std::size_t>(k)];
      const double station = m_heights[static_cast<std::size_t>(s.station)];
      const double target = m_heights[static_cast<std::size_t>(s.target)];
      if (station > kLowestHeight && target < kLowestHeight) {
        determine(s.target, station + s.obs.heightDiff);
      } else if (station < kLowestHeight && target > kLowestHeight) {
        determine(s.station, target - s.obs.heightDiff);
      }
    }
    if (determined == unknownCount) {
      for (std::int32_t slot = 0; slot < m_net->SlotCount(); ++slot) {
        const std::int32_t point = m_net->PointOf(slot);
        if (point < 0) continue;
        m_points[static_cast<std::size_t>(point)].h = m_heights[static_cast<std::size_t>(slot)];
      }
      return true;
    }
  }
  return false;
}

bool LevelNet::IsReached(std::string_view name) const {
  const std::int32_t slot = m_net->Names().Find(name);
  const auto i = static_cast<std::size_t>(slot);
  return slot >= 0 && i < m_heights.size() && !(m_heights[i] < kLowestHeight);
}

}  // namespace brenu
