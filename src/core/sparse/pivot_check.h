#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace brenu {

// Watches the pivots of a factorisation.  Where hardly anything of a diagonal element is left, or
// less than nothing, no equation determines the unknown any more: its place is noted, and an
// enormous pivot holds it where it is.
class PivotCheck {
 public:
  // `diagonal` is that of the matrix before the factorisation, by place in the elimination order.
  explicit PivotCheck(std::span<const double> diagonal) : m_diagonal(diagonal) {}

  // The pivot to go on with.
  double Checked(std::ptrdiff_t place, double pivot) {
    constexpr double kLeast = 1e-12;  // of the diagonal element: above what rounding leaves
    constexpr double kHolding = 1e40;
    if (pivot > kLeast * m_diagonal[static_cast<std::size_t>(place)]) return pivot;
    m_weak.push_back(static_cast<std::int32_t>(place));
    return kHolding;
  }

  // In the order in which they were found.
  const std::vector<std::int32_t>& WeakPlaces() const { return m_weak; }

 private:
  std::span<const double> m_diagonal;
  std::vector<std::int32_t> m_weak;
};

}  // namespace brenu
