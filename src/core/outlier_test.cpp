#include "core/outlier_test.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/distributions.h"

namespace brenu {

double OutlierTest::Critical(double redundancy) const {
  if (critical > 0.0) return critical;
  constexpr double kLeastAlpha = 1e-12;  // a probability still differs from 1 there
  const double p = 1.0 - std::max(alpha, kLeastAlpha) * 0.5;
  return kind == Kind::kPope ? TauQuantile(p, redundancy) : StandardNormalQuantile(p);
}

// As part of the adjustment it would have the same verdict: tau = t sqrt(r) / sqrt(r - 1 + t^2)
// with the redundancy r that it would have then, solved for t.
double OutlierTest::CriticalOfPrediction(double redundancy) const {
  const double r = redundancy + 1.0;
  const double limit = Critical(r);
  if (kind == Kind::kBaarda) return limit;
  // No tau is greater than sqrt(r).
  if (limit * limit >= r) return std::numeric_limits<double>::infinity();
  return limit * std::sqrt((r - 1.0) / (r - limit * limit));
}

}  // namespace brenu
