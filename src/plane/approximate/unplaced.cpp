#include "plane/approximate/unplaced.h"

#include <string>
#include <utility>
#include <vector>

namespace brenu::approximate {

namespace {

class GroupFinder {
 public:
  GroupFinder(const NetworkLayout& layout, const Rays& rays, const Places& places)
      : m_layout(layout), m_rays(rays), m_places(places) {
    m_isFound.Assign(layout.Slots().Size(), 0);
  }

  Findings Find() {
    Findings findings;
    for (const PointNo i : m_layout.NewPoints()) {
      const Slot slot = m_layout.SlotOf(i);
      if (!IsUnplaced(slot) || m_layout.PointOf(slot) != i || m_isFound[slot] != 0) continue;
      findings.push_back(GroupAround(slot));
    }
    return findings;
  }

 private:
  bool IsUnplaced(Slot slot) const {
    return !m_layout.PointOf(slot).IsNone() && !m_places.IsPlaced(slot);
  }

  Finding GroupAround(Slot first) {
    std::vector<Slot> group = {first};
    m_isFound[first] = 1;
    double directions = 0.0;
    double distances = 0.0;
    const auto look = [&](SightNo k, Slot other) {
      const Ray& ray = m_rays[k];
      if (!ray.HasReading() && !ray.HasAzimuth() && !ray.HasDistance()) return;
      if (!IsUnplaced(other)) {
        directions += ray.HasReading() || ray.HasAzimuth() ? 1.0 : 0.0;
        distances += HasDistance(m_layout.At(k).obs) && ray.HasDistance() ? 1.0 : 0.0;
      } else if (std::exchange(m_isFound[other], 1) == 0) {
        group.push_back(other);
      }
    };
    // NOLINTNEXTLINE(modernize-loop-convert): the group grows meanwhile
    for (std::size_t n = 0; n < group.size(); ++n) {
      const Slot slot = group[n];
      for (const SightNo k : m_layout.SightsFrom(slot)) look(k, m_layout.At(k).target);
      for (const SightNo k : m_layout.SightsTo(slot)) look(k, m_layout.At(k).station);
    }
    std::vector<std::string> names;
    names.reserve(group.size());
    for (const Slot slot : group) names.push_back(m_layout.Names().NameAt(slot));
    const Code code = names.size() == 1 ? BRENU_POINT_LEFT_OUT : BRENU_GROUP_LEFT_OUT;
    return Warning(code, std::move(names), {directions, distances});
  }

  const NetworkLayout& m_layout;
  const Rays& m_rays;
  const Places& m_places;
  Table<Slot, char> m_isFound;
};

}  // namespace

Findings ExplainUnplaced(const NetworkLayout& layout, const Rays& rays, const Places& places) {
  return GroupFinder(layout, rays, places).Find();
}

}  // namespace brenu::approximate
