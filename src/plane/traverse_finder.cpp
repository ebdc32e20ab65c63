#include "plane/traverse_finder.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/angles.h"
#include "core/loops.h"
#include "plane/marker.h"

namespace brenu {

TraverseFinder::TraverseFinder(const NetworkLayout& net, const std::vector<PlaneResult>& coords)
    : m_net(net), m_coords(coords) {
  CollectSides();
}

void TraverseFinder::CollectSides() {
  for (const Sight& s : m_net.Sights()) {
    if (m_net.PointOf(s.station) < 0 || m_net.PointOf(s.target) < 0 || !HasDistance(s.obs))
      continue;
    const ObsData* back = Find(s.target, s.station);
    if (back != nullptr && HasDistance(*back) && s.target < s.station) continue;  // entered before
    const double length = SideLength(s.station, s.target);
    if (length > 0.0 && std::isfinite(length)) m_sides.push_back({s.station, s.target, length});
  }
}

bool TraverseFinder::AllSidesReached() const {
  const auto isReached = [this](std::int32_t slot) {
    return m_coords[static_cast<std::size_t>(slot)].x < kNoCoordinateLimit;
  };
  return std::all_of(m_sides.begin(), m_sides.end(),
                     [&](const Side& side) { return isReached(side.from) && isReached(side.to); });
}

double TraverseFinder::SideLength(std::int32_t a, std::int32_t b) const {
  const auto measured = [this](std::int32_t from, std::int32_t to) {
    const ObsData* obs = Find(from, to);
    return obs == nullptr ? kAbsentLength : obs->distance;
  };
  const double there = measured(a, b);
  const double back = measured(b, a);
  if (back == kAbsentLength) return there;
  if (there == kAbsentLength) return back;
  return (there + back) / 2.0;
}

const ObsData* TraverseFinder::Find(std::int32_t station, std::int32_t target) const {
  const std::int32_t k = m_net.FindSight(station, target);
  return k < 0 ? nullptr : &m_net.Sights()[static_cast<std::size_t>(k)].obs;
}

bool TraverseFinder::HasReading(std::int32_t station, std::int32_t target) const {
  const ObsData* obs = Find(station, target);
  return obs != nullptr && HasDirection(*obs);
}

double TraverseFinder::AngleAt(std::int32_t station, std::int32_t back, std::int32_t fore) const {
  return FullCircle(DmsToRad(Find(station, fore)->direction) -
                    DmsToRad(Find(station, back)->direction));
}

std::optional<MeasuredTraverse::Orientation> TraverseFinder::OrientationAt(std::int32_t station,
                                                                           std::int32_t neighbour,
                                                                           bool isStart) const {
  if (!HasReading(station, neighbour)) return std::nullopt;
  const auto range = m_net.SightsFrom(station);
  for (std::int32_t k = range.first; k < range.end; ++k) {
    const Sight& s = m_net.Sights()[static_cast<std::size_t>(k)];
    if (!IsControl(s.target) || s.target == station || !HasDirection(s.obs)) continue;
    const PlaneResult& a = m_coords[static_cast<std::size_t>(station)];
    const PlaneResult& b = m_coords[static_cast<std::size_t>(s.target)];
    const double angle =
        isStart ? AngleAt(station, s.target, neighbour) : AngleAt(station, neighbour, s.target);
    return MeasuredTraverse::Orientation{angle, CalcAzimuth(a.x, a.y, b.x, b.y)};
  }
  return std::nullopt;
}

// Names, sides, inner angles and end coordinates of a chain of slots.
MeasuredTraverse TraverseFinder::Measure(const std::vector<std::int32_t>& chain) const {
  MeasuredTraverse m;
  for (std::size_t i = 0; i < chain.size(); ++i) {
    m.names.push_back(m_net.Names().NameAt(chain[i]));
    if (i > 0) m.sides.push_back(SideLength(chain[i - 1], chain[i]));
    if (i > 0 && i + 1 < chain.size()) {
      m.angles.push_back(AngleAt(chain[i], chain[i - 1], chain[i + 1]));
    }
  }
  const PlaneResult& first = m_coords[static_cast<std::size_t>(chain.front())];
  const PlaneResult& last = m_coords[static_cast<std::size_t>(chain.back())];
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
  std::vector<char> isEnd(static_cast<std::size_t>(m_net.SlotCount()), 0);
  for (std::int32_t i = 0; i < m_net.ControlCount(); ++i) {
    isEnd[static_cast<std::size_t>(m_net.SlotOf(i))] = 1;
  }
  const RouteGraph graph(m_net.SlotCount(), std::move(lines), std::move(isEnd));

  std::vector<MeasuredTraverse> found;
  RouteSearch search(graph);
  for (std::int32_t s = 0; s < m_net.ControlCount(); ++s) {
    search.Run(m_net.SlotOf(s), RouteSearch::kNone, RouteSearch::kNone);
    for (std::int32_t t = s + 1; t < m_net.ControlCount(); ++t) {
      const std::int32_t end = m_net.SlotOf(t);
      if (!search.IsReached(end) || !search.HasTwoLines(end)) continue;
      std::vector<std::int32_t> chain = {end};
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
  const RouteGraph graph(m_net.SlotCount(), std::move(lines));
  std::vector<Traverse> found;
  ForEachLoop(graph, [&](std::int32_t k, const RouteSearch& search) {
    const RouteLine& line = graph.Line(k);
    if (!search.HasTwoLines(line.from)) return;
    std::vector<std::int32_t> loop = {line.from};
    while (loop.back() != line.to) loop.push_back(search.Predecessor(loop.back()));
    found.push_back(CloseLoop(std::move(loop)));
  });
  return found;
}

Traverse TraverseFinder::CloseLoop(std::vector<std::int32_t> loop) const {
  const auto control =
      std::find_if(loop.begin(), loop.end(), [this](std::int32_t slot) { return IsControl(slot); });
  const bool hasControl = control != loop.end();
  if (hasControl) std::rotate(loop.begin(), control, loop.end());
  const std::int32_t last = loop.back();
  loop.push_back(loop.front());
  const MeasuredTraverse m = Measure(loop);
  const auto sight = hasControl ? OrientationAt(loop[0], loop[1], true) : std::nullopt;
  const PlaneResult& a = m_coords[static_cast<std::size_t>(loop[0])];
  const PlaneResult& b = m_coords[static_cast<std::size_t>(loop[1])];
  const double azimuth = sight ? sight->azimuth + sight->angle : CalcAzimuth(a.x, a.y, b.x, b.y);
  return ComputeClosedTraverse(m, AngleAt(loop[0], last, loop[1]), azimuth);
}

}  // namespace brenu
