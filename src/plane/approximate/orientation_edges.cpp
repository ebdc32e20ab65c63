#include "plane/approximate/orientation_edges.h"

#include <algorithm>
#include <numbers>

#include "core/angles.h"
#include "plane/approximate/frames.h"

namespace brenu::approximate {

namespace {

class EdgeFinder {
 public:
  EdgeFinder(const PlaneNet& net, const Rays& rays, const Accuracy& accuracy,
             const StationNodes& nodes)
      : m_net(net),
        m_layout(net.layout),
        m_rays(rays),
        m_accuracy(accuracy),
        m_nodes(nodes),
        m_frames(net.layout, rays) {
    m_degree.Assign(nodes.slotOf.Size(), 0);
    m_common.Assign(net.layout.Slots().Size(), 0);
  }

  std::vector<OrientationEdge> Find() {
    for (const SightNo k : m_layout.Sights().Indices()) {
      if (!m_rays[k].HasReading()) continue;
      AddMutual(k);
      AddAzimuth(k);
      AddKnownLine(k);
    }
    for (const Slot station : m_layout.Slots()) {
      if (m_frames.Of(station).empty()) continue;
      AddControlVectors(station);
      AddCommonVectors(station);
    }
    return std::move(m_edges);
  }

 private:
  bool IsControl(Slot slot) const { return m_layout.IsControl(m_layout.PointOf(slot)); }
  Position Known(Slot slot) const {
    const PointData& point = m_net.points[m_layout.PointOf(slot)];
    return {point.x, point.y};
  }

  void Add(Node a, Node b, double turn, double sigma) {
    m_edges.push_back({a, b, HalfCircle(turn), sigma});
    ++m_degree[a];
    ++m_degree[b];
  }

  void AddMutual(SightNo k) {
    const Sight& s = m_layout.At(k);
    if (s.target < s.station) return;
    const SightNo back = m_layout.FindSight(s.target, s.station);
    if (back.IsNone() || !m_rays[back].HasReading()) return;
    Add(m_nodes.nodeOf[s.station], m_nodes.nodeOf[s.target],
        m_rays[k].reading + kPi - m_rays[back].reading, std::numbers::sqrt2 * m_accuracy.direction);
  }

  void AddAzimuth(SightNo k) {
    const Sight& s = m_layout.At(k);
    const double sigma = std::numbers::sqrt2 * m_accuracy.direction;
    const Node node = m_nodes.nodeOf[s.station];
    if (m_rays[k].HasAzimuth()) {
      Add(kWorld, node, m_rays[k].azimuth - m_rays[k].reading, sigma);
    }
    const SightNo back = m_layout.FindSight(s.target, s.station);
    if (!back.IsNone() && m_rays[back].HasAzimuth()) {
      Add(kWorld, node, m_rays[back].azimuth + kPi - m_rays[k].reading, sigma);
    }
  }

  void AddKnownLine(SightNo k) {
    const Sight& s = m_layout.At(k);
    if (!IsControl(s.station) || !IsControl(s.target)) return;
    const Position line = Known(s.target) - Known(s.station);
    const double length = LengthOf(line);
    if (!(length > 0.0)) return;
    Add(kWorld, m_nodes.nodeOf[s.station], AngleOf(line) - m_rays[k].reading,
        m_accuracy.direction + kControlError / length);
  }

  // Of a frame with two control points or more.
  void AddControlVectors(Slot station) {
    std::vector<Position> known;
    std::vector<Position> measured;
    for (const FramePoint& p : m_frames.Of(station)) {
      if (!IsControl(p.point)) continue;
      known.push_back(Known(p.point));
      measured.push_back(p.place);
    }
    FrameTurn found{};
    if (known.size() < 2 || !FindTurn(known, measured, m_accuracy, found)) return;
    Add(kWorld, m_nodes.nodeOf[station], found.turn, found.sigma);
  }

  // With the frames that share two points or more.
  void AddCommonVectors(Slot station) {
    // Stations well tied by sights need no vectors.
    constexpr std::int32_t kWellTied = 3;
    std::vector<Slot> others;
    for (const FramePoint& p : m_frames.Of(station)) {
      const auto with = m_frames.With(p.point);
      constexpr std::size_t kHub = 48;  // frames of such a point are found through others
      if (with.size() > kHub) continue;
      for (const Slot other : with) {
        if (other == station) continue;
        if (m_common[other]++ == 0) others.push_back(other);
      }
    }
    std::sort(others.begin(), others.end(), [this](Slot a, Slot b) {
      return m_common[a] != m_common[b] ? m_common[a] > m_common[b] : a < b;
    });
    constexpr std::size_t kMostTies = 8;
    std::size_t ties = 0;
    for (const Slot other : others) {
      const bool tied = m_degree[m_nodes.nodeOf[station]] >= kWellTied &&
                        m_degree[m_nodes.nodeOf[other]] >= kWellTied;
      if (m_common[other] < 2 || ties == kMostTies) break;
      if (!tied && AddCommonVector(station, other)) ++ties;
    }
    for (const Slot other : others) m_common[other] = 0;
  }

  bool AddCommonVector(Slot station, Slot other) {
    std::vector<Position> first;
    std::vector<Position> second;
    const auto a = m_frames.Of(station);
    const auto b = m_frames.Of(other);
    for (std::size_t i = 0, j = 0; i < a.size() && j < b.size();) {
      if (a[i].point == b[j].point) {
        first.push_back(a[i++].place);
        second.push_back(b[j++].place);
      } else if (a[i].point < b[j].point) {
        ++i;
      } else {
        ++j;
      }
    }
    FrameTurn found{};
    if (!FindTurn(first, second, m_accuracy, found)) return false;
    Add(m_nodes.nodeOf[station], m_nodes.nodeOf[other], found.turn, found.sigma);
    return true;
  }

  static constexpr double kControlError = 0.02;  // metres: how well control points fit each other

  const PlaneNet& m_net;
  const NetworkLayout& m_layout;
  const Rays& m_rays;
  const Accuracy& m_accuracy;
  const StationNodes& m_nodes;
  Frames m_frames;
  std::vector<OrientationEdge> m_edges;
  Table<Node, std::int32_t> m_degree;
  Table<Slot, std::int32_t> m_common;  // points shared with the station at hand
};

}  // namespace

StationNodes::StationNodes(const NetworkLayout& layout, const Rays& rays) {
  nodeOf.Assign(layout.Slots().Size(), Node());
  slotOf.Add(Slot());
  for (const SightNo k : layout.Sights().Indices()) {
    const Slot station = layout.At(k).station;
    if (!rays[k].HasReading() || !nodeOf[station].IsNone()) continue;
    nodeOf[station] = Node(slotOf.Size());
    slotOf.Add(station);
  }
}

std::vector<OrientationEdge> FindOrientationEdges(const PlaneNet& net, const Rays& rays,
                                                  const Accuracy& accuracy,
                                                  const StationNodes& nodes) {
  return EdgeFinder(net, rays, accuracy, nodes).Find();
}

}  // namespace brenu::approximate
