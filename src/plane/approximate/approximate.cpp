#include "plane/approximate/approximate.h"

#include <algorithm>

#include "plane/approximate/fit.h"
#include "plane/approximate/parts.h"
#include "plane/approximate/unplaced.h"

namespace brenu {

namespace approximate {
namespace {

class Approximation {
 public:
  Approximation(const PlaneNet& net, const Selection& selection)
      : m_net(net),
        m_layout(net.layout),
        m_rays(MakeRays(net, selection)),
        m_accuracy(net.param),
        m_places(net.layout.Slots().Size()),
        m_growth(net, m_rays, m_accuracy, m_places, Growth::System::kGrid) {}

  void Run(const Coordinates& known) {
    OrientCircles();
    for (const Slot slot : m_layout.Slots()) {
      if (IsControl(slot)) m_places.Place(slot, {known[slot].x, known[slot].y});
    }
    const std::vector<Slot> control = m_places.Points();
    for (const Slot slot : control) m_growth.Announce(slot);
    m_growth.Run();
    PartFinder finder(m_net, m_rays, m_accuracy);
    FindParts(finder);
    while (FitParts()) m_growth.Run();
    if (m_places.Points().size() < PointCount() && AddDistanceParts(finder)) {
      while (FitParts()) m_growth.Run();
    }
    PlaceAsStored();
    Settle();
  }

  const Places& Result() const { return m_places; }
  Findings Unplaced() const { return ExplainUnplaced(m_layout, m_rays, m_places); }

 private:
  bool IsControl(Slot slot) const { return m_layout.IsControl(m_layout.PointOf(slot)); }
  std::size_t PointCount() const {
    std::size_t count = 0;
    for (const Slot slot : m_layout.Slots()) count += m_layout.PointOf(slot).IsNone() ? 0 : 1;
    return count;
  }

  void OrientCircles();
  void FindParts(PartFinder& finder);
  bool AddDistanceParts(PartFinder& finder);
  bool FitParts();
  bool Fit(const Part& part);
  void PlaceAsStored();
  void Settle();

  const PlaneNet& m_net;
  const NetworkLayout& m_layout;
  Rays m_rays;
  Accuracy m_accuracy;
  Places m_places;  // in the grid
  Growth m_growth;
  // The stations of each component of orientations but the world's, with their orientations.
  struct Component {
    std::vector<Slot> stations;
    std::vector<double> orientations;
  };
  std::vector<Component> m_components;
  std::vector<Part> m_parts;  // not yet fitted
};

void Approximation::OrientCircles() {
  const StationNodes nodes(m_layout, m_rays);
  const Orientations oriented = SolveOrientations(
      nodes.slotOf.Size(), FindOrientationEdges(m_net, m_rays, m_accuracy, nodes));
  std::vector<std::size_t> sizes(static_cast<std::size_t>(oriented.componentCount), 0);
  for (const std::int32_t c : oriented.component) ++sizes[static_cast<std::size_t>(c)];
  const std::int32_t world = oriented.component[kWorld];
  m_components.resize(sizes.size());
  for (const Node node : nodes.slotOf.Indices()) {
    const Slot station = nodes.slotOf[node];
    const auto c = static_cast<std::size_t>(oriented.component[node]);
    if (node == kWorld) continue;
    if (oriented.component[node] == world) {
      m_places.Orient(station, oriented.orientation[node]);
    } else if (sizes[c] > 1) {  // one alone has no more shape than its measures
      m_components[c].stations.push_back(station);
      m_components[c].orientations.push_back(oriented.orientation[node]);
    }
  }
}

void Approximation::FindParts(PartFinder& finder) {
  for (const Component& c : m_components) {
    const bool isPlaced = std::all_of(c.stations.begin(), c.stations.end(), [this](Slot station) {
      return m_places.IsPlaced(station) && m_places.IsOriented(station);
    });
    if (isPlaced) continue;
    Part part = finder.FromStations(c.stations, c.orientations);
    if (part.points.size() > 1) m_parts.push_back(std::move(part));
  }
}

// Around points that nothing has reached, each point in one part only.
bool Approximation::AddDistanceParts(PartFinder& finder) {
  Table<Slot, char> isTaken;
  isTaken.Assign(m_layout.Slots().Size(), 0);
  bool found = false;
  for (const Slot slot : m_layout.Slots()) {
    if (m_layout.PointOf(slot).IsNone() || m_places.IsPlaced(slot) || isTaken[slot] != 0) continue;
    Part part = finder.FromDistances(slot);
    for (const Part::Point& p : part.points) isTaken[p.slot] = 1;
    if (part.points.size() < 3) continue;
    m_parts.push_back(std::move(part));
    found = true;
  }
  return found;
}

// Whether any part was fitted to the points placed so far.
bool Approximation::FitParts() {
  const std::size_t before = m_parts.size();
  std::erase_if(m_parts, [this](const Part& part) { return Fit(part); });
  return m_parts.size() < before;
}

bool Approximation::Fit(const Part& part) {
  std::vector<CommonPlace> common;
  for (const Part::Point& p : part.points) {
    if (m_places.IsPlaced(p.slot)) common.push_back({p.place, m_places.At(p.slot)});
  }
  const auto fitted = FitPlaces(common, part.isScaleless, part.mayMirror);
  if (!fitted) return false;
  for (const Part::Station& s : part.stations) {
    if (!m_places.IsOriented(s.slot)) m_places.Orient(s.slot, s.orientation + fitted->turn);
  }
  std::vector<Slot> fresh;
  for (const Part::Point& p : part.points) {
    if (m_places.IsPlaced(p.slot)) continue;
    m_places.Place(p.slot, (*fitted)(p.place));
    fresh.push_back(p.slot);
  }
  for (const Slot slot : fresh) m_growth.Announce(slot);
  for (const Part::Station& s : part.stations) m_growth.Announce(s.slot);
  return true;
}

// Points that contradictions kept open may be clear once the others are settled.
void Approximation::Settle() {
  Settling settling(m_net, m_rays, m_accuracy, m_places);
  const auto isHeld = [this](Slot slot) { return IsControl(slot); };
  settling.Run(8, isHeld);
  const std::size_t before = m_places.Points().size();
  for (const Slot slot : m_layout.Slots()) {
    if (!m_places.IsPlaced(slot)) m_growth.Offer(slot);
  }
  m_growth.Run();
  if (m_places.Points().size() > before) settling.Run(8, isHeld);
}

// What the observations leave open but the file gives.
void Approximation::PlaceAsStored() {
  bool placed = false;
  for (const PointNo i : m_layout.NewPoints()) {
    const PointData& stored = m_net.points[i];
    const Slot slot = m_layout.SlotOf(i);
    const bool isObserved =
        m_layout.SightsFrom(slot).Size() > 0 || !m_layout.SightsTo(slot).empty();
    const bool isGiven =
        stored.x != 0.0 && stored.y != 0.0 && std::isfinite(stored.x) && std::isfinite(stored.y);
    if (!isGiven || !isObserved || m_places.IsPlaced(slot)) continue;
    m_places.Place(slot, {stored.x, stored.y});
    m_growth.Announce(slot);
    placed = true;
  }
  if (placed) m_growth.Run();
}

}  // namespace
}  // namespace approximate

Findings PlaceByShape(const PlaneNet& net, const approximate::Selection& selection,
                      Coordinates& coords) {
  approximate::Approximation approximation(net, selection);
  approximation.Run(coords);
  const approximate::Places& places = approximation.Result();
  for (const Slot slot : places.Points()) {
    coords[slot].x = places.At(slot).x;
    coords[slot].y = places.At(slot).y;
  }
  return approximation.Unplaced();
}

}  // namespace brenu
