#include "core/name_table.h"

#include <algorithm>

namespace brenu {

NameTable::NameTable(std::vector<std::string_view> names) {
  std::sort(names.begin(), names.end());
  names.erase(std::unique(names.begin(), names.end()), names.end());
  m_names.assign(names.begin(), names.end());
}

std::int32_t NameTable::Find(std::string_view name) const {
  const auto found = std::lower_bound(m_names.begin(), m_names.end(), name);
  if (found == m_names.end() || *found != name) return -1;
  return static_cast<std::int32_t>(found - m_names.begin());
}

}  // namespace brenu
