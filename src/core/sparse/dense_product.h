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
  // Of one worker.
  struct Buffers {
    std::vector<double> a;  // the packed block of A, tile row by tile row
    std::vector<double> b;  // the packed block of B, tile column by tile column
  };
  void AddStrip(Buffers& buffers, const Operands& product, double* c, std::ptrdiff_t stride,
                Part part) const;

  MultiplyTile m_multiplyTile = BestTile();
  std::vector<Buffers> m_buffers = std::vector<Buffers>(1);
};

}  // namespace brenu
