#include "core/packed_matrix.h"

#include <vector>

#include "core/restrict.h"

namespace brenu {

namespace {

// to[j] = from[j] + g * h[j]
void AddScaled(double* BRENU_RESTRICT to, const double* BRENU_RESTRICT from,
               const double* BRENU_RESTRICT h, double g, std::size_t count) {
  for (std::size_t j = 0; j < count; ++j) to[j] = from[j] + g * h[j];
}

}  // namespace

bool InvertPacked(std::span<double> matrix, std::size_t order) {
  std::vector<double> h(order);
  double* const n = matrix.data();
  // Each round eliminates the first unknown and moves the rest one place up and left; columns that
  // have come round (i > boundary) already belong to the inverse and change sign.
  for (std::size_t boundary = order; boundary-- > 0;) {
    const double pivot = n[0];
    if (1.0 + pivot == 1.0) return false;
    for (std::size_t i = 1; i < order; ++i) {
      const double* const column = n + PackedIndex(0, i);
      const double g = column[0];
      h[i] = i > boundary ? g / pivot : -g / pivot;
      AddScaled(n + PackedIndex(0, i - 1), column + 1, h.data() + 1, g, i);
    }
    double* const last = n + PackedIndex(0, order - 1);
    for (std::size_t j = 1; j < order; ++j) last[j - 1] = h[j];
    last[order - 1] = 1.0 / pivot;
  }
  return true;
}

}  // namespace brenu
