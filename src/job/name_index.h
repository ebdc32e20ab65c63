#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>

namespace brenu {

// Which points bear a name.  Several can after a renaming; the lowest index then counts.
class NameIndex {
 public:
  void Add(std::string_view name, std::int32_t index) { Expect(name).insert(index); }
  // Makes room for a Rename to this name.
  std::set<std::int32_t>& Expect(std::string_view name) {
    return m_points.try_emplace(std::string(name)).first->second;
  }

  // The following take no memory: they cannot fail.  They expect the point that they name.
  void Remove(std::string_view name, std::int32_t index) noexcept {
    const auto entry = m_points.find(name);
    entry->second.erase(index);
    if (entry->second.empty()) m_points.erase(entry);
  }
  void Move(std::string_view name, std::int32_t from, std::int32_t to) noexcept {
    std::set<std::int32_t>& points = m_points.find(name)->second;
    auto node = points.extract(from);
    node.value() = to;
    points.insert(std::move(node));
  }
  // To a name that is expected.
  void Rename(std::string_view from, std::string_view to, std::int32_t index) noexcept {
    const auto entry = m_points.find(from);
    m_points.find(to)->second.insert(entry->second.extract(index));
    if (entry->second.empty()) m_points.erase(entry);
  }

  bool Has(std::string_view name) const {
    const auto entry = m_points.find(name);
    return entry != m_points.end() && !entry->second.empty();
  }
  // -1 when there is none.
  std::int32_t First(std::string_view name) const {
    const auto entry = m_points.find(name);
    return entry == m_points.end() || entry->second.empty() ? -1 : *entry->second.begin();
  }

 private:
  // Not said to be noexcept, so that hashes are kept beside the names.
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view name) const {
      return std::hash<std::string_view>{}(name);
    }
  };

  // Ascending indices by name; names that are only expected have none.
  std::unordered_map<std::string, std::set<std::int32_t>, Hash, std::equal_to<>> m_points;
};

}  // namespace brenu
