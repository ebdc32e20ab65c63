#include "report/sketch_graph.h"

#include <algorithm>
#include <unordered_map>

namespace brenu {

SketchGraph::SketchGraph(std::size_t count, const std::vector<Edge>& edges)
    : m_first(count + 1, 0), m_neighbours(2 * edges.size()) {
  for (const auto& [a, b] : edges) {
    ++m_first[static_cast<std::size_t>(a) + 1];
    ++m_first[static_cast<std::size_t>(b) + 1];
  }
  for (std::size_t i = 0; i < count; ++i) m_first[i + 1] += m_first[i];
  std::vector<std::size_t> next(m_first.begin(), m_first.end() - 1);
  for (const auto& [a, b] : edges) {
    m_neighbours[next[static_cast<std::size_t>(a)]++] = b;
    m_neighbours[next[static_cast<std::size_t>(b)]++] = a;
  }
}

void SketchGraph::Steps(std::int32_t start, std::vector<std::int32_t>& steps,
                        std::vector<std::int32_t>& order) const {
  steps.assign(Count(), -1);
  order.assign(1, start);
  steps[static_cast<std::size_t>(start)] = 0;
  for (std::size_t at = 0; at < order.size(); ++at) {
    const std::int32_t v = order[at];
    for (const std::int32_t neighbour : Neighbours(v)) {
      std::int32_t& reached = steps[static_cast<std::size_t>(neighbour)];
      if (reached >= 0) continue;
      reached = steps[static_cast<std::size_t>(v)] + 1;
      order.push_back(neighbour);
    }
  }
}

std::vector<std::vector<std::int32_t>> SketchGraph::Parts() const {
  std::vector<std::vector<std::int32_t>> parts;
  std::vector<bool> seen(Count(), false);
  for (std::size_t start = 0; start < Count(); ++start) {
    if (seen[start]) continue;
    std::vector<std::int32_t> part{static_cast<std::int32_t>(start)};
    seen[start] = true;
    for (std::size_t at = 0; at < part.size(); ++at) {
      for (const std::int32_t neighbour : Neighbours(part[at])) {
        if (seen[static_cast<std::size_t>(neighbour)]) continue;
        seen[static_cast<std::size_t>(neighbour)] = true;
        part.push_back(neighbour);
      }
    }
    parts.push_back(std::move(part));
  }
  return parts;
}

SketchGraph SketchGraph::Part(const std::vector<std::int32_t>& vertices) const {
  std::unordered_map<std::int32_t, std::int32_t> number;
  number.reserve(vertices.size());
  for (const std::int32_t v : vertices) {
    number.emplace(v, static_cast<std::int32_t>(number.size()));
  }
  std::vector<Edge> edges;
  for (const std::int32_t v : vertices) {
    for (const std::int32_t neighbour : Neighbours(v)) {
      const auto found = number.find(neighbour);
      if (found != number.end() && v < neighbour) edges.emplace_back(number.at(v), found->second);
    }
  }
  return {vertices.size(), edges};
}

}  // namespace brenu
