#pragma once

#include <cstdint>
#include <limits>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace brenu {

// Which points bear a name.  Several can after a renaming; the lowest index then counts.  Functions
// that name a point expect it to be there.
class NameIndex {
 public:
  void Add(std::string_view name, std::int32_t index) { m_entries.emplace(name, index); }
  void Remove(std::string_view name, std::int32_t index) {
    const auto found = m_entries.find(Key{name, index});
    if (found != m_entries.end()) m_entries.erase(found);
  }
  // These two take no memory: they cannot fail.
  void Move(std::string_view name, std::int32_t from, std::int32_t to) noexcept {
    auto entry = m_entries.extract(m_entries.find(Key{name, from}));
    entry.value().second = to;
    m_entries.insert(std::move(entry));
  }
  void Rename(std::string_view name, std::int32_t index, std::string newName) noexcept {
    auto entry = m_entries.extract(m_entries.find(Key{name, index}));
    entry.value().first = std::move(newName);
    m_entries.insert(std::move(entry));
  }
  void Clear() { m_entries.clear(); }

  bool Has(std::string_view name) const { return Find(name) != m_entries.end(); }
  // -1 when there is none.
  std::int32_t First(std::string_view name) const {
    const auto found = Find(name);
    return found == m_entries.end() ? -1 : found->second;
  }

 private:
  using Entry = std::pair<std::string, std::int32_t>;
  using Key = std::pair<std::string_view, std::int32_t>;
  struct Before {
    using is_transparent = void;
    bool operator()(const Key& a, const Key& b) const { return a < b; }
  };
  using Entries = std::set<Entry, Before>;

  Entries::const_iterator Find(std::string_view name) const {
    const auto found = m_entries.lower_bound(Key{name, std::numeric_limits<std::int32_t>::min()});
    return found != m_entries.end() && found->first == name ? found : m_entries.end();
  }

  Entries m_entries;
};

}  // namespace brenu
