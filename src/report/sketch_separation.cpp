#include "report/sketch_separation.h"

#include <cmath>
#include <unordered_map>

namespace brenu {

namespace {

// Square cells as wide as the least distance; whoever is too close stands in a cell around.
class Cells {
 public:
  explicit Cells(double width) : m_width(width) {}

  void Add(const SketchPlace& place) {
    Cell& cell = m_cells[Key(Row(place.x), Row(place.y))];
    // One point speaks for many on its place.
    if (HasClose(cell, place, 0.2 * m_width)) return;
    m_places.push_back(place);
    m_next.push_back(cell.last);
    cell.last = static_cast<std::int32_t>(m_places.size()) - 1;
  }

  bool IsFree(const SketchPlace& place) const {
    for (std::int64_t row = Row(place.x) - 1; row <= Row(place.x) + 1; ++row) {
      for (std::int64_t column = Row(place.y) - 1; column <= Row(place.y) + 1; ++column) {
        const auto found = m_cells.find(Key(row, column));
        if (found != m_cells.end() && HasClose(found->second, place, 0.99 * m_width)) return false;
      }
    }
    return true;
  }

  // The middle of a cell on a ring around that of `place`.  Each cell remembers how far its rings
  // have been tried, since what was taken stays so.
  SketchPlace NearestFree(const SketchPlace& place) {
    const std::int64_t row = Row(place.x), column = Row(place.y);
    Cell& cell = m_cells[Key(row, column)];
    for (;;) {
      const std::int64_t side = 2 * cell.ring;
      if (cell.step >= 4 * side) {
        ++cell.ring;
        cell.step = 0;
        continue;
      }
      const std::int64_t along = cell.step % side - cell.ring, edge = cell.step / side;
      ++cell.step;
      const std::int64_t r = edge == 0   ? -cell.ring
                             : edge == 1 ? along
                             : edge == 2 ? cell.ring
                                         : -along;
      const std::int64_t c = edge == 0   ? along
                             : edge == 1 ? cell.ring
                             : edge == 2 ? -along
                                         : -cell.ring;
      const SketchPlace middle{(static_cast<double>(row + r) + 0.5) * m_width,
                               (static_cast<double>(column + c) + 0.5) * m_width};
      if (IsFree(middle)) return middle;
    }
  }

 private:
  struct Cell {
    std::int32_t last = -1;  // of its points, chained by m_next
    std::int64_t ring = 1, step = 0;
  };

  std::int64_t Row(double value) const {
    return static_cast<std::int64_t>(std::floor(value / m_width));
  }
  static std::uint64_t Key(std::int64_t row, std::int64_t column) {
    return (static_cast<std::uint64_t>(row) << 32U) ^
           (static_cast<std::uint64_t>(column) & 0xffffffffU);
  }
  bool HasClose(const Cell& cell, const SketchPlace& place, double distance) const {
    for (std::int32_t i = cell.last; i >= 0; i = m_next[static_cast<std::size_t>(i)]) {
      const SketchPlace& other = m_places[static_cast<std::size_t>(i)];
      const double dx = other.x - place.x, dy = other.y - place.y;
      if (dx * dx + dy * dy < distance * distance) return true;
    }
    return false;
  }

  double m_width;
  std::unordered_map<std::uint64_t, Cell> m_cells;
  std::vector<SketchPlace> m_places;
  std::vector<std::int32_t> m_next;
};

}  // namespace

void Separate(std::vector<SketchPlace>& places, const std::vector<bool>& movable, double distance) {
  if (!(distance > 0.0)) return;
  // From the corner, so that places count in cells that a whole number can hold.
  const SketchExtent extent = ExtentOf(places);
  Cells cells(distance);
  for (std::size_t i = 0; i < places.size(); ++i) {
    if (!movable[i]) cells.Add({places[i].x - extent.xMin, places[i].y - extent.yMin});
  }
  for (std::size_t i = 0; i < places.size(); ++i) {
    if (!movable[i]) continue;
    SketchPlace place{places[i].x - extent.xMin, places[i].y - extent.yMin};
    if (!cells.IsFree(place)) place = cells.NearestFree(place);
    cells.Add(place);
    places[i] = {place.x + extent.xMin, place.y + extent.yMin};
  }
}

}  // namespace brenu
