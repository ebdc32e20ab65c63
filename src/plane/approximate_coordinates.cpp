#include <cmath>
#include <optional>
#include <vector>

#include "core/angles.h"
#include "core/pass_queue.h"
#include "plane/marker.h"
#include "plane/plane_net.h"

namespace brenu {

namespace {

// Orients stations and places their targets by bearing and distance or by intersection, in passes
// over the stations in name order; the first station that can place a point decides.  A pass
// visits only stations for which something is new: the station itself or one of its targets got
// coordinates since its last visit.
class PlacingPoints {
 public:
  PlacingPoints(const NetworkLayout& net, std::vector<PlaneResult>& coords)
      : m_net(net), m_coords(coords), m_queue(net.SlotCount()) {}

  // False when not all new points could be placed.
  bool Run() {
    const std::int32_t unknownCount = m_net.PointCount() - m_net.ControlCount();
    m_remaining = unknownCount;
    for (std::int32_t pass = 0; m_remaining > 0; ++pass) {
      if (pass > unknownCount || !m_queue.StartPass()) return false;
      for (std::int32_t s = m_queue.Next(); s >= 0; s = m_queue.Next()) {
        if (XOf(s) <= kNoCoordinateLimit) VisitStation(s);
      }
    }
    return true;
  }

 private:
  double XOf(std::int32_t slot) const { return m_coords[static_cast<std::size_t>(slot)].x; }
  const PlaneResult& Coords(std::int32_t slot) const {
    return m_coords[static_cast<std::size_t>(slot)];
  }
  const Sight& SightAt(std::int32_t k) const { return m_net.Sights()[static_cast<std::size_t>(k)]; }
  const ObsData* Find(std::int32_t station, std::int32_t target) const {
    const std::int32_t k = m_net.FindSight(station, target);
    return k < 0 ? nullptr : &SightAt(k).obs;
  }
  bool IsOpen(const Sight& s) const {
    return XOf(s.target) >= kNoCoordinateLimit && HasDirection(s.obs) &&
           m_net.PointOf(s.target) >= 0;
  }

  void VisitStation(std::int32_t station) {
    const auto range = m_net.SightsFrom(station);
    m_open.clear();
    for (std::int32_t k = range.first; k < range.end; ++k) {
      if (IsOpen(SightAt(k))) m_open.push_back(k);
    }
    if (m_open.empty()) return;
    for (std::int32_t k = range.first; k < range.end; ++k) {
      const Sight& reference = SightAt(k);
      const std::optional<double> orientation = OrientationOf(reference);
      if (!orientation || !HasDirection(reference.obs)) continue;
      const double reading = DmsToRad(reference.obs.direction);
      for (const std::int32_t open : m_open) {
        const Sight& s = SightAt(open);
        if (!IsOpen(s)) continue;
        const double azimuth = DmsToRad(s.obs.direction) + *orientation - reading;
        PlaceTarget(s, azimuth, reference, *orientation);
      }
    }
  }

  // The azimuth from the station to a reference target, radians.
  std::optional<double> OrientationOf(const Sight& s) const {
    if (HasAzimuth(s.obs)) return DmsToRad(s.obs.azimuth);
    const ObsData* reverse = Find(s.target, s.station);
    if (reverse != nullptr && HasAzimuth(*reverse)) return DmsToRad(reverse->azimuth + 180.0);
    const PlaneResult& from = Coords(s.station);
    const PlaneResult& to = Coords(s.target);
    if (from.x < kNoCoordinateLimit && to.x < kNoCoordinateLimit) {
      return CalcAzimuth(from.x, from.y, to.x, to.y);
    }
    return std::nullopt;
  }

  void PlaceTarget(const Sight& s, double azimuth, const Sight& reference, double orientation) {
    double distance = s.obs.distance;
    if (distance == kAbsentLength) {
      const ObsData* reverse = Find(s.target, s.station);
      if (reverse != nullptr) distance = reverse->distance;
    }
    if (distance == kAbsentLength) {
      Intersect(s, azimuth, reference, orientation);
      return;
    }
    const PlaneResult& station = Coords(s.station);
    Place(s.target, station.x + distance * std::cos(azimuth),
          station.y + distance * std::sin(azimuth));
  }

  // Forward intersection of the ray from the station with the ray from the reference target.
  void Intersect(const Sight& s, double azimuth, const Sight& reference, double orientation) {
    if (!(XOf(reference.target) <= kNoCoordinateLimit)) return;
    const ObsData* back = Find(reference.target, reference.station);
    const ObsData* ray = Find(reference.target, s.target);
    if (back == nullptr || ray == nullptr || !HasDirection(*back) || !HasDirection(*ray)) return;
    const double azimuth2 =
        orientation + kPi + DmsToRad(ray->direction) - DmsToRad(back->direction);
    const double t1 = std::tan(azimuth);
    const double t2 = std::tan(azimuth2);
    // One-sided on purpose: the ray from the station must be the steeper one.
    if (!(std::fabs(t1) - std::fabs(t2) >= 1e-7)) return;
    const PlaneResult& a = Coords(s.station);
    const PlaneResult& b = Coords(reference.target);
    const double c1 = t1 * a.x - a.y;
    const double c2 = b.y - t2 * b.x;
    Place(s.target, (c1 + c2) / (t1 - t2), (c2 * t1 + c1 * t2) / (t1 - t2));
  }

  void Place(std::int32_t slot, double x, double y) {
    m_coords[static_cast<std::size_t>(slot)].x = x;
    m_coords[static_cast<std::size_t>(slot)].y = y;
    --m_remaining;
    m_queue.Add(slot);
    for (const std::int32_t k : m_net.SightsTo(slot)) m_queue.Add(SightAt(k).station);
  }

  const NetworkLayout& m_net;
  std::vector<PlaneResult>& m_coords;
  PassQueue m_queue;
  std::vector<std::int32_t> m_open;  // sights of the station visited to targets not yet placed
  std::int32_t m_remaining = 0;
};

}  // namespace

bool PlaneNet::CalcApproxCoordinates() {
  if (!PrepareAdj()) return false;
  if (!PlacingPoints(*m_net, m_coords).Run()) return false;
  WriteBackCoordinates();
  return true;
}

}  // namespace brenu
