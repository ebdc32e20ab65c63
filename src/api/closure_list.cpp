#include "api/closure_list.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "api/computations.h"

namespace brenu {

namespace {

// False when the network has neither lines nor loops.
bool AddLevellingClosures(AdjustmentContext& context) {
  std::vector<CloseError> records;
  const bool lines = context.levelNet.CalcLineCloseError(records);
  const bool loops = context.levelNet.CalcLoopCloseError(records);
  for (CloseError& record : records) {
    record.angleWithinLimit = !(std::fabs(record.angleMisclosure) > std::fabs(record.angleLimit));
    record.heightWithinLimit =
        !(std::fabs(record.heightMisclosure) > std::fabs(record.heightLimit));
    record.mark = record.angleWithinLimit && record.heightWithinLimit;
  }
  context.closeErrors = std::move(records);
  return lines || loops;
}

// False when the network has no traverses.
bool AddTraverseClosures(AdjustmentContext& context) {
  std::vector<CloseError> records;
  const bool found = context.planeNet.CalcTraverseCloseErrors(records);
  for (CloseError& record : records) {
    record.angleWithinLimit = std::fabs(record.angleMisclosure) <= std::fabs(record.angleLimit);
    record.mark = record.angleWithinLimit;
  }
  context.closeErrors.insert(context.closeErrors.end(), records.begin(), records.end());
  return found;
}

}  // namespace

bool CalculateClosures(AdjustmentContext& context) {
  if (!RunApproxCalc(context)) return false;
  context.closeErrors.clear();
  const bool levelling = !HasLevelling(context.netType) || AddLevellingClosures(context);
  // A levelling network without lines and loops is no failure.
  if (!HasPlane(context.netType)) return true;
  return AddTraverseClosures(context) || levelling;
}

bool AllClosuresPass(const AdjustmentContext& context) {
  return std::all_of(context.closeErrors.begin(), context.closeErrors.end(),
                     [](const CloseError& record) { return record.mark; });
}

}  // namespace brenu
