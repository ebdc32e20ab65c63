#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>

#include "core/index.h"

namespace brenu {

// The number of a point's name among those that occur in an import.
using NameNo = Index<struct NameKind>;

// The names of points, byte for byte, each once.  Its number stands for a name from the reader to
// the project, so that nothing is looked up on the way.
class PointNames {
 public:
  // None for an empty name.
  NameNo Enter(std::string_view name) {
    if (name.empty()) return {};
    const auto known = m_numbers.find(name);
    if (known != m_numbers.end()) return known->second;
    const NameNo number(m_names.size());
    m_names.emplace_back(name);
    m_numbers.emplace(m_names.back(), number);
    return number;
  }
  // Empty for none.
  const std::string& operator[](NameNo name) const {
    return name.IsNone() ? m_none : m_names[name.Position()];
  }
  bool Has(std::string_view name) const { return m_numbers.contains(name); }
  std::size_t Count() const { return m_names.size(); }

 private:
  std::string m_none;
  std::deque<std::string> m_names;  // which stay where they are
  std::unordered_map<std::string_view, NameNo> m_numbers;
};

}  // namespace brenu
