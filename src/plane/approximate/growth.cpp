#include "plane/approximate/growth.h"

#include "core/angles.h"

namespace brenu::approximate {

namespace {

// Of a point with very many measures no more than these are crossed with each other.
constexpr std::size_t kMostMeasures = 16;

// Evenly chosen, so that those from all sides stay.
void Thin(std::vector<Measure>& measures) {
  if (measures.size() <= kMostMeasures) return;
  for (std::size_t k = 0; k < kMostMeasures; ++k) {
    measures[k] = measures[k * measures.size() / kMostMeasures];
  }
  measures.resize(kMostMeasures);
}

}  // namespace

Growth::Growth(const PlaneNet& net, const Rays& rays, const Accuracy& accuracy, Places& places,
               System system)
    : m_net(net.layout),
      m_points(net.points),
      m_rays(rays),
      m_accuracy(accuracy),
      m_places(places),
      m_system(system) {
  m_waits.Assign(m_net.Slots().Size(), 0);
  m_offers.Assign(m_net.Slots().Size(), 0);
}

void Growth::Clear() {
  for (const Slot slot : m_touched) {
    m_offers[slot] = 0;
    m_waits[slot] = 0;
  }
  m_touched.clear();
  m_fresh.clear();
  m_weak.clear();
}

bool Growth::MayPlace(Slot point) const {
  if (m_places.IsPlaced(point) || m_net.PointOf(point).IsNone()) return false;
  return m_marks == nullptr || (*m_marks)[point] == m_mark;
}

void Growth::Announce(Slot slot) {
  const bool isPlaced = m_places.IsPlaced(slot);
  if (isPlaced && !m_places.IsOriented(slot)) OrientStation(slot);
  for (const SightNo k : m_net.SightsFrom(slot)) Offer(m_net.At(k).target);
  for (const SightNo k : m_net.SightsTo(slot)) {
    const Slot station = m_net.At(k).station;
    if (!m_places.IsPlaced(station)) {
      Offer(station);
    } else if (isPlaced && !m_places.IsOriented(station) && OrientStation(station)) {
      for (const SightNo other : m_net.SightsFrom(station)) Offer(m_net.At(other).target);
    }
  }
}

// A point with many measures is not looked at for each of them.
void Growth::Offer(Slot point) {
  if (!MayPlace(point)) return;
  const std::int32_t offers = ++m_offers[point];
  if (offers == 1) m_touched.push_back(point);
  const bool isDue = offers <= 4 || (offers & (offers - 1)) == 0;
  if (!isDue || m_waits[point] == 1) return;
  m_waits[point] = 1;
  m_fresh.push_back(point);
}

void Growth::Run() {
  while (!m_fresh.empty() || !m_weak.empty()) {
    const bool checked = !m_fresh.empty();
    std::deque<Slot>& queue = checked ? m_fresh : m_weak;
    const Slot point = queue.front();
    queue.pop_front();
    if (m_waits[point] != (checked ? 1 : 2)) continue;  // it has gone on since
    m_waits[point] = 0;
    if (m_places.IsPlaced(point)) continue;
    if (TryToPlace(point, checked ? Wanted::kChecked : Wanted::kAny)) {
      Announce(point);
    } else if (checked) {
      m_waits[point] = 2;
      m_weak.push_back(point);
    }
  }
}

bool Growth::TryToPlace(Slot point, Wanted wanted) {
  const auto found = BestCandidate(MeasuresOf(point), m_accuracy, HintOf(point));
  if (!found || (wanted == Wanted::kChecked && found->redundancy < 1)) return false;
  m_places.Place(point, found->place);
  if (!std::isnan(found->orientation)) m_places.Orient(point, found->orientation);
  return true;
}

std::vector<Measure> Growth::MeasuresOf(Slot point) const {
  std::vector<Measure> measures;
  AddMeasuresFromStations(point, measures);
  AddMeasuresAtPoint(point, measures);
  if (m_system == System::kScaleless) {
    for (Measure& m : measures) m.distance = 0.0;
  }
  std::erase_if(measures, [](const Measure& m) {
    return !m.HasBearing() && !m.HasDistance() && !m.HasReading();
  });
  Thin(measures);
  return measures;
}

void Growth::AddMeasuresFromStations(Slot point, std::vector<Measure>& measures) const {
  for (const SightNo k : m_net.SightsTo(point)) {
    const Slot station = m_net.At(k).station;
    if (!m_places.IsPlaced(station)) continue;
    const Ray& ray = m_rays[k];
    Measure m{m_places.At(station)};
    if (ray.HasReading() && m_places.IsOriented(station) && UsesReadings()) {
      m.bearing = m_places.Orientation(station) + ray.reading;
    } else if (ray.HasAzimuth() && m_system == System::kGrid) {
      m.bearing = ray.azimuth;
    }
    m.distance = ray.distance;
    measures.push_back(m);
  }
}

void Growth::AddMeasuresAtPoint(Slot point, std::vector<Measure>& measures) const {
  const bool isOriented = m_places.IsOriented(point);
  for (const SightNo k : m_net.SightsFrom(point)) {
    const Slot target = m_net.At(k).target;
    if (!m_places.IsPlaced(target)) continue;
    const Ray& ray = m_rays[k];
    Measure m{m_places.At(target)};
    if (ray.HasReading() && isOriented && UsesReadings()) {
      m.bearing = m_places.Orientation(point) + ray.reading + kPi;
    } else if (ray.HasAzimuth() && m_system == System::kGrid) {
      m.bearing = ray.azimuth + kPi;
    } else if (ray.HasReading() && m_system == System::kGrid) {
      m.reading = ray.reading;
    }
    m.distance = ray.distance;
    measures.push_back(m);
  }
}

std::optional<Position> Growth::HintOf(Slot point) const {
  const PointData& stored = m_points[m_net.PointOf(point)];
  if (m_system != System::kGrid || stored.x == 0.0 || stored.y == 0.0) return std::nullopt;
  return Position{stored.x, stored.y};
}

bool Growth::OrientStation(Slot station) {
  if (m_system != System::kGrid) return false;
  std::vector<double> angles;
  std::vector<double> lengths;
  for (const SightNo k : m_net.SightsFrom(station)) {
    const Slot target = m_net.At(k).target;
    if (!m_rays[k].HasReading() || !m_places.IsPlaced(target)) continue;
    const Position line = m_places.At(target) - m_places.At(station);
    if (!(LengthOf(line) > 0.0)) continue;
    angles.push_back(AngleOf(line) - m_rays[k].reading);
    lengths.push_back(LengthOf(line));
  }
  if (angles.empty()) return false;
  m_places.Orient(station, CommonOrientation(angles, lengths, m_accuracy));
  return true;
}

}  // namespace brenu::approximate
