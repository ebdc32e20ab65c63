#pragma once

#include <cstdint>

namespace brenu {

// Which residuals data snooping takes for those of gross errors, two-sided.
struct OutlierTest {
  enum class Kind : std::uint8_t {
    kBaarda,  // w = v / (sigma0 sqrt(q_vv)) with the a-priori sigma0
    kPope     // tau: with the a-posteriori one
  };

  // Not explicit: a level of significance is a test by Baarda.
  OutlierTest(double significance) : alpha(significance) {}  // NOLINT(*explicit*)

  // What a test value has to exceed.  Not a number when that redundancy allows no test.
  double Critical(double redundancy) const;
  // The same for an observation that takes no part, tested by the difference to its prediction with
  // the sigma0 of `redundancy` others.
  double CriticalOfPrediction(double redundancy) const;

  double alpha;  // level of significance
  Kind kind = Kind::kBaarda;
  double critical = 0.0;  // if greater than 0, in the place of the value that belongs to alpha
};

}  // namespace brenu
