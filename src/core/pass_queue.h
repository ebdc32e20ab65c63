#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <limits>
#include <vector>

#include "core/index.h"

namespace brenu {

// Work done in passes, each visiting items in ascending order, without visiting items for which
// nothing has changed.  The result is that of passes over all items, provided that every item
// which a change can affect is added again when the change is made: an item behind the current one
// is visited later in the same pass, any other one in the next.
template <typename Item>
class PassQueue {
 public:
  // For items 0..count-1, none of which is due before it is added.
  explicit PassQueue(std::size_t count) { m_due.Assign(count, 0); }

  // Begins a pass; false when nothing is left to visit.
  bool StartPass() {
    if (m_next.empty()) return false;
    m_current.swap(m_next);
    std::make_heap(m_current.begin(), m_current.end(), std::greater<>());
    m_position = Item();
    return true;
  }

  // The next item of this pass; none at its end.
  Item Next() {
    if (m_current.empty()) return Item();
    std::pop_heap(m_current.begin(), m_current.end(), std::greater<>());
    m_position = m_current.back();
    m_current.pop_back();
    m_due[m_position] = 0;
    return m_position;
  }

  void Add(Item item) {
    if (m_due[item] != 0) return;
    m_due[item] = 1;
    if (item > m_position) {
      m_current.push_back(item);
      std::push_heap(m_current.begin(), m_current.end(), std::greater<>());
    } else {
      m_next.push_back(item);
    }
  }

 private:
  Table<Item, char> m_due;      // waiting in one of the two lists
  std::vector<Item> m_current;  // heap of this pass, smallest first
  std::vector<Item> m_next;     // the next pass, in no order
  // The item visited; before the first pass behind all of them.
  Item m_position{std::numeric_limits<std::int32_t>::max()};
};

}  // namespace brenu
