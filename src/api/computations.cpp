#include "api/computations.h"

#include "api/network_build.h"

namespace brenu {

namespace {

// Levelling first, the plane only when the levelling succeeded.
template <typename Level, typename Plane>
bool RunByType(AdjustmentContext& context, Level level, Plane plane) {
  BuildNetworks(context);
  if (context.netType == kNoControl) return false;
  if (HasLevelling(context.netType) && !level(context.levelNet)) return false;
  return !HasPlane(context.netType) || plane(context.planeNet);
}

}  // namespace

bool RunApproxCalc(AdjustmentContext& context) {
  return RunByType(
      context, [](LevelNet& net) { return net.CalcApproxHeight(); },
      [](PlaneNet& net) { return net.CalcApproxCoordinates(); });
}

bool RunLeastSquareAdj(AdjustmentContext& context) {
  if (context.param.format == kFormatDistancesOnly) return context.planeNet.AdjustDistances();
  return RunByType(
      context, [](LevelNet& net) { return net.LevelAdjust(); },
      [](PlaneNet& net) { return net.Adjust(); });
}

}  // namespace brenu
