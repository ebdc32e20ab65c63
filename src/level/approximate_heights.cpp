#include "core/pass_queue.h"
#include "level/level_adjustment.h"

namespace brenu {

namespace {
constexpr double kUnknownHeight = -9999.9;
constexpr double kLowestHeight = -9999.0;  // below this a height counts as not yet determined
}  // namespace

Outcome LevelAdjustment::CalcApproxHeight() {
  if (!PrepareLevel()) return Error(BRENU_NOTHING_LEVELLED);
  const NetworkLayout& net = m_net->layout;
  for (const PointNo i : net.NewPoints()) m_heights[net.SlotOf(i)] = kUnknownHeight;

  PassQueue<SightNo> queue(net.Sights().Size());
  for (const SightNo k : net.Sights().Indices()) queue.Add(k);
  std::int32_t determined = 0;
  const auto determine = [&](Slot slot, double height) {
    m_heights[slot] = height;
    ++determined;
    for (const SightNo k : net.SightsFrom(slot)) queue.Add(k);
    for (const SightNo k : net.SightsTo(slot)) queue.Add(k);
  };

  for (std::int32_t pass = 0; pass <= net.NewPointCount() && queue.StartPass(); ++pass) {
    for (SightNo k = queue.Next(); !k.IsNone(); k = queue.Next()) {
      const Sight& s = net.At(k);
      const double station = m_heights[s.station];
      const double target = m_heights[s.target];
      if (station > kLowestHeight && target < kLowestHeight) {
        determine(s.target, station + s.obs.heightDiff);
      } else if (station < kLowestHeight && target > kLowestHeight) {
        determine(s.station, target - s.obs.heightDiff);
      }
    }
    if (determined != net.NewPointCount()) continue;
    m_approximate.Reserve(m_net->points.Size());
    for (const PointNo i : net.Points()) m_approximate.Add(m_heights[net.SlotOf(i)]);
    return {};
  }
  return ExplainUnreached();
}

Outcome LevelAdjustment::ExplainUnreached() const {
  Finding unreached = Error(BRENU_HEIGHTS_UNREACHED);
  const NetworkLayout& net = m_net->layout;
  for (const PointNo i : net.NewPoints()) {
    const Slot slot = net.SlotOf(i);
    if (m_heights[slot] < kLowestHeight) unreached.names.push_back(net.Names().NameAt(slot));
  }
  return unreached;
}

}  // namespace brenu
