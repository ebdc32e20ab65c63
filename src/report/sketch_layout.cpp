#include "report/sketch_layout.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "core/median.h"
#include "report/sketch_graph.h"
#include "report/sketch_separation.h"
#include "report/sketch_stress.h"

namespace brenu {

namespace {

constexpr double kFarthest = 1e9;  // metres; beyond it a number is no coordinate on earth
constexpr int kRounds = 40;

// A connected part in its own frame, its corner at the origin.
struct Block {
  std::vector<std::int32_t> points;
  std::vector<SketchPlace> places;
  SketchExtent extent;
};

// Blocks side by side in rows, the highest first; their corner comes to the origin.
void Pack(std::vector<Block>& blocks, double gap) {
  double area = 0.0, widest = 0.0;
  for (const Block& block : blocks) {
    area += (block.extent.Height() + gap) * (block.extent.Width() + gap);
    widest = std::max(widest, block.extent.Width());
  }
  std::stable_sort(blocks.begin(), blocks.end(), [](const Block& a, const Block& b) {
    return a.extent.Height() > b.extent.Height();
  });
  const double rowWidth = std::max(widest, std::sqrt(1.5 * area)) + 1e-6;
  double top = 0.0, left = 0.0, rowHeight = 0.0;
  for (Block& block : blocks) {
    if (left > 0.0 && left + block.extent.Width() > rowWidth) {
      top -= rowHeight + gap;
      left = rowHeight = 0.0;
    }
    rowHeight = std::max(rowHeight, block.extent.Height());
    for (SketchPlace& place : block.places) {
      place.x += top - block.extent.xMax;
      place.y += left - block.extent.yMin;
    }
    left += block.extent.Width() + gap;
  }
}

class Layout {
 public:
  explicit Layout(const Sketch& sketch)
      : m_sketch(sketch), m_graph(sketch.points.size(), EdgesOf(sketch)) {
    m_isPlaced.reserve(sketch.points.size());
    for (const SketchPoint& point : sketch.points) {
      m_isPlaced.push_back(HasPlace(point));
      m_places.push_back(m_isPlaced.back() ? SketchPlace{point.x, point.y} : SketchPlace{});
    }
  }

  SketchLayout Solve() {
    m_hasMap = std::find(m_isPlaced.begin(), m_isPlaced.end(), true) != m_isPlaced.end();
    if (std::find(m_isPlaced.begin(), m_isPlaced.end(), false) == m_isPlaced.end()) {
      return {std::move(m_places), false};
    }
    for (std::size_t i = 0; i < m_places.size(); ++i) {
      if (m_isPlaced[i]) m_map.Include(m_places[i]);
    }
    m_spacing = m_hasMap ? Spacing() : 1.0;
    std::vector<Block> blocks;
    for (std::vector<std::int32_t>& part : m_graph.Parts()) {
      if (std::any_of(part.begin(), part.end(), [this](auto i) { return IsPlaced(i); })) {
        PlaceByNeighbours(part);
      } else {
        blocks.push_back(MakeBlock(std::move(part)));
      }
    }
    Pack(blocks, 1.2 * m_spacing);
    const double top = m_hasMap ? m_map.xMax : 0.0;
    const double left = m_hasMap ? m_map.yMax + 2.0 * m_spacing : 0.0;
    for (const Block& block : blocks) {
      for (std::size_t i = 0; i < block.points.size(); ++i) {
        At(block.points[i]) = {block.places[i].x + top, block.places[i].y + left};
      }
    }
    std::vector<bool> movable(m_isPlaced);
    movable.flip();
    Separate(m_places, movable, 0.4 * m_spacing);
    return {std::move(m_places), !m_hasMap};
  }

 private:
  static std::vector<SketchGraph::Edge> EdgesOf(const Sketch& sketch) {
    std::vector<SketchGraph::Edge> edges;
    for (const SketchLine& line : sketch.lines) {
      if (IsDrawn(sketch, line)) edges.emplace_back(line.a, line.b);
    }
    return edges;
  }

  bool IsPlaced(std::int32_t i) const { return m_isPlaced[static_cast<std::size_t>(i)]; }
  SketchPlace& At(std::int32_t i) { return m_places[static_cast<std::size_t>(i)]; }

  // The usual length of a line on the map.
  double Spacing() {
    std::vector<double> lengths;
    for (const SketchLine& line : m_sketch.lines) {
      if (!IsDrawn(m_sketch, line) || !IsPlaced(line.a) || !IsPlaced(line.b)) continue;
      lengths.push_back(std::hypot(At(line.a).x - At(line.b).x, At(line.a).y - At(line.b).y));
    }
    const double extent = std::max(m_map.Height(), m_map.Width());
    double spacing = extent / std::sqrt(static_cast<double>(m_places.size()));
    const double usual = Median(std::move(lengths));
    if (!std::isnan(usual)) spacing = std::clamp(usual, 0.1 * spacing, 5.0 * spacing);
    return spacing > 0.0 ? spacing : 1.0;
  }

  Block MakeBlock(std::vector<std::int32_t> part) {
    std::sort(part.begin(), part.end());
    Block block;
    block.places = StressLayout(m_graph.Part(part));
    const double length = m_hasMap ? 0.7 * m_spacing : m_spacing;
    for (SketchPlace& place : block.places) {
      place = {place.x * length, place.y * length};
      block.extent.Include(place);
    }
    block.points = std::move(part);
    return block;
  }

  // Points without coordinates start outside of a neighbour that has a place and then settle one
  // line's length from all neighbours.
  void PlaceByNeighbours(const std::vector<std::int32_t>& part) {
    std::vector<std::int32_t> order;
    for (const std::int32_t i : part) {
      if (IsPlaced(i)) order.push_back(i);
    }
    const std::size_t placed = order.size();
    if (placed == part.size()) return;
    std::vector<bool>& isReached = m_isReached;
    isReached.resize(m_places.size(), false);
    for (const std::int32_t i : order) isReached[static_cast<std::size_t>(i)] = true;
    const SketchPlace middle{(m_map.xMin + m_map.xMax) / 2.0, (m_map.yMin + m_map.yMax) / 2.0};
    for (std::size_t at = 0; at < order.size(); ++at) {
      for (const std::int32_t next : m_graph.Neighbours(order[at])) {
        if (isReached[static_cast<std::size_t>(next)]) continue;
        isReached[static_cast<std::size_t>(next)] = true;
        order.push_back(next);
        At(next) = OneLineFrom(At(order[at]), middle, At(order[at]));
      }
    }
    for (int round = 0; round < kRounds; ++round) {
      for (std::size_t at = placed; at < order.size(); ++at) {
        const SketchPlace old = At(order[at]);
        const auto neighbours = m_graph.Neighbours(order[at]);
        const auto share = 1.0 / static_cast<double>(neighbours.size());
        SketchPlace sum;
        for (const std::int32_t n : neighbours) {
          const SketchPlace pull = OneLineFrom(At(n), At(n), old);
          sum = {sum.x + share * pull.x, sum.y + share * pull.y};
        }
        At(order[at]) = sum;
      }
    }
  }

  // One line's length from `start` in the direction from `a` to `b`, east when they are one.
  SketchPlace OneLineFrom(const SketchPlace& start, const SketchPlace& a,
                          const SketchPlace& b) const {
    const double dx = b.x - a.x, dy = b.y - a.y, length = std::sqrt(dx * dx + dy * dy);
    if (!(length > 1e-6 * m_spacing)) return {start.x, start.y + m_spacing};
    return {start.x + m_spacing * dx / length, start.y + m_spacing * dy / length};
  }

  const Sketch& m_sketch;
  SketchGraph m_graph;
  std::vector<bool> m_isPlaced, m_isReached;
  std::vector<SketchPlace> m_places;
  SketchExtent m_map;  // of the points with coordinates
  bool m_hasMap = false;
  double m_spacing = 1.0;
};

}  // namespace

bool HasPlace(const SketchPoint& point) {
  return point.isPlaced && std::abs(point.x) < kFarthest && std::abs(point.y) < kFarthest;
}

bool IsDrawn(const Sketch& sketch, const SketchLine& line) {
  const auto count = static_cast<std::int64_t>(sketch.points.size());
  return line.a >= 0 && line.b >= 0 && line.a < count && line.b < count && line.a != line.b;
}

SketchLayout LayOut(const Sketch& sketch) { return Layout(sketch).Solve(); }

}  // namespace brenu
