#include "plane/approximate/parts.h"

#include <algorithm>

#include "plane/circles.h"

namespace brenu::approximate {

PartFinder::PartFinder(const PlaneNet& net, const Rays& rays, const Accuracy& accuracy)
    : m_net(net.layout),
      m_rays(rays),
      m_places(net.layout.Slots().Size()),
      m_growth(net, rays, accuracy, m_places, Growth::System::kPart),
      m_settling(net, rays, accuracy, m_places) {
  m_marks.Assign(net.layout.Slots().Size(), 0);
}

Part PartFinder::FromStations(const std::vector<Slot>& stations,
                              const std::vector<double>& orientations) {
  m_growth.Clear();
  m_places.Clear();
  ++m_mark;
  for (std::size_t i = 0; i < stations.size(); ++i) {
    m_places.Orient(stations[i], orientations[i]);
    m_marks[stations[i]] = m_mark;
    for (const SightNo k : m_net.SightsFrom(stations[i])) m_marks[m_net.At(k).target] = m_mark;
  }
  m_growth.Restrict(&m_marks, m_mark);
  bool isScaleless = false;
  if (!Begin(stations, isScaleless)) return {};
  m_growth.SetSystem(isScaleless ? Growth::System::kScaleless : Growth::System::kPart);
  const std::vector<Slot> begun = m_places.Points();
  for (const Slot slot : begun) m_growth.Announce(slot);
  m_growth.Run();
  if (!isScaleless) {
    m_settling.Run(2, [&](Slot slot) { return slot == begun.front(); });
  }
  Part part = Taken();
  part.isScaleless = isScaleless;
  return part;
}

// The station with most targets measured by direction and distance, or one that sights another, at
// the distance 1.
bool PartFinder::Begin(const std::vector<Slot>& stations, bool& isScaleless) {
  Slot best;
  std::int64_t most = 0;
  for (const Slot station : stations) {
    const auto sights = m_net.SightsFrom(station);
    std::int64_t count = 0;
    for (const SightNo k : sights) count += m_rays[k].IsPolar() ? 1 : 0;
    if (count > most) {
      most = count;
      best = station;
    }
  }
  isScaleless = best.IsNone();
  if (!isScaleless) {
    m_places.Place(best, {0.0, 0.0});
    return true;
  }
  for (const Slot station : stations) {
    for (const SightNo k : m_net.SightsFrom(station)) {
      const Slot target = m_net.At(k).target;
      if (!m_rays[k].HasReading() || !m_places.IsOriented(target)) continue;
      m_places.Place(station, {0.0, 0.0});
      m_places.Place(target, Polar(1.0, m_places.Orientation(station) + m_rays[k].reading));
      return true;
    }
  }
  return false;
}

Part PartFinder::FromDistances(Slot point) {
  m_growth.Clear();
  m_places.Clear();
  m_growth.Restrict(nullptr, 0);
  m_growth.SetSystem(Growth::System::kDistances);
  if (!BeginTriangle(point)) return {};
  const std::vector<Slot> begun = m_places.Points();
  for (const Slot slot : begun) m_growth.Announce(slot);
  m_growth.Run();
  Part part = Taken();
  part.mayMirror = true;
  return part;
}

bool PartFinder::BeginTriangle(Slot point) {
  struct Side {
    Slot other;
    double length;
  };
  std::vector<Side> sides;
  const auto add = [&](Slot other, double length) {
    if (length > 0.0) sides.push_back({other, length});
  };
  for (const SightNo k : m_net.SightsFrom(point)) add(m_net.At(k).target, m_rays[k].distance);
  for (const SightNo k : m_net.SightsTo(point)) add(m_net.At(k).station, m_rays[k].distance);
  constexpr std::size_t kMostSides = 30;
  if (sides.size() > kMostSides) sides.resize(kMostSides);
  double best = 0.3;  // sine of the angle at the point: no flatter triangle will do
  Side first{};
  Side second{};
  double between = 0.0;
  for (const Side& a : sides) {
    for (const Side& b : sides) {
      if (!(a.other < b.other)) continue;
      double length = 0.0;
      for (const SightNo k :
           {m_net.FindSight(a.other, b.other), m_net.FindSight(b.other, a.other)}) {
        if (!k.IsNone() && m_rays[k].HasDistance()) length = m_rays[k].distance;
      }
      if (length == 0.0) continue;
      const double quality = IntersectionQuality({{0.0, 0.0}, a.length}, {{length, 0.0}, b.length});
      if (quality <= best) continue;
      best = quality;
      first = a;
      second = b;
      between = length;
    }
  }
  if (between == 0.0) return false;
  m_places.Place(first.other, {0.0, 0.0});
  m_places.Place(second.other, {between, 0.0});
  const auto third = Intersect({{0.0, 0.0}, first.length}, {{between, 0.0}, second.length});
  m_places.Place(point, third->first);
  return true;
}

Part PartFinder::Taken() {
  Part part;
  for (const Slot slot : m_places.Points()) part.points.push_back({slot, m_places.At(slot)});
  for (const Slot slot : m_places.OrientedStations()) {
    part.stations.push_back({slot, m_places.Orientation(slot)});
  }
  return part;
}

}  // namespace brenu::approximate
