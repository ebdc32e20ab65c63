#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace brenu {

// The rows below a supernode in stretches that follow one another among the rows of its parent,
// too: most do, and stretches are added and copied much faster than single elements.
class RowRuns {
 public:
  // `places` are the numbers of the rows in the parent, ascending.
  void Find(std::span<const std::int32_t> places) {
    m_runs.clear();
    for (std::size_t row = 0; row < places.size(); ++row) {
      const bool follows = row > 0 && places[row] == places[row - 1] + 1;
      if (!follows) m_runs.push_back({row, row, places[row]});
      m_runs.back().end = row + 1;
    }
  }

  // Calls visit(row, place, count) for the stretches of the rows from one on.
  template <typename Visit>
  void ForEachFrom(std::size_t row, Visit visit) const {
    auto run = std::upper_bound(m_runs.begin(), m_runs.end(), row,
                                [](std::size_t wanted, const Run& r) { return wanted < r.end; });
    for (; run != m_runs.end(); ++run) {
      const std::size_t first = std::max(row, run->first);
      visit(first, run->place + static_cast<std::ptrdiff_t>(first - run->first), run->end - first);
    }
  }

 private:
  struct Run {
    std::size_t first, end;  // rows
    std::ptrdiff_t place;    // of the first
  };
  std::vector<Run> m_runs;
};

}  // namespace brenu
