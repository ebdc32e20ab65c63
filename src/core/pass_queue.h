#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <vector>

namespace brenu {

// Work done in passes, each visiting items in ascending order, without visiting items for which
// nothing has changed.  The result is that of passes over all items, provided that every item
// which a change can affect is added again when the change is made: an item behind the current one
// is visited later in the same pass, any other one in the next.
class PassQueue {
 public:
  // Starts with all of 0..count-1 due in the first pass.
  explicit PassQueue(std::int32_t count) : m_due(static_cast<std::size_t>(count), 1) {
    m_next.reserve(m_due.size());
    for (std::int32_t i = 0; i < count; ++i) m_next.push_back(i);
  }

  // Begins a pass; false when nothing is left to visit.
  bool StartPass() {
    if (m_next.empty()) return false;
    m_current.swap(m_next);
    std::make_heap(m_current.begin(), m_current.end(), std::greater<>());
    m_position = -1;
    return true;
  }

  // The next item of this pass, -1 at its end.
  std::int32_t Next() {
    if (m_current.empty()) return -1;
    std::pop_heap(m_current.begin(), m_current.end(), std::greater<>());
    m_position = m_current.back();
    m_current.pop_back();
    m_due[static_cast<std::size_t>(m_position)] = 0;
    return m_position;
  }

  void Add(std::int32_t item) {
    if (m_due[static_cast<std::size_t>(item)] != 0) return;
    m_due[static_cast<std::size_t>(item)] = 1;
    if (item > m_position) {
      m_current.push_back(item);
      std::push_heap(m_current.begin(), m_current.end(), std::greater<>());
    } else {
      m_next.push_back(item);
    }
  }

 private:
  std::vector<char> m_due;              // by item: waiting in one of the two lists
  std::vector<std::int32_t> m_current;  // heap of this pass, smallest first
  std::vector<std::int32_t> m_next;     // the next pass, in no order
  std::int32_t m_position = -1;
};

}  // namespace brenu
