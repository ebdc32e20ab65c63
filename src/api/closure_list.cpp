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

}  // namespace

bool CalculateClosures(AdjustmentContext& context) {
  if (!RunApproxCalc(context)) return false;
  context.closeErrors.clear();
  bool levelling = true;
  if (HasLevelling(context.netType)) levelling = AddLevellingClosures(context);
  // A levelling network without lines and loops is no failure.
  if (context.netType == kLevelling) return true;
  return levelling;
}

bool AllClosuresPass(const AdjustmentContext& context) {
  return std::all_of(context.closeErrors.begin(), context.closeErrors.end(),
                     [](const CloseError& record) { return record.mark; });
}

}  // namespace brenu
