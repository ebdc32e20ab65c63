// The observation equations of a pass.
#include <algorithm>
#include <cmath>
#include <mutex>

#include "core/angles.h"
#include "plane/plane_adjustment.h"

namespace brenu {

std::int32_t PlaneAdjustment::UnknownOf(Slot slot) const {
  return 2 * (m_net->layout.PointOf(slot).Number() - m_firstUnknownPoint.Number());
}

// a = atan2(dy, dx) has the derivatives (-dy, dx) rho / s^2.
LineEquation PlaneAdjustment::DirectionCoefficients(Slot from, Slot to) const {
  const PlaneResult& a = m_coords[from];
  const PlaneResult& b = m_coords[to];
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  const double s2 = dx * dx + dy * dy;
  return {PositiveAngle(std::atan2(dy, dx)), UnknownOf(from), UnknownOf(to), -kRho * dy / s2,
          kRho * dx / s2};
}

// s = sqrt(dx^2 + dy^2) has the derivatives (dx, dy) / s.
LineEquation PlaneAdjustment::DistanceCoefficients(Slot from, Slot to) const {
  const PlaneResult& a = m_coords[from];
  const PlaneResult& b = m_coords[to];
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  const double s = CalcDistance(a.x, a.y, b.x, b.y);
  return {s, UnknownOf(from), UnknownOf(to), dx / s, dy / s};
}

// The first observation in use of which an end has no point; null when there is none.
const PlaneObs* PlaneAdjustment::FindUnknownName() const {
  const NetworkLayout& net = m_net->layout;
  for (const auto* table : {&m_obs.directions, &m_obs.distances, &m_obs.azimuths}) {
    for (const PlaneObs& o : *table) {
      if (o.inUse && (net.PointOf(o.from).IsNone() || net.PointOf(o.to).IsNone())) return &o;
    }
  }
  return nullptr;
}

// The orientation unknowns follow the coordinates, one a set.  Sets may lose their last direction
// in use; their unknown then stays without equations and is held, so that the pattern never
// changes.
void PlaneAdjustment::NumberOrientations() {
  std::int32_t unknown = 2 * m_net->layout.PointCount();
  for (DirectionSet& set : m_obs.sets) {
    const bool used = m_obs.HasDirectionInUse(set);
    set.orientation = used ? unknown : -1;
    if (!used) m_normal.Hold(unknown, 1.0);
    ++unknown;
  }
}

Outcome PlaneAdjustment::BuildNormals() {
  if (const PlaneObs* o = FindUnknownName()) {
    const NameTable& names = m_net->layout.Names();
    return Error(BRENU_NAME_WITHOUT_POINT, {names.NameAt(o->from), names.NameAt(o->to)});
  }
  if (!m_normal.HasPattern()) AnalysePattern();
  m_normal.Reset(m_obs.directions.size() + m_obs.distances.size() + m_obs.azimuths.size());
  NumberOrientations();
  AddDirections();
  m_normal.AddAll(m_distanceOrder.size(), [this](std::size_t k, EquationList& equations) {
    AddDistance(m_obs.distances[m_distanceOrder[k]], equations);
  });
  for (const PlaneObs& o : m_obs.azimuths) {
    if (!o.inUse) continue;
    const LineEquation line = DirectionCoefficients(o.from, o.to);
    // By the classic rules the reduced observation stays in radians while the coefficients are in
    // arc-seconds: an azimuth stiffens the network near its approximate value
    // (docs/computations.md, "Where to take care").
    const double reduced = m_rules == RuleSet::kClassic
                               ? line.value - o.observed
                               : HalfCircle(line.value - o.observed) * kRho;
    m_normal.Add(line.Terms(), 1.0 / (m_param.MO * m_param.MO), reduced);
  }
  return {};
}

void PlaneAdjustment::AddDirections() {
  // The first set with a direction reduced a full circle off.
  std::mutex mutex;
  std::size_t first = m_setOrder.size();
  SightNo turned;
  m_normal.AddAll(m_setOrder.size(), [&](std::size_t k, EquationList& equations) {
    const SightNo found = AddDirectionSet(m_obs.sets[m_setOrder[k]], equations);
    if (found.IsNone()) return;
    const std::lock_guard lock(mutex);
    if (k >= first) return;
    first = k;
    turned = found;
  });
  if (m_turnedDirection.IsNone()) m_turnedDirection = turned;
}

// Gives the first direction that was reduced a full circle off, if there is one.
SightNo PlaneAdjustment::AddDirectionSet(const DirectionSet& set, EquationList& equations) {
  const auto begin = m_obs.directions.begin() + set.first;
  const auto end = m_obs.directions.begin() + set.end;
  // The approximate orientation comes from the first direction in use (from the first of all in a
  // set without any, so that its residuals still say something).
  auto reference = std::find_if(begin, end, [](const PlaneObs& o) { return o.inUse; });
  if (reference == end) reference = begin;
  const bool isClassic = m_rules == RuleSet::kClassic;
  const double orientation =
      isClassic ? PositiveAngle(DirectionCoefficients(reference->from, reference->to).value -
                                reference->observed)
                : OrientationOf(set);

  const double weight = 1.0 / (m_param.MO * m_param.MO);
  SightNo turned;
  for (auto o = begin; o != end; ++o) {
    if (o->leftOut) continue;
    LineEquation line = DirectionCoefficients(o->from, o->to);
    double turn = HalfCircle(line.value - o->observed - orientation);
    if (isClassic) {
      // Not reduced any further (docs/computations.md, "Where to take care").
      turn = PositiveAngle(line.value - o->observed) - orientation;
      constexpr double kAlmostFullCircle = kTwoPi - kPi / 180.0;
      if (std::fabs(turn) > kAlmostFullCircle && turned.IsNone()) turned = o->sight;
    }
    o->residual = turn * kRho;
    if (!o->inUse) continue;
    equations.Add(line.TermsWithOrientation(set.orientation), weight, o->residual);
  }
  return turned;
}

void PlaneAdjustment::AddDistance(const PlaneObs& o, EquationList& equations) const {
  if (!o.inUse) return;
  const LineEquation line = DistanceCoefficients(o.from, o.to);
  const double error = DistanceError(o.observed);
  equations.Add(line.Terms(), 1.0 / (error * error), line.value - o.observed);
}

// All stored pairs belong to the pattern, whatever is observed between them, and so do those asked
// for: the precision of any of them may be wanted.
UnknownPattern PlaneAdjustment::MakePattern() const {
  const NetworkLayout& net = m_net->layout;
  UnknownPattern pattern = PointPattern(net.PointCount(), 2);
  for (const DirectionSet& set : m_obs.sets) {
    const PlaneObs& first = m_obs.directions[static_cast<std::size_t>(set.first)];
    const PointNo station = net.PointOf(first.from);
    // A set at a name without point has no equations and stands alone.
    pattern.groupOfUnknown.push_back(station.IsNone() ? pattern.groupCount++ : station.Number());
  }
  for (const Sight& s : net.Sights()) {
    pattern.Connect(net.PointOf(s.station).Number(), net.PointOf(s.target).Number());
  }
  for (const auto& [from, to] : m_net->askedPairs) {
    pattern.Connect(net.PointOf(from).Number(), net.PointOf(to).Number());
  }
  return pattern;
}

void PlaneAdjustment::AnalysePattern() {
  m_normal.SetPattern(MakePattern());
  // What stands at a name without point is never added: any place will do.
  const auto unknownOf = [this](const PlaneObs& o) { return std::max(UnknownOf(o.from), 0); };
  m_setOrder = m_normal.FastestOrder(m_obs.sets.size(), [&](std::size_t k) {
    return unknownOf(m_obs.directions[static_cast<std::size_t>(m_obs.sets[k].first)]);
  });
  m_distanceOrder = m_normal.FastestOrder(
      m_obs.distances.size(), [&](std::size_t k) { return unknownOf(m_obs.distances[k]); });
}

}  // namespace brenu
