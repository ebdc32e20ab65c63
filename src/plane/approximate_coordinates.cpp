#include "plane/approximate_coordinates.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "core/angles.h"
#include "core/pass_queue.h"

namespace brenu {

namespace {

// The passes visit sights, each as the reference that orients its station.  A sight is due once its
// station or its target has new coordinates; nothing else changes what it can place.
class PlacingPoints {
 public:
  PlacingPoints(const NetworkLayout& net, Coordinates& coords)
      : m_net(net), m_coords(coords), m_queue(net.Sights().Size()) {
    m_openCount.Assign(net.Slots().Size(), 0);
    m_isOriented.Assign(net.Slots().Size(), 0);
    for (const Sight& s : net.Sights()) m_openCount[s.station] += IsOpen(s) ? 1 : 0;
    for (const Slot slot : net.Slots()) {
      if (IsPlaced(slot)) AddSightsFrom(slot);
    }
  }

  // False when not all new points could be placed.
  bool Run() {
    const std::int32_t newPoints = m_net.NewPointCount();
    m_remaining = newPoints;
    for (std::int32_t pass = 0; m_remaining > 0; ++pass) {
      if (pass > newPoints || !m_queue.StartPass()) return false;
      for (SightNo k = m_queue.Next(); !k.IsNone(); k = m_queue.Next()) Visit(m_net.At(k));
    }
    return true;
  }

 private:
  bool IsPlaced(Slot slot) const { return m_coords[slot].x <= kNoCoordinateLimit; }
  // Whether its target could be placed with it.
  bool IsOpen(const Sight& s) const {
    return m_coords[s.target].x >= kNoCoordinateLimit && HasDirection(s.obs) &&
           !m_net.PointOf(s.target).IsNone();
  }
  void AddSightsFrom(Slot station) {
    for (const SightNo k : m_net.SightsFrom(station)) m_queue.Add(k);
  }

  void Visit(const Sight& reference) {
    if (m_openCount[reference.station] == 0 || !HasDirection(reference.obs)) return;
    const std::optional<double> orientation = OrientationOf(reference);
    if (!orientation) return;
    if (m_isOriented[reference.station] == 0) {
      // The first reference places all targets with a distance.
      m_isOriented[reference.station] = 1;
      for (const SightNo k : m_net.SightsFrom(reference.station)) {
        if (IsOpen(m_net.At(k))) PlaceTarget(m_net.At(k), reference, *orientation);
      }
    } else if (IsPlaced(reference.target)) {
      IntersectCommonTargets(reference, *orientation);
    }
  }

  // The azimuth from the station to a reference target, radians.
  std::optional<double> OrientationOf(const Sight& s) const {
    if (HasAzimuth(s.obs)) return DmsToRad(s.obs.azimuth);
    const ObsData* reverse = m_net.FindObs(s.target, s.station);
    if (reverse != nullptr && HasAzimuth(*reverse)) return DmsToRad(reverse->azimuth + 180.0);
    const PlaneResult& from = m_coords[s.station];
    const PlaneResult& to = m_coords[s.target];
    if (!HasCoordinates(from) || !HasCoordinates(to)) return std::nullopt;
    return CalcAzimuth(from.x, from.y, to.x, to.y);
  }

  void PlaceTarget(const Sight& s, const Sight& reference, double orientation) {
    double distance = s.obs.distance;
    if (distance == kAbsentLength) {
      const ObsData* reverse = m_net.FindObs(s.target, s.station);
      if (reverse != nullptr) distance = reverse->distance;
    }
    if (distance == kAbsentLength) {
      if (IsPlaced(reference.target)) Intersect(s, reference, orientation);
      return;
    }
    const double azimuth = AzimuthOf(s, reference, orientation);
    const PlaneResult& station = m_coords[s.station];
    Place(s.target, station.x + distance * std::cos(azimuth),
          station.y + distance * std::sin(azimuth));
  }

  static double AzimuthOf(const Sight& s, const Sight& reference, double orientation) {
    return DmsToRad(s.obs.direction) + orientation - DmsToRad(reference.obs.direction);
  }

  // Targets of both ends of the reference: those of the end that has fewer are looked at.
  void IntersectCommonTargets(const Sight& reference, double orientation) {
    const auto fromStation = m_net.SightsFrom(reference.station);
    const auto fromTarget = m_net.SightsFrom(reference.target);
    const bool ofStation = fromStation.Size() <= fromTarget.Size();
    for (const SightNo k : ofStation ? fromStation : fromTarget) {
      const SightNo own = ofStation ? k : m_net.FindSight(reference.station, m_net.At(k).target);
      if (!own.IsNone() && IsOpen(m_net.At(own))) {
        Intersect(m_net.At(own), reference, orientation);
      }
    }
  }

  // Forward intersection of the ray from the station with the ray from the reference target.
  void Intersect(const Sight& s, const Sight& reference, double orientation) {
    const ObsData* back = m_net.FindObs(reference.target, reference.station);
    const ObsData* ray = m_net.FindObs(reference.target, s.target);
    if (back == nullptr || ray == nullptr || !HasDirection(*back) || !HasDirection(*ray)) return;
    const double azimuth2 =
        orientation + kPi + DmsToRad(ray->direction) - DmsToRad(back->direction);
    const double t1 = std::tan(AzimuthOf(s, reference, orientation));
    const double t2 = std::tan(azimuth2);
    // One-sided on purpose: the ray from the station must be the steeper one
    // (docs/computations.md, "Approximate values").
    if (!(std::fabs(t1) - std::fabs(t2) >= 1e-7)) return;
    const PlaneResult& a = m_coords[s.station];
    const PlaneResult& b = m_coords[reference.target];
    const double c1 = t1 * a.x - a.y;
    const double c2 = b.y - t2 * b.x;
    Place(s.target, (c1 + c2) / (t1 - t2), (c2 * t1 + c1 * t2) / (t1 - t2));
  }

  void Place(Slot slot, double x, double y) {
    m_coords[slot].x = x;
    m_coords[slot].y = y;
    --m_remaining;
    AddSightsFrom(slot);
    for (const SightNo k : m_net.SightsTo(slot)) {
      const Sight& s = m_net.At(k);
      if (HasDirection(s.obs)) --m_openCount[s.station];
      if (IsPlaced(s.station)) m_queue.Add(k);
    }
  }

  const NetworkLayout& m_net;
  Coordinates& m_coords;
  PassQueue<SightNo> m_queue;
  Table<Slot, std::int32_t> m_openCount;  // of the station: targets that it could place
  Table<Slot, char> m_isOriented;         // whether the station had a reference already
  std::int32_t m_remaining = 0;
};

Finding ExplainUnreached(const NetworkLayout& net, const Coordinates& coords) {
  const auto hasAngle = [](const Sight& s) { return HasDirection(s.obs) || HasAzimuth(s.obs); };
  if (std::none_of(net.Sights().begin(), net.Sights().end(), hasAngle)) {
    return Error(BRENU_DISTANCES_WITHOUT_DIRECTIONS);
  }
  Finding unreached = Error(BRENU_COORDINATES_UNREACHED);
  for (const PointNo i : net.NewPoints()) {
    const Slot slot = net.SlotOf(i);
    if (!HasCoordinates(coords[slot])) unreached.names.push_back(net.Names().NameAt(slot));
  }
  return unreached;
}

}  // namespace

Outcome PlaceByPasses(const NetworkLayout& net, Coordinates& coords) {
  if (PlacingPoints(net, coords).Run()) return {};
  return ExplainUnreached(net, coords);
}

}  // namespace brenu
