#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "core/records.h"

namespace brenu {

// Which points bear a name.  Several can after a renaming; the lowest index then counts.
//
// A hash table of the points with linear probing.  A point stays where it is in memory as long as
// it stands in the table, and bears its name whenever names are looked up.
class NameIndex {
 public:
  // Makes room for one more point.
  void MakeRoom();

  // The following take no memory: they cannot fail.
  void Add(std::string_view name, std::int32_t index, const PointData& point) noexcept;
  void Remove(std::string_view name, std::int32_t index) noexcept;
  // The point of that name and index gets another index and place.
  void Move(std::string_view name, std::int32_t from, std::int32_t to,
            const PointData& point) noexcept;

  bool Has(std::string_view name) const { return First(name) >= 0; }
  // -1 when there is none.
  std::int32_t First(std::string_view name) const;

 private:
  // The beginning of a name, filled up with NULs: most names end in it, and need not be looked for
  // where the point stands.
  using Head = std::array<char, 16>;
  struct Cell {
    const PointData* point = nullptr;  // null for a free cell
    std::uint32_t hash = 0;
    std::int32_t index = 0;
    Head head{};
  };

  static Head HeadOf(std::string_view name) noexcept;
  std::size_t Next(std::size_t cell) const { return (cell + 1) & (m_cells.size() - 1); }
  std::size_t HomeOf(std::uint32_t hash) const { return hash & (m_cells.size() - 1); }
  void Put(const Cell& cell) noexcept;
  std::size_t Find(std::string_view name, std::int32_t index) const noexcept;

  std::vector<Cell> m_cells;  // a power of two, more than half of them free
  std::size_t m_count = 0;
};

}  // namespace brenu
