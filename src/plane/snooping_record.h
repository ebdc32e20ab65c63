#pragma once

#include <vector>

#include "plane/plane_obs_id.h"

namespace brenu {

// An observation that data snooping took out, in the order in which it did.
struct TakenOut {
  PlaneObsId id;
  double testValue;  // when it was taken out
  double error;      // observed minus adjusted without it: arc-seconds, or metres
  // Others whose tests cannot be told apart from this one's: the error may be one of theirs.
  std::vector<PlaneObsId> alternatives;
};

// How well a control point fits the observations: the correction to its coordinates at which they
// would agree best, and test values of each coordinate alone.
struct ControlFit {
  PointNo point;
  double dx, dy;        // metres, both free
  double ownDx, ownDy;  // metres, each with the other held
  double wx, wy;        // own correction by its standard error
};

}  // namespace brenu
