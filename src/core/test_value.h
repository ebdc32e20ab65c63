#pragma once

namespace brenu {

// Whether a test value of data snooping exceeds the largest one before it.  Of equal ones the first
// stays, and they often are equal (all lines of a loop that nothing else checks): what rounding
// puts between them does not count.
inline bool IsLargerTestValue(double value, double largest) {
  constexpr double kRounding = 1e-6;  // of the value
  return value > largest * (1.0 + kRounding);
}

}  // namespace brenu
