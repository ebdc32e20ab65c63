// Quantiles of the distributions that tests of adjustments use (M. Abramowitz, I. A. Stegun,
// Handbook of mathematical functions, chapters 6 and 26).  Relative accuracy about 1e-10; not a
// number outside 0 < p < 1 or without degrees of freedom.
#pragma once

namespace brenu {

// z of the standard normal distribution, exactly; NormalQuantile is the approximation of the
// classic rules.
double StandardNormalQuantile(double p);
double ChiSquareQuantile(double p, double freedom);
double StudentQuantile(double p, double freedom);
double FQuantile(double p, double freedom1, double freedom2);
// Of a residual standardised with the a-posteriori error of unit weight (A. J. Pope, The statistics
// of residuals and the detection of outliers): tau = t sqrt(r) / sqrt(r - 1 + t^2), t Student's
// with r - 1 degrees of freedom.
double TauQuantile(double p, double redundancy);

}  // namespace brenu
