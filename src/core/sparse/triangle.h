// Lower triangles of symmetric squares that wait: their columns stand one after the other, each
// from its diagonal on.
#pragma once

#include <algorithm>
#include <cstddef>

namespace brenu {

// Where a column begins.
inline std::ptrdiff_t ColumnOfTriangle(std::ptrdiff_t column, std::ptrdiff_t size) {
  return column * size - column * (column - 1) / 2;
}

inline std::size_t TriangleSize(std::ptrdiff_t size) {
  return static_cast<std::size_t>(ColumnOfTriangle(size, size));
}

// Columns begin to end of the lower triangle of a square, to a triangle before it, which may
// overlap it, or elsewhere.
inline void PackLower(const double* square, std::ptrdiff_t size, double* triangle,
                      std::ptrdiff_t begin, std::ptrdiff_t end) {
  for (std::ptrdiff_t j = begin; j < end; ++j) {
    std::copy(square + j * (size + 1), square + (j + 1) * size,
              triangle + ColumnOfTriangle(j, size));
  }
}

// Columns begin to end of a triangle, and their mirror images.
inline void UnpackSquare(const double* triangle, std::ptrdiff_t size, double* square,
                         std::ptrdiff_t begin, std::ptrdiff_t end) {
  for (std::ptrdiff_t j = begin; j < end; ++j) {
    std::copy_n(triangle + ColumnOfTriangle(j, size), size - j, square + j * (size + 1));
  }
  for (std::ptrdiff_t i = begin + 1; i < size; ++i) {
    const std::ptrdiff_t columns = std::min(end, i);
    for (std::ptrdiff_t j = begin; j < columns; ++j) square[i * size + j] = square[j * size + i];
  }
}

}  // namespace brenu
