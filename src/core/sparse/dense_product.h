#pragma once

#include <cstddef>
#include <vector>

#include "core/sparse/dense_tile.h"

namespace brenu {

// A matrix inside an array: element (i, p) at data[i * rowStride + p * columnStride].
struct MatrixView {
  const double* data;
  std::ptrdiff_t rowStride;
  std::ptrdiff_t columnStride;
};

// Dense matrix products in cache blocks (Goto and van de Geijn, Anatomy of high-performance matrix
// multiplication): both factors are copied into the order in which the tiles read them.  Large ones
// are shared out among the team of threads in strips of C; each element is summed up the same way.
class DenseProduct {
 public:
  enum class Part { kWhole, kLower };  // kLower: what lies above the diagonal of C is undefined

  // C += sign A diag(scale) B^T, with A of rows x depth and B of columns x depth.  C is stored by
  // columns that are `stride` apart and overlaps neither A nor B.  A null scale stands for ones.
  struct Operands {
    MatrixView a;
    MatrixView b;
    const double* scale;
    double sign;
    std::ptrdiff_t rows, columns, depth;
  };
  void Add(const Operands& product, double* c, std::ptrdiff_t stride, Part part);

 private:
  static MultiplyTile BestTile() {
    static const MultiplyTile best = MultiplyTiles().back();
    return best;
  }
  // Memory that begins with a line of the cache: wide registers read it half as fast again.
  class Buffer {
   public:
    // What it held is lost.
    double* Take(std::ptrdiff_t size);

   private:
    std::vector<double> m_memory;
  };
  // Of one worker.
  struct Buffers {
    Buffer a;  // the packed block of A, tile row by tile row
    Buffer b;  // the packed block of B, tile column by tile column
  };
  static double* PackA(const Operands& product, std::ptrdiff_t row, std::ptrdiff_t rows,
                       std::ptrdiff_t p, std::ptrdiff_t depth, Buffer& to);
  static double* PackB(const Operands& product, std::ptrdiff_t column, std::ptrdiff_t columns,
                       std::ptrdiff_t p, std::ptrdiff_t depth, Buffer& to);
  void AddStrip(Buffers& buffers, const Operands& product, double* c, std::ptrdiff_t stride,
                Part part) const;

  MultiplyTile m_multiplyTile = BestTile();
  std::vector<Buffers> m_buffers = std::vector<Buffers>(1);
};

}  // namespace brenu
