#include "core/name_table.h"

#include <algorithm>
#include <bit>
#include <functional>

namespace brenu {

NameTable::NameTable(std::vector<std::string_view> names) {
  std::sort(names.begin(), names.end());
  names.erase(std::unique(names.begin(), names.end()), names.end());
  m_names = Table<Slot, std::string>(std::vector<std::string>(names.begin(), names.end()));

  m_places.assign(std::bit_ceil(2 * m_names.Size() + 1), Slot());
  for (const Slot slot : m_names.Indices()) m_places[PlaceOf(m_names[slot])] = slot;
}

// More than half of the places are free, so that the search ends.
std::size_t NameTable::PlaceOf(std::string_view name) const {
  const std::size_t mask = m_places.size() - 1;
  std::size_t place = std::hash<std::string_view>{}(name)&mask;
  while (!m_places[place].IsNone() && NameAt(m_places[place]) != name) place = (place + 1) & mask;
  return place;
}

}  // namespace brenu
