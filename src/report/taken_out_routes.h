#pragma once

#include <set>
#include <string>
#include <utility>

#include "report/report.h"

namespace brenu {

// Pairs of points with observations that data snooping took out, to be met on the way of a closure.
class TakenOutRoutes {
 public:
  explicit TakenOutRoutes(const Report& report);

  // Whether the route leads over such a pair, in either direction.
  bool Touch(const ClosureRow& row) const;

 private:
  std::set<std::pair<std::string, std::string>> m_pairs;  // in both directions
};

}  // namespace brenu
