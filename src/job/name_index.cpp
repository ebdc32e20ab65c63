#include "job/name_index.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace brenu {

namespace {
std::uint32_t HashOf(std::string_view name) {
  return static_cast<std::uint32_t>(std::hash<std::string_view>{}(name));
}
}  // namespace

NameIndex::Head NameIndex::HeadOf(std::string_view name) noexcept {
  Head head{};
  std::copy_n(name.begin(), std::min(name.size(), head.size()), head.begin());
  return head;
}

void NameIndex::MakeRoom() {
  constexpr std::size_t kFewest = 16;
  if (2 * (m_count + 1) < m_cells.size()) return;
  std::vector<Cell> larger(m_cells.empty() ? kFewest : 2 * m_cells.size());
  std::swap(m_cells, larger);
  for (const Cell& cell : larger) {
    if (cell.point != nullptr) Put(cell);
  }
}

void NameIndex::Put(const Cell& cell) noexcept {
  std::size_t place = HomeOf(cell.hash);
  while (m_cells[place].point != nullptr) place = Next(place);
  m_cells[place] = cell;
}

void NameIndex::Add(std::string_view name, std::int32_t index, const PointData& point) noexcept {
  Put({&point, HashOf(name), index, HeadOf(name)});
  ++m_count;
}

// The point must be there.
std::size_t NameIndex::Find(std::string_view name, std::int32_t index) const noexcept {
  const std::uint32_t hash = HashOf(name);
  std::size_t place = HomeOf(hash);
  while (m_cells[place].index != index || m_cells[place].hash != hash) place = Next(place);
  return place;
}

void NameIndex::Remove(std::string_view name, std::int32_t index) noexcept {
  std::size_t hole = Find(name, index);
  // Cells that were pushed beyond the hole move up, so that searches need not go on over it.
  for (std::size_t place = Next(hole); m_cells[place].point != nullptr; place = Next(place)) {
    const std::size_t mask = m_cells.size() - 1;
    const std::size_t pushed = (place - HomeOf(m_cells[place].hash)) & mask;
    if (pushed < ((place - hole) & mask)) continue;
    m_cells[hole] = m_cells[place];
    hole = place;
  }
  m_cells[hole] = {};
  --m_count;
}

void NameIndex::Move(std::string_view name, std::int32_t from, std::int32_t to,
                     const PointData& point) noexcept {
  Cell& cell = m_cells[Find(name, from)];
  cell.index = to;
  cell.point = &point;
}

std::int32_t NameIndex::First(std::string_view name) const {
  if (m_cells.empty()) return -1;
  const std::uint32_t hash = HashOf(name);
  const Head head = HeadOf(name);
  // No name ends with a NUL, which a head could not tell from its filling.
  const bool endsInHead = name.size() < head.size() && !name.ends_with('\0');
  std::int32_t first = -1;
  for (std::size_t place = HomeOf(hash); m_cells[place].point != nullptr; place = Next(place)) {
    const Cell& cell = m_cells[place];
    const bool isLower = first < 0 || cell.index < first;
    if (cell.hash != hash || !isLower || cell.head != head) continue;
    if (endsInHead || NameOf(*cell.point) == name) first = cell.index;
  }
  return first;
}

}  // namespace brenu
