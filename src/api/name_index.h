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
  void Add(std::string_view name, std::int32_t index) {
    m_indices[std::string(name)].insert(index);
  }
  void Remove(std::string_view name, std::int32_t index) {
    const auto found = m_indices.find(name);
    if (found == m_indices.end()) return;
    found->second.erase(index);
    if (found->second.empty()) m_indices.erase(found);
  }
  void Clear() { m_indices.clear(); }

  bool Has(std::string_view name) const { return m_indices.find(name) != m_indices.end(); }
  // -1 when there is none.
  std::int32_t First(std::string_view name) const {
    const auto found = m_indices.find(name);
    return found == m_indices.end() ? -1 : *found->second.begin();
  }

 private:
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view name) const {
      return std::hash<std::string_view>{}(name);
    }
  };

  std::unordered_map<std::string, std::set<std::int32_t>, Hash, std::equal_to<>> m_indices;
};

}  // namespace brenu
