// The adjustment of distances alone (format 3).
#include <cmath>

#include "core/parallel.h"
#include "plane/iteration.h"
#include "plane/plane_adjustment.h"

namespace brenu {

Outcome PlaneAdjustment::AdjustDistances(const AdjParam& param) {
  const ThreadTeam team;
  const NetworkLayout& net = m_net->layout;
  if (m_coords.IsEmpty()) return Error(BRENU_NOT_PREPARED);
  for (const PointNo i : net.Points()) {
    if (!HasCoordinates(m_coords[net.SlotOf(i)])) {
      return Error(BRENU_POINT_NOT_PLACED, {net.Names().NameAt(net.SlotOf(i))});
    }
  }
  m_isPlacedOnly = false;
  m_param = param;
  m_turnedDirection = SightNo();
  m_firstUnknownPoint = PointNo(net.ControlCount());
  m_normal.SetPattern(MakeDistancePattern());
  Outcome settled = IterateUntilSettled([this] { return BuildDistanceNormals(); },
                                        [this] { return SolveAndUpdate(); });
  if (!settled.ok) return settled;

  // The redundancy is that of all observations stored, though only distances take part
  // (docs/computations.md, "Distances only").
  CountRedundancy(m_obs.storedSetCount);
  m_sigma0 = std::sqrt(CalcDistanceResiduals() / m_redundancy);
  if (m_directionsDerived) DeriveDirections();
  CalcPointPrecision();
  return ExplainResult();
}

// The new points alone, without orientations.
UnknownPattern PlaneAdjustment::MakeDistancePattern() const {
  const NetworkLayout& net = m_net->layout;
  const std::int32_t known = net.ControlCount();
  UnknownPattern pattern = PointPattern(net.NewPointCount(), 2);
  for (const Sight& s : net.Sights()) {
    pattern.Connect(net.PointOf(s.station).Number() - known,
                    net.PointOf(s.target).Number() - known);
  }
  for (const auto& [from, to] : m_net->askedPairs) {
    pattern.Connect(net.PointOf(from).Number() - known, net.PointOf(to).Number() - known);
  }
  return pattern;
}

Outcome PlaneAdjustment::BuildDistanceNormals() {
  m_normal.Reset();
  const NetworkLayout& net = m_net->layout;
  for (const PlaneObs& o : m_obs.distances) {
    if (o.inUse && (net.PointOf(o.from).IsNone() || net.PointOf(o.to).IsNone())) {
      return Error(BRENU_NAME_WITHOUT_POINT,
                   {net.Names().NameAt(o.from), net.Names().NameAt(o.to)});
    }
  }
  m_normal.AddAll(m_obs.distances.size(), [this](std::size_t k, EquationList& equations) {
    AddDistance(m_obs.distances[k], equations);
  });
  return {};
}

void PlaneAdjustment::TakePlacedPoints(const Table<PointNo, Position>& positions) {
  for (const PointNo i : m_net->layout.NewPoints()) {
    SetCoordinates(m_net->layout.SlotOf(i), positions[i]);
  }
  KeepApproximateCoordinates();
  DeriveDirections();
}

// Every line with a distance or a reading gets the grid azimuth of its end points as direction.
void PlaneAdjustment::DeriveDirections() {
  const NetworkLayout& net = m_net->layout;
  m_obs.ForgetDirections();
  for (const SightNo k : net.Sights().Indices()) {
    const Sight& s = net.At(k);
    if (net.PointOf(s.station).IsNone() || net.PointOf(s.target).IsNone()) continue;
    if (!HasDistance(s.obs) && !HasDirection(s.obs)) continue;
    const double azimuth = DirectionCoefficients(s.station, s.target).value;
    m_obs.AddDirection({.sight = k, .from = s.station, .to = s.target, .observed = azimuth});
  }
  m_directionsDerived = true;
}

}  // namespace brenu
