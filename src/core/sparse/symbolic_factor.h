#pragma once

#include <cassert>
#include <cstdint>
#include <span>
#include <vector>

#include "core/unknown_pattern.h"

namespace brenu {

// A block of columns of the factor: `width` columns of `Height()` rows, stored column by column.
// Its rows are those of the columns themselves and then `rowCount` rows below.
struct Supernode {
  std::int32_t first = 0;         // place of the first column in the elimination order
  std::int32_t width = 0;         // number of columns
  std::int32_t rowCount = 0;      // number of rows below the columns
  std::int32_t parent = -1;       // the supernode that holds the first of these rows; -1 for none
  std::int64_t firstRow = 0;      // where its list of rows begins
  std::int64_t firstElement = 0;  // where its elements begin in the array of the factor

  std::int32_t Height() const { return width + rowCount; }
};

// Everything about the factor of a symmetric matrix that follows from the pattern of the matrix
// alone.  Made once a network, used by every factorisation and never changed.
//
// Supernodes are numbered in elimination order, children before their parent.  The rows below a
// supernode are all among the columns and rows of its parent.
class SymbolicFactor {
 public:
  explicit SymbolicFactor(const UnknownPattern& pattern);

  std::int32_t UnknownCount() const { return static_cast<std::int32_t>(m_placeOf.size()); }
  std::int64_t ElementCount() const { return m_elementCount; }
  // The place of an unknown in the elimination order.
  std::int32_t PlaceOf(std::int32_t unknown) const {
    assert(unknown >= 0 && unknown < UnknownCount());
    return m_placeOf[static_cast<std::size_t>(unknown)];
  }

  std::span<const Supernode> Supernodes() const { return m_supernodes; }
  // The supernode that holds the column of a place, and its number.
  const Supernode& SupernodeAt(std::int32_t place) const {
    return m_supernodes[SupernodeNumberAt(place)];
  }
  std::size_t SupernodeNumberAt(std::int32_t place) const {
    return static_cast<std::size_t>(m_supernodeAt[static_cast<std::size_t>(place)]);
  }
  // The places of the rows below a supernode, ascending.
  std::span<const std::int32_t> Rows(const Supernode& s) const { return RowPart(m_rows, s); }
  // For each of these rows its number among the parent's rows (the parent's columns first).
  std::span<const std::int32_t> RowsInParent(const Supernode& s) const {
    return RowPart(m_rowsInParent, s);
  }
  // The children of a supernode, ascending.
  std::span<const std::int32_t> Children(std::size_t supernode) const;

  // The number of a place among the rows of a supernode (its own columns first), -1 when it has no
  // such row; `place` is not before the first column.
  std::int32_t FindRow(const Supernode& s, std::int32_t place) const;
  // Where element (row, column), given by places with row >= column, stands; -1 when it lies
  // outside the pattern.
  std::int64_t FindElement(std::int32_t rowPlace, std::int32_t columnPlace) const;

 private:
  static std::span<const std::int32_t> RowPart(const std::vector<std::int32_t>& all,
                                               const Supernode& s) {
    return std::span(all).subspan(static_cast<std::size_t>(s.firstRow),
                                  static_cast<std::size_t>(s.rowCount));
  }
  void LinkRowsToParents();
  void CollectChildren();

  std::vector<std::int32_t> m_placeOf;      // by unknown
  std::vector<std::int32_t> m_supernodeAt;  // by place
  std::vector<Supernode> m_supernodes;
  std::vector<std::int32_t> m_rows;          // the rows of all supernodes
  std::vector<std::int32_t> m_rowsInParent;  // beside m_rows
  std::vector<std::int32_t> m_firstChild;    // by supernode, with one entry more
  std::vector<std::int32_t> m_children;      // of all supernodes
  std::int64_t m_elementCount = 0;
};

}  // namespace brenu
