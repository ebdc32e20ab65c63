#pragma once

namespace brenu {

// What a pass gives back in the place of its largest correction when it cannot be solved.
inline constexpr double kPassFailed = -1.0;

// Gauss-Newton passes until the largest coordinate correction (metres, the result of a pass) is
// small enough.  Reaching the pass limit is no failure: the last coordinates stand.
template <typename Pass>
bool IterateUntilSettled(Pass pass) {
  constexpr int kMostPasses = 99;
  constexpr double kSettled = 0.01;
  for (int i = 0; i < kMostPasses; ++i) {
    const double largest = pass();
    if (largest == kPassFailed) return false;
    if (!(largest > kSettled)) break;
  }
  return true;
}

}  // namespace brenu
