#pragma once

#include "core/finding.h"

namespace brenu {

// What a pass gives back in the place of its largest correction when it cannot be solved.
inline constexpr double kPassFailed = -1.0;

// Gauss-Newton passes, each forming the equations and then solving them, until the largest
// coordinate correction (metres, what solving gives) is small enough.  Reaching the pass limit is
// no failure: the last coordinates stand.
template <typename Form, typename Solve>
Outcome IterateUntilSettled(Form form, Solve solve) {
  constexpr int kMostPasses = 99;
  constexpr double kSettled = 0.01;
  for (int i = 0; i < kMostPasses; ++i) {
    if (Outcome formed = form(); !formed.ok) return formed;
    const double largest = solve();
    if (largest == kPassFailed) return Error(BRENU_PLANE_SINGULAR);
    if (!(largest > kSettled)) break;
  }
  return {};
}

}  // namespace brenu
