#include "api/computations.h"

#include "api/network_build.h"

namespace brenu {

namespace {

// Levelling first, the plane only when the levelling succeeded.
template <typename Level, typename Plane>
bool RunByType(AdjustmentContext& context, Level level, Plane plane) {
  if (context.netType == kNoControl) return false;
  if (HasLevelling(context.netType) && !level(context.levelNet)) return false;
  return !HasPlane(context.netType) || plane(context.planeNet);
}

}  // namespace

bool RunApproxCalc(AdjustmentContext& context) {
  BuildNetworks(context);
  return RunByType(
      context, [](LevelNet& net) { return net.CalcApproxHeight(); },
      [](PlaneNet& net) { return net.CalcApproxCoordinates(); });
}

bool RunLeastSquareAdj(AdjustmentContext& context) {
  if (context.param.format == kFormatDistancesOnly) return context.planeNet.AdjustDistances();
  BuildNetworks(context);
  return RunByType(
      context, [](LevelNet& net) { return net.LevelAdjust(); },
      [](PlaneNet& net) { return net.Adjust(); });
}

bool RunNonDirectionAdj(AdjustmentContext& context) {
  BuildNetworks(context);
  return context.param.format == kFormatNoOrientation && HasPlane(context.netType) &&
         context.planeNet.AdjustWithoutOrientation();
}

bool RunDataSnooping(AdjustmentContext& context, std::uint32_t kind, double levelAlpha,
                     double planeAlpha) {
  BuildNetworks(context);
  if (kind != static_cast<std::uint32_t>(context.netType)) return false;
  return RunByType(
      context, [=](LevelNet& net) { return net.LevelDataSnooping(levelAlpha); },
      [=](PlaneNet& net) { return net.DataSnooping(planeAlpha); });
}

}  // namespace brenu
