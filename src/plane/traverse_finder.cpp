#include "plane/traverse_finder.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/angles.h"
#include "core/loops.h"

namespace brenu {

TraverseFinder::TraverseFinder(const NetworkLayout& net, const Coordinates& coords)
    : m_net(net), m_coords(coords) {
  CollectSides();
}

void TraverseFinder::CollectSides() {
  for (const Sight& s : m_net.Sights()) {
    const bool named = !m_net.PointOf(s.station).IsNone() && !m_net.PointOf(s.target).IsNone();
    if (!named || !HasDistance(s.obs)) continue;
    const ObsData* back = m_net.FindObs(s.target, s.station);
    if (back != nullptr && HasDistance(*back) && s.target < s.station) continue;  // entered before
    const double length = SideLength(s.station, s.target);
    if (length > 0.0 && std::isfinite(length)) m_sides.push_back({s.station, s.target, length});
  }
}

bool TraverseFinder::AllSidesReached() const {
  const auto isReached = [this](Slot slot) { return HasCoordinates(m_coords[slot]); };
  return std::all_of(m_sides.begin(), m_sides.end(),
                     [&](const Side& side) { return isReached(side.from) && isReached(side.to); });
}

double TraverseFinder::SideLength(Slot a, Slot b) const {
  const auto measured = [this](Slot from, Slot to) {
    const ObsData* obs = m_net.FindObs(from, to);
    return obs == nullptr ? kAbsentLength : obs->distance;
  };
  const double there = measured(a, b);
  const double back = measured(b, a);
  if (back == kAbsentLength) return there;
  if (there == kAbsentLength) return back;
  return (there + back) / 2.0;
}

bool TraverseFinder::HasReading(Slot station, Slot target) const {
  const ObsData* obs = m_net.FindObs(station, target);
  return obs != nullptr && HasDirection(*obs);
}

double TraverseFinder::AngleAt(Slot station, Slot back, Slot fore) const {
  return FullCircle(DmsToRad(m_net.FindObs(station, fore)->direction) -
                    DmsToRad(m_net.FindObs(station, back)->direction));
}

std::optional<MeasuredTraverse::Orientation> TraverseFinder::OrientationAt(Slot station,
                                                                           Slot neighbour,
                                                                           bool isStart) const {
  if (!HasReading(station, neighbour)) return std::nullopt;
  for (const SightNo k : m_net.SightsFrom(station)) {
    const Sight& s = m_net.At(k);
    if (!IsControl(s.target) || s.target == station || !HasDirection(s.obs)) continue;
    const PlaneResult& a = m_coords[station];
    const PlaneResult& b = m_coords[s.target];
    const double angle =
        isStart ? AngleAt(station, s.target, neighbour) : AngleAt(station, neighbour, s.target);
    return MeasuredTraverse::Orientation{angle, CalcAzimuth(a.x, a.y, b.x, b.y)};
  }
  return std::nullopt;
}

// Names, sides, inner angles and end coordinates of a chain of slots.
MeasuredTraverse TraverseFinder::Measure(const std::vector<Slot>& chain) const {
  MeasuredTraverse m;
  for (std::size_t i = 0; i < chain.size(); ++i) {
    m.names.push_back(m_net.Names().NameAt(chain[i]));
    if (i > 0) m.sides.push_back(SideLength(chain[i - 1], chain[i]));
    if (i > 0 && i + 1 < chain.size()) {
      m.angles.push_back(AngleAt(chain[i], chain[i - 1], chain[i + 1]));
    }
  }
  // A loop that nothing ties has a place of its own.
  const auto placeOf = [this](Slot slot) {
    const PlaneResult& point = m_coords[slot];
    return HasCoordinates(point) ? Position{point.x, point.y} : Position{0.0, 0.0};
  };
  const Position first = placeOf(chain.front());
  const Position last = placeOf(chain.back());
  m.startX = first.x;
  m.startY = first.y;
  m.endX = last.x;
  m.endY = last.y;
  return m;
}

std::vector<MeasuredTraverse> TraverseFinder::ConnectingTraverses() const {
  // New points pass a traverse on only where they have the readings for its angle.  A side between
  // control points is no part of a traverse: as the shorter way it would hide the chain beside it.
  std::vector<RouteLine> lines;
  for (const Side& side : m_sides) {
    if (IsControl(side.from) && IsControl(side.to)) continue;
    const bool from = IsControl(side.from) || HasReading(side.from, side.to);
    const bool to = IsControl(side.to) || HasReading(side.to, side.from);
    if (from && to) lines.push_back({side.from, side.to, side.length});
  }
  std::vector<char> isEnd(m_net.Slots().Size(), 0);
  for (const PointNo i : m_net.ControlPoints()) isEnd[m_net.SlotOf(i).Position()] = 1;
  const RouteGraph graph(m_net.Names().Count(), std::move(lines), std::move(isEnd));

  std::vector<MeasuredTraverse> found;
  RouteSearch search(graph);
  for (PointNo s(0); s.Number() < m_net.ControlCount(); ++s) {
    search.Run(m_net.SlotOf(s));
    for (PointNo t(s.Number() + 1); t.Number() < m_net.ControlCount(); ++t) {
      const Slot end = m_net.SlotOf(t);
      if (!search.IsReached(end) || !search.HasTwoLines(end)) continue;
      std::vector<Slot> chain = {end};
      while (search.Predecessor(chain.back()) != chain.back()) {
        chain.push_back(search.Predecessor(chain.back()));
      }
      std::reverse(chain.begin(), chain.end());
      MeasuredTraverse m = Measure(chain);
      m.start = OrientationAt(chain.front(), chain[1], true);
      m.end = OrientationAt(chain.back(), chain[chain.size() - 2], false);
      found.push_back(std::move(m));
    }
  }
  return found;
}

std::vector<Traverse> TraverseFinder::ClosedTraverses() const {
  std::vector<RouteLine> lines;
  for (const Side& side : m_sides) {
    if (HasReading(side.from, side.to) && HasReading(side.to, side.from)) {
      lines.push_back({side.from, side.to, side.length});
    }
  }
  const RouteGraph graph(m_net.Names().Count(), std::move(lines));
  std::vector<Traverse> found;
  ForEachLoop(graph, [&](LineNo k, const RouteSearch& search) {
    const RouteLine& line = graph.Line(k);
    if (!search.HasTwoLines(line.from)) return;
    std::vector<Slot> loop = {line.from};
    while (loop.back() != line.to) loop.push_back(search.Predecessor(loop.back()));
    found.push_back(CloseLoop(std::move(loop)));
  });
  return found;
}

Traverse TraverseFinder::CloseLoop(std::vector<Slot> loop) const {
  const auto control =
      std::find_if(loop.begin(), loop.end(), [this](Slot slot) { return IsControl(slot); });
  const bool hasControl = control != loop.end();
  if (hasControl) std::rotate(loop.begin(), control, loop.end());
  const Slot last = loop.back();
  loop.push_back(loop.front());
  const MeasuredTraverse m = Measure(loop);
  const auto sight = hasControl ? OrientationAt(loop[0], loop[1], true) : std::nullopt;
  const PlaneResult& a = m_coords[loop[0]];
  const PlaneResult& b = m_coords[loop[1]];
  const bool arePlaced = HasCoordinates(a) && HasCoordinates(b);
  const double side = arePlaced ? CalcAzimuth(a.x, a.y, b.x, b.y) : 0.0;
  const double azimuth = sight ? sight->azimuth + sight->angle : side;
  return ComputeClosedTraverse(m, AngleAt(loop[0], last, loop[1]), azimuth);
}

}  // namespace brenu
