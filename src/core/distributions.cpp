#include "core/distributions.h"

#include <cmath>
#include <limits>

namespace brenu {

namespace {

constexpr double kTiny = 1e-300;
constexpr double kPrecision = 1e-15;
constexpr int kMostTerms = 10000;

// Lanczos' approximation with the coefficients of P. Godfrey.
double LogGamma(double x) {
  constexpr double kCoefficients[] = {
      0.99999999999980993,  676.5203681218851,     -1259.1392167224028,
      771.32342877765313,   -176.61502916214059,   12.507343278686905,
      -0.13857109526572012, 9.9843695780195716e-6, 1.5056327351493116e-7};
  constexpr double kHalfLogTwoPi = 0.91893853320467274;
  double sum = kCoefficients[0];
  for (int i = 1; i < 9; ++i) sum += kCoefficients[i] / (x - 1.0 + i);
  const double t = x + 6.5;
  return kHalfLogTwoPi + (x - 0.5) * std::log(t) - t + std::log(sum);
}

// The regularised incomplete gamma function P(a, x) (6.5.29 and 6.5.31).
double LowerGamma(double a, double x) {
  if (x <= 0.0) return 0.0;
  const double front = std::exp(a * std::log(x) - x - LogGamma(a));
  if (x < a + 1.0) {
    double term = 1.0 / a;
    double sum = term;
    for (int n = 1; n < kMostTerms && term > sum * kPrecision; ++n) {
      term *= x / (a + n);
      sum += term;
    }
    return front * sum;
  }
  double b = x + 1.0 - a;
  double c = 1.0 / kTiny;
  double d = 1.0 / b;
  double h = d;
  for (int n = 1; n < kMostTerms; ++n) {
    const double an = -n * (n - a);
    b += 2.0;
    d = 1.0 / (an * d + b);
    c = b + an / c;
    const double factor = d * c;
    h *= factor;
    if (std::fabs(factor - 1.0) < kPrecision) break;
  }
  return 1.0 - front * h;
}

// The continued fraction of the incomplete beta function (26.5.8), by Lentz's method.
double BetaFraction(double a, double b, double x) {
  double c = 1.0;
  double d = 1.0 / (1.0 - (a + b) * x / (a + 1.0));
  double h = d;
  for (int m = 1; m < kMostTerms; ++m) {
    const double even = m * (b - m) * x / ((a + 2 * m - 1) * (a + 2 * m));
    d = 1.0 / (1.0 + even * d);
    c = 1.0 + even / c;
    h *= d * c;
    const double odd = -(a + m) * (a + b + m) * x / ((a + 2 * m) * (a + 2 * m + 1));
    d = 1.0 / (1.0 + odd * d);
    c = 1.0 + odd / c;
    h *= d * c;
    if (std::fabs(d * c - 1.0) < kPrecision) break;
  }
  return h;
}

// The regularised incomplete beta function I_x(a, b).
double LowerBeta(double a, double b, double x) {
  if (x <= 0.0) return 0.0;
  if (x >= 1.0) return 1.0;
  const double front =
      std::exp(LogGamma(a + b) - LogGamma(a) - LogGamma(b) + a * std::log(x) + b * std::log1p(-x));
  if (x < (a + 1.0) / (a + b + 2.0)) return front * BetaFraction(a, b, x) / a;
  return 1.0 - front * BetaFraction(b, a, 1.0 - x) / b;
}

// The place where an increasing function on (0, infinity) reaches p.
template <typename Function>
double Inverted(Function function, double p) {
  double high = 1.0;
  while (function(high) < p && high < 1e30) high *= 2.0;
  double low = high / 2.0;
  while (function(low) > p && low > 1e-30) low /= 2.0;
  for (int i = 0; i < 200 && high - low > kPrecision * high; ++i) {
    const double middle = (low + high) / 2.0;
    (function(middle) < p ? low : high) = middle;
  }
  return (low + high) / 2.0;
}

bool IsProbability(double p) { return p > 0.0 && p < 1.0; }
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

}  // namespace

double StandardNormalQuantile(double p) {
  if (!IsProbability(p)) return kNan;
  if (p == 0.5) return 0.0;
  // The square of a normal variable has the chi-square distribution of one degree of freedom.
  const double amount = std::sqrt(ChiSquareQuantile(std::fabs(2.0 * p - 1.0), 1.0));
  return p < 0.5 ? -amount : amount;
}

double ChiSquareQuantile(double p, double freedom) {
  if (!IsProbability(p) || !(freedom > 0.0)) return kNan;
  return Inverted([=](double x) { return LowerGamma(freedom / 2.0, x / 2.0); }, p);
}

double FQuantile(double p, double freedom1, double freedom2) {
  if (!IsProbability(p) || !(freedom1 > 0.0) || !(freedom2 > 0.0)) return kNan;
  return Inverted(
      [=](double f) {
        return LowerBeta(freedom1 / 2.0, freedom2 / 2.0, freedom1 * f / (freedom1 * f + freedom2));
      },
      p);
}

double StudentQuantile(double p, double freedom) {
  if (!IsProbability(p) || !(freedom > 0.0)) return kNan;
  if (p == 0.5) return 0.0;
  const double amount = std::sqrt(FQuantile(std::fabs(2.0 * p - 1.0), 1.0, freedom));
  return p < 0.5 ? -amount : amount;
}

double TauQuantile(double p, double redundancy) {
  const double t = StudentQuantile(p, redundancy - 1.0);
  return t * std::sqrt(redundancy) / std::sqrt(redundancy - 1.0 + t * t);
}

}  // namespace brenu
