// Who is connected with whom, for places that show it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace brenu {

class SketchGraph {
 public:
  using Edge = std::pair<std::int32_t, std::int32_t>;

  SketchGraph(std::size_t count, const std::vector<Edge>& edges);

  std::size_t Count() const { return m_first.size() - 1; }
  std::span<const std::int32_t> Neighbours(std::int32_t v) const {
    const auto i = static_cast<std::size_t>(v);
    return std::span(m_neighbours).subspan(m_first[i], m_first[i + 1] - m_first[i]);
  }

  // Steps from `start`, -1 where it does not lead; `order` receives the vertices reached, nearest
  // first.
  void Steps(std::int32_t start, std::vector<std::int32_t>& steps,
             std::vector<std::int32_t>& order) const;

  // The vertices of each connected part, in ascending order of the first one.
  std::vector<std::vector<std::int32_t>> Parts() const;

  // The graph of some vertices, which get the numbers of their positions.
  SketchGraph Part(const std::vector<std::int32_t>& vertices) const;

 private:
  std::vector<std::size_t> m_first;
  std::vector<std::int32_t> m_neighbours;
};

}  // namespace brenu
