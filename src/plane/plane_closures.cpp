#include "plane/plane_closures.h"

#include <cmath>
#include <string>
#include <utility>

#include "core/closure_record.h"
#include "plane/traverse_finder.h"

namespace brenu {

namespace {

std::string RouteText(const Traverse& traverse) {
  std::string text;
  for (const TraversePoint& point : traverse.points) {
    if (!text.empty()) text += kRouteJoint;
    text += point.name;
    if (text.size() >= sizeof(CloseError::route)) break;
  }
  return text;
}

CloseError MakeRecord(const Traverse& traverse, const AdjParam& param) {
  CloseError record{};
  SetRoute(record, RouteText(traverse));
  const double rootOfAngles = std::sqrt(traverse.angleCount);
  record.angleMisclosure = traverse.angleMisclosure;
  record.angleLimit = param.Lvl2Limit * rootOfAngles;
  record.lengthMisclosure = traverse.lengthMisclosure;
  record.routeLength = traverse.length;
  record.relativePrecision = traverse.relativePrecision;
  record.lengthLimit = traverse.length / RelativeLimitOfGrade(param.Lvl2);
  const double tolerance = std::fabs(param.Limit * param.MO * rootOfAngles);
  record.heightWithinLimit = std::fabs(record.angleMisclosure) <= tolerance &&
                             record.lengthMisclosure <= record.lengthLimit;
  return record;
}

}  // namespace

TraverseTable CalcTraverseCloseErrors(const PlaneNet& net, const Coordinates& coords,
                                      std::vector<CloseError>& records) {
  const TraverseFinder finder(net.layout, coords);
  std::vector<Traverse> traverses;
  for (const MeasuredTraverse& measured : finder.ConnectingTraverses()) {
    // Without orientation at either end there is nothing to check.
    if (measured.start || measured.end) traverses.push_back(ComputeTraverse(measured));
  }
  for (Traverse& closed : finder.ClosedTraverses()) traverses.push_back(std::move(closed));
  for (const Traverse& traverse : traverses) records.push_back(MakeRecord(traverse, net.param));
  return TraverseTable(std::move(traverses));
}

}  // namespace brenu
