#include "plane/unoriented_traverses.h"

#include <utility>
#include <vector>

#include "plane/traverse_finder.h"

namespace brenu {

namespace {

Finding ExplainUnreached(const PlaneAdjustment& work) {
  const NetworkLayout& net = work.Net().layout;
  Finding unreached = Error(BRENU_POINTS_OFF_TRAVERSES);
  for (const PointNo i : net.Points()) {
    const Slot slot = net.SlotOf(i);
    if (HasCoordinates(work.WorkingCoordinates()[slot])) continue;
    unreached.names.push_back(net.Names().NameAt(slot));
  }
  return unreached;
}

}  // namespace

Outcome AdjustWithoutOrientation(PlaneAdjustment& work, TraverseTable& table) {
  const NetworkLayout& net = work.Net().layout;
  const TraverseFinder finder(net, work.WorkingCoordinates());
  std::vector<Traverse> traverses;
  for (MeasuredTraverse& measured : finder.ConnectingTraverses()) {
    measured.start.reset();
    measured.end.reset();
    traverses.push_back(ComputeTraverse(measured));
    for (const TraversePoint& point : traverses.back().points) {
      const Slot slot = net.Names().Find(point.name);
      if (HasCoordinates(work.WorkingCoordinates()[slot])) continue;  // known, or on one before
      work.SetCoordinates(slot, {point.x, point.y});
    }
  }
  const bool found = !traverses.empty();
  const bool complete = found && finder.AllSidesReached();
  table = TraverseTable(std::move(traverses));
  if (!found) return Error(BRENU_NO_TRAVERSE);
  if (complete) work.KeepApproximateCoordinates();
  Outcome outcome;
  outcome.ok = complete;
  // Points without sides are left out without failing.
  if (Finding unreached = ExplainUnreached(work); !unreached.names.empty()) {
    outcome.findings.push_back(std::move(unreached));
  }
  return outcome;
}

}  // namespace brenu
