#include "core/sparse/dense_product.h"

#include <algorithm>

namespace brenu {

namespace {

// Cache blocks: B is packed in kDepth x kColumns, A in kRows x kDepth.
constexpr std::ptrdiff_t kDepth = 256;
constexpr std::ptrdiff_t kRows = 10 * kTileRows;
constexpr std::ptrdiff_t kColumns = 1024;

constexpr std::ptrdiff_t RoundUp(std::ptrdiff_t n, std::ptrdiff_t unit) {
  return (n + unit - 1) / unit * unit;
}

// Copies rows 0..count-1 of a view, `depth` long, as panels of kUnit rows; missing rows are zero.
template <std::ptrdiff_t kUnit>
void Pack(const MatrixView& from, std::ptrdiff_t count, std::ptrdiff_t depth, double* to) {
  for (std::ptrdiff_t i = 0; i < count; i += kUnit) {
    const double* source = from.data + i * from.rowStride;
    const std::ptrdiff_t rows = std::min(kUnit, count - i);
    if (rows == kUnit && from.rowStride == 1) {
      for (std::ptrdiff_t p = 0; p < depth; ++p) {
        for (std::ptrdiff_t k = 0; k < kUnit; ++k) to[p * kUnit + k] = source[k];
        source += from.columnStride;
      }
    } else {
      if (rows < kUnit) std::fill_n(to, depth * kUnit, 0.0);
      for (std::ptrdiff_t k = 0; k < rows; ++k) {
        const double* row = source + k * from.rowStride;
        for (std::ptrdiff_t p = 0; p < depth; ++p) to[p * kUnit + k] = row[p * from.columnStride];
      }
    }
    to += depth * kUnit;
  }
}

MatrixView Shifted(const MatrixView& view, std::ptrdiff_t row, std::ptrdiff_t column) {
  return {view.data + row * view.rowStride + column * view.columnStride, view.rowStride,
          view.columnStride};
}

void Enlarge(std::vector<double>& buffer, std::ptrdiff_t size) {
  if (buffer.size() < static_cast<std::size_t>(size)) {
    buffer.resize(static_cast<std::size_t>(size));
  }
}

}  // namespace

void DenseProduct::PackA(const Operands& product, std::ptrdiff_t row, std::ptrdiff_t rows,
                         std::ptrdiff_t p, std::ptrdiff_t depth) {
  Enlarge(m_a, RoundUp(rows, kTileRows) * depth);
  Pack<kTileRows>(Shifted(product.a, row, p), rows, depth, m_a.data());
}

void DenseProduct::PackB(const Operands& product, std::ptrdiff_t column, std::ptrdiff_t columns,
                         std::ptrdiff_t p, std::ptrdiff_t depth) {
  const std::ptrdiff_t padded = RoundUp(columns, kTileColumns);
  Enlarge(m_b, padded * depth);
  Pack<kTileColumns>(Shifted(product.b, column, p), columns, depth, m_b.data());
  if (product.scale == nullptr && product.sign == 1.0) return;
  double* element = m_b.data();
  for (std::ptrdiff_t panel = 0; panel < padded; panel += kTileColumns) {
    for (std::ptrdiff_t k = 0; k < depth; ++k) {
      const double factor = product.sign * (product.scale == nullptr ? 1.0 : product.scale[p + k]);
      for (std::ptrdiff_t j = 0; j < kTileColumns; ++j) *element++ *= factor;
    }
  }
}

void DenseProduct::Add(const Operands& product, double* c, std::ptrdiff_t stride, Part part) {
  double edge[kTileRows * kTileColumns];  // a tile that reaches over the edge of C
  for (std::ptrdiff_t j0 = 0; j0 < product.columns; j0 += kColumns) {
    const std::ptrdiff_t columns = std::min(kColumns, product.columns - j0);
    for (std::ptrdiff_t p = 0; p < product.depth; p += kDepth) {
      const std::ptrdiff_t depth = std::min(kDepth, product.depth - p);
      PackB(product, j0, columns, p, depth);
      const std::ptrdiff_t firstRow = part == Part::kLower ? j0 / kTileRows * kTileRows : 0;
      for (std::ptrdiff_t i0 = firstRow; i0 < product.rows; i0 += kRows) {
        const std::ptrdiff_t rows = std::min(kRows, product.rows - i0);
        PackA(product, i0, rows, p, depth);
        for (std::ptrdiff_t j = 0; j < columns; j += kTileColumns) {
          const double* b = m_b.data() + j * depth;
          for (std::ptrdiff_t i = 0; i < rows; i += kTileRows) {
            if (part == Part::kLower && i0 + i + kTileRows <= j0 + j) continue;  // all above
            const double* a = m_a.data() + i * depth;
            double* target = c + (j0 + j) * stride + i0 + i;
            const std::ptrdiff_t height = std::min(kTileRows, rows - i);
            const std::ptrdiff_t width = std::min(kTileColumns, columns - j);
            if (height == kTileRows && width == kTileColumns) {
              m_multiplyTile(depth, a, b, target, stride);
              continue;
            }
            std::fill_n(edge, kTileRows * kTileColumns, 0.0);
            m_multiplyTile(depth, a, b, edge, kTileRows);
            for (std::ptrdiff_t column = 0; column < width; ++column) {
              for (std::ptrdiff_t row = 0; row < height; ++row) {
                target[column * stride + row] += edge[column * kTileRows + row];
              }
            }
          }
        }
      }
    }
  }
}

}  // namespace brenu
