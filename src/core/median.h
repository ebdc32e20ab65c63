#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>
#include <vector>

namespace brenu {

// The value in the middle, the upper one of two; what is no number does not count.  Not a number
// without any.
inline double Median(std::vector<double> values) {
  std::erase_if(values, [](double value) { return std::isnan(value); });
  if (values.empty()) return std::numeric_limits<double>::quiet_NaN();
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

// The spread of misfits, given by their amounts in units of their standard errors, whatever a part
// of them does; at least 1.
inline double RobustScale(std::vector<double> ratios) {
  constexpr double kOfNormal = 0.6745;  // the median of the amounts of a normal distribution
  return std::fmax(1.0, Median(std::move(ratios)) / kOfNormal);
}

}  // namespace brenu
