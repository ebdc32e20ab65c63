#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <vector>

#include "core/finding.h"
#include "core/normal_equations.h"
#include "core/outlier_test.h"

namespace brenu {

// An adjusted network as data snooping sees it: observations by number.
class SnoopedNetwork {
 public:
  struct Observation {
    bool isInUse;     // takes part
    bool isLeftOut;   // never can: an end of it is not determined
    double residual;  // adjusted minus observed, also of one that does not take part
    double variance;  // a priori, in the square of that unit
  };

  SnoopedNetwork() = default;
  SnoopedNetwork(const SnoopedNetwork&) = delete;
  SnoopedNetwork& operator=(const SnoopedNetwork&) = delete;
  virtual ~SnoopedNetwork() = default;

  virtual std::size_t Count() const = 0;
  virtual Observation At(std::size_t number) const = 0;
  // The coefficients of its equation, at most kMostTerms.
  static constexpr std::size_t kMostTerms = 5;
  virtual std::size_t Terms(std::size_t number, std::span<Term, kMostTerms> terms) const = 0;
  virtual void SetInUse(std::size_t number, bool isInUse) = 0;
  // Adjusts what takes part.
  virtual Outcome Converge() = 0;
  // Of the last adjustment, with no cofactor asked for since.
  virtual NormalEquations& Normal() = 0;
  // A control point with a test value (by a-priori errors) that exceeds `largest`, as a finding;
  // none otherwise.
  virtual Findings ControlMisfit(double largest) const = 0;
};

// An observation that data snooping took out, in the order in which it did.
struct SnoopedOut {
  std::size_t number;
  double testValue;  // standardised residual as the test has it
  // Others whose test values are correlated with it by more than 0.98: the error may be theirs.
  std::vector<std::size_t> alternatives;
};

struct SnoopingResult {
  Outcome outcome;
  std::vector<SnoopedOut> takenOut;
  std::size_t untested = 0;  // in use at the end with a redundancy number of 0.05 or less
};

// Data snooping by the rules of textbooks (W. Baarda, A testing procedure for use in geodetic
// networks) on a network that has converged; what is out already is tried, too.
//
// As long as the largest standardised residual |v| / (sigma0 sqrt(q_vv)) of observations whose
// redundancy number exceeds 0.05 exceeds the critical value, an observation is taken out: that one,
// or another with a smaller redundancy number that explains the misfit even better.  The effect of
// that on all residuals and cofactors comes from one solution; after some rounds everything is
// adjusted anew.  At the end each observation taken out is tried again.  A control point that
// explains the misfit better than any observation ends it, with a warning.
SnoopingResult Snoop(SnoopedNetwork& network, const OutlierTest& test,
                     const std::function<void(int)>& announceRound);

}  // namespace brenu
