// Symmetric matrices of order u in packed form: the upper triangle column by column, element
// (r, c) with r <= c at position c (c + 1) / 2 + r.
#pragma once

#include <cstddef>
#include <span>
#include <utility>

namespace brenu {

constexpr std::size_t PackedSize(std::size_t order) { return order * (order + 1) / 2; }

// Either triangle may be named.
constexpr std::size_t PackedIndex(std::size_t r, std::size_t c) {
  return r <= c ? c * (c + 1) / 2 + r : r * (r + 1) / 2 + c;
}

// Replaces the matrix by its inverse through cyclic elimination without pivoting, using one work
// vector.  False when a pivot vanishes beside 1.0 (an absolute test: the matrix is taken as
// singular and left half transformed).
bool InvertPacked(std::span<double> matrix, std::size_t order);

}  // namespace brenu
