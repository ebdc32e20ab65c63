#include "computation.h"

#include "diagnosis.h"
#include "direction_check.h"
#include "network_view.h"
#include "placing.h"

namespace brenu::tool {

namespace {

std::optional<Fault> Failed(const std::optional<std::string>& sentence) {
  if (!sentence) return std::nullopt;
  return Fault{kComputationFailed, *sentence};
}

std::optional<Fault> Approximate(AdjustmentContext& context) {
  if (!ApproxCalc(&context)) return Failed(ExplainNoApproximation(context));
  return Failed(FindTurnedDirection(context));
}

std::optional<Fault> CheckResult(AdjustmentContext& context) {
  if (auto sentence = FindSenselessResult(context)) return Failed(sentence);
  return Failed(FindTurnedDirection(context));
}

}  // namespace

std::optional<Fault> AdjustNetwork(AdjustmentContext& context) {
  if (auto fault = Approximate(context)) return fault;
  if (!LeastSquareAdj(&context)) return Failed(ExplainNoSolution(context));
  return CheckResult(context);
}

std::optional<Fault> SnoopNetwork(AdjustmentContext& context, double alpha) {
  if (auto fault = Approximate(context)) return fault;
  const auto kind = static_cast<std::uint32_t>(GetNetType(&context));
  if (DataSnooping(&context, kind, alpha, alpha) == 0) return Failed(ExplainNoSnooping(context));
  if (auto sentence = FindUndeterminedPlane(context)) return Failed(sentence);
  return CheckResult(context);
}

std::optional<Fault> ComputeTraverses(AdjustmentContext& context) {
  const bool computed = NonDirectionAdj(&context);
  return Failed(FindTraverseFault(context, computed));
}

std::optional<Fault> AdjustDistancesOnly(AdjustmentContext& context) {
  if (auto sentence = FindMissingPart(context)) return Failed(sentence);
  if (auto sentence = PlacePoints(context)) return Failed(sentence);
  if (!LeastSquareAdj(&context)) return Failed(ExplainNoSolution(context));
  return Failed(FindSenselessResult(context));
}

std::optional<Fault> ComputeClosures(AdjustmentContext& context) {
  if (!IsOrdinary(context)) return std::nullopt;
  if (!ApproxCalc(&context)) return Failed(ExplainNoApproximation(context));
  CalculateCloseError(&context);  // from here on false means that there are none
  return std::nullopt;
}

std::string NoClosures(const AdjustmentContext& context) {
  if (IsDistancesOnly(context)) return "distances alone (format 3) have no closure errors";
  if (IsUnoriented(context)) {
    return "traverses without orientation (format 1) have no closure errors with limits";
  }
  return "there are no closure errors: no line or traverse joins two control points and no loop "
         "closes";
}

}  // namespace brenu::tool
