#include "job/closure_list.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "job/computations.h"
#include "level/level_closures.h"
#include "plane/plane_closures.h"

namespace brenu {

namespace {

// False when the network has neither lines nor loops.
bool AddLevellingClosures(AdjustmentContext& context) {
  std::vector<CloseError> records;
  const LevelAdjustment& level = context.level.results;
  const bool lines = CalcLineCloseError(level.Net(), level.Heights(), records);
  const bool loops = CalcLoopCloseError(level.Net(), records);
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
  const PlaneAdjustment& plane = context.plane.results;
  context.plane.traverses =
      CalcTraverseCloseErrors(plane.Net(), plane.WorkingCoordinates(), records);
  for (CloseError& record : records) {
    record.angleWithinLimit = std::fabs(record.angleMisclosure) <= std::fabs(record.angleLimit);
    record.mark = record.angleWithinLimit;
  }
  context.closeErrors.insert(context.closeErrors.end(), records.begin(), records.end());
  return !records.empty();
}

// From networks with their approximate values.
Outcome ListClosures(AdjustmentContext& context, Outcome outcome) {
  if (!outcome.ok) return outcome;
  context.closeErrors.clear();
  const bool levelling = !HasLevelling(context.netType) || AddLevellingClosures(context);
  if (HasPlane(context.netType)) {
    // A levelling network without lines and loops is no failure.
    outcome.ok = AddTraverseClosures(context) || levelling;
  }
  if (context.closeErrors.empty()) {
    outcome.findings.push_back(outcome.ok ? Warning(BRENU_NO_CLOSURES) : Error(BRENU_NO_CLOSURES));
  }
  return outcome;
}

}  // namespace

Outcome CalculateClosures(AdjustmentContext& context) {
  return ListClosures(context, RunApproxCalc(context));
}

Outcome CalculateTextbookClosures(AdjustmentContext& context) {
  return ListClosures(context, RunTextbookApprox(context));
}

bool AllClosuresPass(const AdjustmentContext& context) {
  return std::all_of(context.closeErrors.begin(), context.closeErrors.end(),
                     [](const CloseError& record) { return record.mark; });
}

}  // namespace brenu
