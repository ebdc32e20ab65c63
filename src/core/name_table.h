#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/index.h"

namespace brenu {

// Places of names in byte order.
using Slot = Index<struct SlotKind>;

// A fixed set of names in byte order.  The place of a name, its slot, stands for it in the
// computations, so that walking slots in ascending order is walking names in ascending order.
class NameTable {
 public:
  NameTable() = default;
  // Takes names in any order, repeated ones too.
  explicit NameTable(std::vector<std::string_view> names);

  std::int32_t Count() const { return static_cast<std::int32_t>(m_names.Size()); }
  const std::string& NameAt(Slot slot) const { return m_names[slot]; }
  // None when the name is not in the table.
  Slot Find(std::string_view name) const { return m_places[PlaceOf(name)]; }

 private:
  // Where the name stands in the hash table, or the free place where it would.
  std::size_t PlaceOf(std::string_view name) const;

  Table<Slot, std::string> m_names;
  std::vector<Slot> m_places{Slot()};  // hash table, none for a free place
};

}  // namespace brenu
