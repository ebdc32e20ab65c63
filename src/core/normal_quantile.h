#pragma once

namespace brenu {

// z for which the standard normal distribution function is p, by Toda's approximation (absolute
// error below 1e-6 in the range used here); -5 and 5 beyond 3e-7 from either end.
double NormalQuantile(double p);

}  // namespace brenu
