#pragma once

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "plane/traverse.h"

namespace brenu {

// The traverses of the last computation, to be looked up by point.
class TraverseTable {
 public:
  TraverseTable() = default;
  explicit TraverseTable(std::vector<Traverse> traverses);

  const std::vector<Traverse>& Traverses() const { return m_traverses; }

  struct Row {
    const Traverse* traverse;
    const TraversePoint* point;
  };
  // The row of a point in the first traverse that it is on; null pointers when it is on none.
  Row Find(std::string_view name) const;

 private:
  using Place = std::pair<std::int32_t, std::int32_t>;  // traverse, point

  const TraversePoint& PointAt(const Place& place) const {
    return m_traverses[static_cast<std::size_t>(place.first)]
        .points[static_cast<std::size_t>(place.second)];
  }

  std::vector<Traverse> m_traverses;
  std::vector<Place> m_byName;  // all rows, by name and then by place
};

}  // namespace brenu
