#include "direction_check.h"

#include <cmath>

#include "job/adjustment_context.h"
#include "core/angles.h"
#include "core/records.h"
#include "format.h"
#include "network_view.h"

namespace brenu::tool {

namespace {

// Orientations of one station agree within this, unless the coordinates are still too poor to tell.
constexpr double kAgreement = kPi / 180.0;

// The azimuth of the circle's zero that a direction gives, as the adjustment reduces it.
std::optional<double> OrientationOf(const PlaneNet& net, const Observation& o) {
  if (!HasDirection(o.data)) return std::nullopt;
  const auto from = net.ResultOfPoint(o.stationName);
  const auto to = net.ResultOfPoint(o.target);
  if (!from || !to) return std::nullopt;
  return PositiveAngle(CalcAzimuth(from->x, from->y, to->x, to->y) - DmsToRad(o.data.direction));
}

}  // namespace

std::optional<std::string> FindTurnedDirection(AdjustmentContext& context) {
  if (!HasPlane(context.netType) || IsDistancesOnly(context)) return std::nullopt;
  std::int32_t station = -1;
  double first = 0.0;  // the orientation from the station's first direction
  for (const Observation& o : ObservationsOf(context)) {
    const std::optional<double> orientation = OrientationOf(context.planeNet, o);
    if (!orientation) continue;
    if (o.station != station) {
      station = o.station;
      first = *orientation;
    }
    if (std::fabs(std::fabs(*orientation - first) - kTwoPi) < kAgreement) {
      return "the zero of the directions at " + Printable(o.stationName) +
             " lies too close to north, which puts the direction " + Line(o.stationName, o.target) +
             " a full circle off; add the same angle, 90 degrees say, to all its directions";
    }
  }
  return std::nullopt;
}

}  // namespace brenu::tool
