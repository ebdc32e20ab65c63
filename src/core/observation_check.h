#pragma once

#include <cmath>

namespace brenu {

// How an adjustment checks one of its observations; lengths in metres, angles in arc-seconds.
// Standard errors are a priori.
struct ObservationCheck {
  bool isInUse;          // takes part; otherwise it is compared with what the others give
  double residual;       // adjusted minus observed
  double sigma;          // of the observation
  double sigmaAdjusted;  // of its adjusted value
  double effect;  // metres by which an error of 1 in it moves an end point; 0 when not in use

  // The redundancy number: the part of an error in the observation that its residual shows.  Not a
  // number for what does not take part.
  double Redundancy() const {
    if (!isInUse) return std::nan("");
    const double r = 1.0 - sigmaAdjusted * sigmaAdjusted / (sigma * sigma);
    return r < 0.0 ? 0.0 : r;
  }
  // Of the residual.
  double SigmaResidual() const {
    return isInUse ? sigma * std::sqrt(Redundancy()) : std::hypot(sigma, sigmaAdjusted);
  }
};

}  // namespace brenu
