#include "core/sparse/dense_factor.h"

#include <algorithm>

#include "core/restrict.h"

namespace brenu {

namespace {

constexpr std::ptrdiff_t kNarrow = 16;  // up to this many columns are treated one by one

// to[i] -= sum over q of from[q stride + i] c[q]; four columns at a time, to read `to` less often.
void SubtractColumns(double* BRENU_RESTRICT to, const double* BRENU_RESTRICT from,
                     std::ptrdiff_t stride, std::ptrdiff_t rows, const double* c,
                     std::ptrdiff_t count) {
  for (; count >= 4; count -= 4, from += 4 * stride, c += 4) {
    const double* from1 = from + stride;
    const double* from2 = from1 + stride;
    const double* from3 = from2 + stride;
    for (std::ptrdiff_t i = 0; i < rows; ++i) {
      to[i] -= from[i] * c[0] + from1[i] * c[1] + from2[i] * c[2] + from3[i] * c[3];
    }
  }
  for (; count > 0; --count, from += stride, ++c) {
    for (std::ptrdiff_t i = 0; i < rows; ++i) to[i] -= from[i] * c[0];
  }
}

// Column j of L D is what remains of it after the columns q before: a_j - sum L_q (d_q L_jq).
bool FactorNarrowPanel(double* panel, std::ptrdiff_t stride, std::ptrdiff_t height,
                       std::ptrdiff_t width, PivotCheck* check, std::ptrdiff_t place) {
  double c[kNarrow];
  for (std::ptrdiff_t j = 0; j < width; ++j) {
    for (std::ptrdiff_t q = 0; q < j; ++q) c[q] = panel[q * stride + q] * panel[q * stride + j];
    double* column = panel + j * stride;
    SubtractColumns(column + j, panel + j, stride, height - j, c, j);
    if (check != nullptr) {
      column[j] = check->Checked(place + j, column[j]);
    } else if (1.0 + column[j] == 1.0) {
      return false;
    }
    const double reciprocal = 1.0 / column[j];
    for (std::ptrdiff_t i = j + 1; i < height; ++i) column[i] *= reciprocal;
  }
  return true;
}

// About half, a multiple of kNarrow.
std::ptrdiff_t FirstPart(std::ptrdiff_t width) {
  return std::max(kNarrow, width / 2 / kNarrow * kNarrow);
}

}  // namespace

bool FactorPanel(double* panel, std::ptrdiff_t stride, std::ptrdiff_t height, std::ptrdiff_t width,
                 DenseProduct& product, PivotCheck* check, std::ptrdiff_t place) {
  if (width <= kNarrow) return FactorNarrowPanel(panel, stride, height, width, check, place);
  const std::ptrdiff_t left = FirstPart(width);
  const std::ptrdiff_t right = width - left;
  if (!FactorPanel(panel, stride, height, left, product, check, place)) return false;
  // The right part loses L D L^T of the left one.
  const double* below = panel + left;
  std::vector<double> d(static_cast<std::size_t>(left));
  for (std::ptrdiff_t j = 0; j < left; ++j)
    d[static_cast<std::size_t>(j)] = panel[j * (stride + 1)];
  double* rest = panel + left * (stride + 1);
  product.Add({{below, 1, stride}, {below, 1, stride}, d.data(), -1.0, height - left, right, left},
              rest, stride, DenseProduct::Part::kLower);
  return FactorPanel(rest, stride, height - left, right, product, check, place + left);
}

namespace {

// Columns of the inverse one by one: x_ij = -(l_ij + sum over j < q < i of l_iq x_qj).
void InvertNarrow(MatrixView lower, std::ptrdiff_t size, double* inverse, std::ptrdiff_t stride) {
  const auto l = [&](std::ptrdiff_t i, std::ptrdiff_t q) {
    return lower.data[i * lower.rowStride + q * lower.columnStride];
  };
  for (std::ptrdiff_t j = 0; j < size; ++j) {
    double* x = inverse + j * stride;
    x[j] = 1.0;
    for (std::ptrdiff_t q = j; q < size; ++q) {
      for (std::ptrdiff_t i = q + 1; i < size; ++i) x[i] -= l(i, q) * x[q];
    }
  }
}

void Invert(MatrixView lower, std::ptrdiff_t size, double* inverse, std::ptrdiff_t stride,
            double* work, DenseProduct& product) {
  if (size <= kNarrow) {
    InvertNarrow(lower, size, inverse, stride);
    return;
  }
  const std::ptrdiff_t n1 = FirstPart(size);
  const std::ptrdiff_t n2 = size - n1;
  double* x22 = inverse + n1 * (stride + 1);
  const double* l21 = lower.data + n1 * lower.rowStride;
  const double* l22 = l21 + n1 * lower.columnStride;
  Invert(lower, n1, inverse, stride, work, product);
  Invert({l22, lower.rowStride, lower.columnStride}, n2, x22, stride, work, product);
  // X21 = -X22 (L21 X11)
  std::fill_n(work, n1 * n2, 0.0);
  product.Add(
      {{l21, lower.rowStride, lower.columnStride}, {inverse, stride, 1}, nullptr, 1.0, n2, n1, n1},
      work, n2, DenseProduct::Part::kWhole);
  product.Add({{x22, 1, stride}, {work, n2, 1}, nullptr, -1.0, n2, n1, n2}, inverse + n1, stride,
              DenseProduct::Part::kWhole);
}

}  // namespace

void InvertUnitLower(MatrixView lower, std::ptrdiff_t size, double* inverse, double* work,
                     DenseProduct& product) {
  Invert(lower, size, inverse, size, work, product);
}

}  // namespace brenu
