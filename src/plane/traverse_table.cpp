#include "plane/traverse_table.h"

#include <algorithm>
#include <tuple>

namespace brenu {

TraverseTable::TraverseTable(std::vector<Traverse> traverses) : m_traverses(std::move(traverses)) {
  for (std::size_t t = 0; t < m_traverses.size(); ++t) {
    for (std::size_t i = 0; i < m_traverses[t].points.size(); ++i) {
      m_byName.emplace_back(static_cast<std::int32_t>(t), static_cast<std::int32_t>(i));
    }
  }
  std::sort(m_byName.begin(), m_byName.end(), [this](const Place& a, const Place& b) {
    return std::tie(PointAt(a).name, a) < std::tie(PointAt(b).name, b);
  });
}

TraverseTable::Row TraverseTable::Find(std::string_view name) const {
  const auto found = std::lower_bound(
      m_byName.begin(), m_byName.end(), name,
      [this](const Place& a, std::string_view wanted) { return PointAt(a).name < wanted; });
  if (found == m_byName.end() || PointAt(*found).name != name) return {nullptr, nullptr};
  return {&m_traverses[static_cast<std::size_t>(found->first)], &PointAt(*found)};
}

}  // namespace brenu
