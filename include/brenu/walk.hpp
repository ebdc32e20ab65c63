// Loops over what is stored in a job, for C++17; part of brenu.hpp.
#ifndef BRENU_WALK_HPP_
#define BRENU_WALK_HPP_

#include <cstdint>
#include <string>

#include "brenu/survey.h"

namespace brenu {
inline namespace host {

// A point and where it is stored.
struct StoredPoint {
  std::int32_t index = -1;
  PointData point{};

  bool Next(AdjustmentContext* context) {
    return brenu_next_point(context, &index) && GetPoint(context, index, &point) == index;
  }
};

// What is stored from one point to another.
struct StoredObservation {
  std::string station, target;
  ObsData observation{};

  bool Next(AdjustmentContext* context) {
    brenu_pair pair{};
    station.copy(pair.station, sizeof pair.station - 1);
    target.copy(pair.target, sizeof pair.target - 1);
    if (!brenu_next_observation(context, &pair)) return false;
    station = pair.station;
    target = pair.target;
    observation = pair.observation;
    return true;
  }
};

// For range-for; what Item::Next steps through.
template <typename Item>
class Walk {
 public:
  explicit Walk(AdjustmentContext* context) : m_context(context) {}

  struct End {};
  class Iterator {
   public:
    explicit Iterator(AdjustmentContext* context) : m_context(context) { ++*this; }
    const Item& operator*() const { return m_item; }
    Iterator& operator++() {
      m_hasItem = m_item.Next(m_context);
      return *this;
    }
    bool operator!=(End) const { return m_hasItem; }

   private:
    AdjustmentContext* m_context;
    Item m_item;
    bool m_hasItem = false;
  };

  Iterator begin() const { return Iterator(m_context); }
  End end() const { return {}; }

 private:
  AdjustmentContext* m_context;
};

}  // namespace host
}  // namespace brenu

#endif  // BRENU_WALK_HPP_
