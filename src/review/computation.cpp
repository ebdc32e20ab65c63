#include "review/computation.h"

#include <utility>

#include "job/closure_list.h"
#include "job/network_build.h"
#include "review/data_check.h"
#include "review/network_view.h"
#include "review/placing.h"
#include "review/rules_check.h"

namespace brenu {

namespace {

// A result that stands, but means nothing, is none for a person.
Outcome Judged(Outcome outcome) {
  outcome.ok = outcome.ok && !Has(outcome.findings, Severity::kError);
  return outcome;
}

Outcome AdjustDistancesOnly(AdjustmentContext& context) {
  const std::int32_t type = ClassifyNetwork(context);
  if (context.store.Points().empty()) return Error(BRENU_NO_POINTS);
  if (type == kNoControl) return Error(BRENU_NO_CONTROL);
  if (context.store.Observations().empty()) return Error(BRENU_NO_OBSERVATIONS);
  if (!HasPlane(type)) return Error(BRENU_FORMAT_NEEDS_PLANE);
  if (Outcome placed = PlacePoints(context); !placed.ok) return placed;
  return RunLeastSquareAdj(context);
}

Outcome ComputeByFormat(AdjustmentContext& context, const std::optional<OutlierTest>& snooping,
                        const AnnounceRound& announceRound) {
  const bool canSnoop =
      IsOrdinary(context) || (context.rules.AreTextbook() && IsDistancesOnly(context));
  if (snooping && !canSnoop) return Error(BRENU_FORMAT_IS_NOT, {}, {0.0});
  if (IsUnoriented(context)) return RunNonDirectionAdj(context);
  if (context.rules.AreTextbook()) return RunTextbook(context, snooping, announceRound);
  if (IsDistancesOnly(context)) return AdjustDistancesOnly(context);
  if (!snooping) return RunLeastSquareAdj(context);
  const auto kind = static_cast<std::uint32_t>(ClassifyNetwork(context));
  return RunDataSnooping(context, kind, snooping->alpha, snooping->alpha, announceRound);
}

// Of the pairs asked for, those whose ellipse cannot be had.
void SayWhichHaveNone(const AdjustmentContext& context, Outcome& outcome) {
  const PlaneAdjustment& plane = context.plane.results;
  const NameTable& names = plane.Net().layout.Names();
  for (const auto& [from, to] : context.askedPairs) {
    if (context.adjusted.plane && plane.PrecisionBetween(names.Find(from), names.Find(to)))
      continue;
    outcome.findings.push_back(Note(BRENU_NO_RELATIVE_ELLIPSE, {from, to}));
  }
}

}  // namespace

Outcome Compute(AdjustmentContext& context, const std::optional<OutlierTest>& snooping,
                const AnnounceRound& announceRound) {
  Outcome outcome = ComputeByFormat(context, snooping, announceRound);
  if (outcome.ok) SayWhichHaveNone(context, outcome);
  // By the rules of textbooks a success says that something was adjusted, if not everything.
  return context.rules.AreTextbook() ? outcome : Judged(std::move(outcome));
}

Outcome ComputeChecked(AdjustmentContext& context, const std::optional<OutlierTest>& snooping) {
  if (Findings found = CheckWeights(context); !found.empty()) {
    Outcome refused;
    refused.ok = false;
    refused.findings = std::move(found);
    return refused;
  }
  Outcome outcome = Compute(context, snooping);
  if (!outcome.ok || !context.rules.AreTextbook()) return outcome;
  for (Finding& finding : CheckLevelSigma(context)) {
    outcome.findings.push_back(std::move(finding));
  }
  return outcome;
}

Outcome ComputeApproximations(AdjustmentContext& context) {
  return context.rules.AreTextbook() ? RunTextbookApprox(context) : RunApproxCalc(context);
}

Outcome ComputeClosures(AdjustmentContext& context) {
  if (!IsOrdinary(context)) {
    Outcome outcome;
    outcome.findings.push_back(
        Warning(BRENU_CLOSURES_NOT_OF_FORMAT, {}, {static_cast<double>(context.param.format)}));
    return outcome;
  }
  Outcome outcome =
      context.rules.AreTextbook() ? CalculateTextbookClosures(context) : CalculateClosures(context);
  // That there are none is no failure.
  for (Finding& finding : outcome.findings) {
    if (finding.code != BRENU_NO_CLOSURES) continue;
    finding.severity = Severity::kWarning;
    outcome.ok = true;
  }
  return outcome;
}

Outcome PlaceAndClose(AdjustmentContext& context) {
  Outcome outcome =
      IsOrdinary(context) ? CalculateTextbookClosures(context) : RunTextbookApprox(context);
  // That nothing closes is no failure of the approximate values.
  std::erase_if(outcome.findings,
                [](const Finding& finding) { return finding.code == BRENU_NO_CLOSURES; });
  outcome.ok = outcome.ok || outcome.findings.empty();
  return outcome;
}

}  // namespace brenu
