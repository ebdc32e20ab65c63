#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace brenu {

// A fixed set of names in byte order.  The position of a name, its slot, stands for it in the
// computations, so that walking slots in ascending order is walking names in ascending order.
class NameTable {
 public:
  NameTable() = default;
  // Takes names in any order, repeated ones too.
  explicit NameTable(std::vector<std::string_view> names);

  std::int32_t Count() const { return static_cast<std::int32_t>(m_names.size()); }
  const std::string& NameAt(std::int32_t slot) const {
    return m_names[static_cast<std::size_t>(slot)];
  }
  // -1 when the name is not in the table.
  std::int32_t Find(std::string_view name) const { return m_places[PlaceOf(name)]; }

 private:
  // Where the name stands in the hash table, or the free place where it would.
  std::size_t PlaceOf(std::string_view name) const;

  std::vector<std::string> m_names;
  std::vector<std::int32_t> m_places{-1};  // hash table of slots, -1 for a free place
};

}  // namespace brenu
