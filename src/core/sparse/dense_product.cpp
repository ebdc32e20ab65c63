#include "core/sparse/dense_product.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "core/parallel.h"

namespace brenu {

namespace {

// Cache blocks: B is packed in kDepth x kColumns, A in kRows x kDepth.
constexpr std::ptrdiff_t kDepth = 256;
constexpr std::ptrdiff_t kRows = 8 * kTileRows;
constexpr std::ptrdiff_t kColumns = 170 * kTileColumns;

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

// Where strip k of `count` begins: columns with about the same number of elements, of a lower
// triangle too.
std::ptrdiff_t StripBegin(const DenseProduct::Operands& product, DenseProduct::Part part,
                          std::size_t k, std::size_t count) {
  if (k == count) return product.columns;
  const double share = static_cast<double>(k) / static_cast<double>(count);
  const auto rows = static_cast<double>(product.rows);
  const auto columns = static_cast<double>(product.columns);
  double begin = share * columns;
  if (part == DenseProduct::Part::kLower) {
    // Columns 0..x hold x (rows - x / 2) elements.
    begin = rows - std::sqrt(rows * rows - share * columns * (2.0 * rows - columns));
  }
  return RoundUp(static_cast<std::ptrdiff_t>(begin), kTileColumns);
}

}  // namespace

double* DenseProduct::Buffer::Take(std::ptrdiff_t size) {
  constexpr std::size_t kLine = 64;
  const std::size_t needed = static_cast<std::size_t>(size) + kLine / sizeof(double);
  if (m_memory.size() < needed) m_memory.resize(needed);
  void* memory = m_memory.data();
  std::size_t space = m_memory.size() * sizeof(double);
  return static_cast<double*>(
      std::align(kLine, static_cast<std::size_t>(size) * sizeof(double), memory, space));
}

double* DenseProduct::PackA(const Operands& product, std::ptrdiff_t row, std::ptrdiff_t rows,
                            std::ptrdiff_t p, std::ptrdiff_t depth, Buffer& to) {
  double* const packed = to.Take(RoundUp(rows, kTileRows) * depth);
  Pack<kTileRows>(Shifted(product.a, row, p), rows, depth, packed);
  return packed;
}

double* DenseProduct::PackB(const Operands& product, std::ptrdiff_t column, std::ptrdiff_t columns,
                            std::ptrdiff_t p, std::ptrdiff_t depth, Buffer& to) {
  const std::ptrdiff_t padded = RoundUp(columns, kTileColumns);
  double* const packed = to.Take(padded * depth);
  Pack<kTileColumns>(Shifted(product.b, column, p), columns, depth, packed);
  if (product.scale == nullptr && product.sign == 1.0) return packed;
  double* element = packed;
  for (std::ptrdiff_t panel = 0; panel < padded; panel += kTileColumns) {
    for (std::ptrdiff_t k = 0; k < depth; ++k) {
      const double factor = product.sign * (product.scale == nullptr ? 1.0 : product.scale[p + k]);
      for (std::ptrdiff_t j = 0; j < kTileColumns; ++j) *element++ *= factor;
    }
  }
  return packed;
}

void DenseProduct::Add(const Operands& product, double* c, std::ptrdiff_t stride, Part part) {
  constexpr double kLeastWork = 2e6;  // multiplications that are worth a thread
  const double work = static_cast<double>(product.rows) * static_cast<double>(product.columns) *
                      static_cast<double>(product.depth);
  const std::size_t workers = work < 2.0 * kLeastWork ? 1 : WorkerCount();
  if (workers == 1) {
    AddStrip(m_buffers[0], product, c, stride, part);
    return;
  }
  if (m_buffers.size() < workers) m_buffers.resize(workers);
  const bool byRows = part == Part::kWhole && product.rows > product.columns;
  const auto strips = std::min(2 * workers, static_cast<std::size_t>(work / kLeastWork));
  ForEach(strips, [&](std::size_t k, std::size_t worker) {
    Operands strip = product;
    if (byRows) {
      const auto begin = [&](std::size_t i) {
        return RoundUp(
            product.rows * static_cast<std::ptrdiff_t>(i) / static_cast<std::ptrdiff_t>(strips),
            kTileRows);
      };
      const std::ptrdiff_t first = begin(k);
      strip.a = Shifted(product.a, first, 0);
      strip.rows = std::min(begin(k + 1), product.rows) - first;
      AddStrip(m_buffers[worker], strip, c + first, stride, part);
      return;
    }
    const std::ptrdiff_t first = StripBegin(product, part, k, strips);
    const std::ptrdiff_t end = std::min(StripBegin(product, part, k + 1, strips), product.columns);
    const std::ptrdiff_t firstRow = part == Part::kLower ? first : 0;
    strip.a = Shifted(product.a, firstRow, 0);
    strip.b = Shifted(product.b, first, 0);
    strip.rows = product.rows - firstRow;
    strip.columns = end - first;
    AddStrip(m_buffers[worker], strip, c + first * stride + firstRow, stride, part);
  });
}

void DenseProduct::AddStrip(Buffers& buffers, const Operands& product, double* c,
                            std::ptrdiff_t stride, Part part) const {
  if (product.rows <= 0) return;
  double edge[kTileRows * kTileColumns];  // a tile that reaches over the edge of C
  for (std::ptrdiff_t j0 = 0; j0 < product.columns; j0 += kColumns) {
    const std::ptrdiff_t columns = std::min(kColumns, product.columns - j0);
    for (std::ptrdiff_t p = 0; p < product.depth; p += kDepth) {
      const std::ptrdiff_t depth = std::min(kDepth, product.depth - p);
      const double* const packedB = PackB(product, j0, columns, p, depth, buffers.b);
      const std::ptrdiff_t firstRow = part == Part::kLower ? j0 / kTileRows * kTileRows : 0;
      for (std::ptrdiff_t i0 = firstRow; i0 < product.rows; i0 += kRows) {
        const std::ptrdiff_t rows = std::min(kRows, product.rows - i0);
        const double* const packedA = PackA(product, i0, rows, p, depth, buffers.a);
        for (std::ptrdiff_t j = 0; j < columns; j += kTileColumns) {
          const double* b = packedB + j * depth;
          for (std::ptrdiff_t i = 0; i < rows; i += kTileRows) {
            if (part == Part::kLower && i0 + i + kTileRows <= j0 + j) continue;  // all above
            const double* a = packedA + i * depth;
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
