#include "review/computation.h"

#include <utility>

#include "job/closure_list.h"
#include "job/network_build.h"
#include "review/network_view.h"
#include "review/placing.h"

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

Outcome ComputeByFormat(AdjustmentContext& context, std::optional<double> snoopingAlpha,
                        const AnnounceRound& announceRound) {
  if (IsUnoriented(context)) return RunNonDirectionAdj(context);
  if (context.rules.AreTextbook()) return RunTextbook(context, snoopingAlpha, announceRound);
  if (IsDistancesOnly(context)) return AdjustDistancesOnly(context);
  if (!snoopingAlpha) return RunLeastSquareAdj(context);
  const auto kind = static_cast<std::uint32_t>(ClassifyNetwork(context));
  return RunDataSnooping(context, kind, *snoopingAlpha, *snoopingAlpha, announceRound);
}

}  // namespace

Outcome Compute(AdjustmentContext& context, std::optional<double> snoopingAlpha,
                const AnnounceRound& announceRound) {
  Outcome outcome = ComputeByFormat(context, snoopingAlpha, announceRound);
  // By the rules of textbooks a success says that something was adjusted, if not everything.
  return context.rules.AreTextbook() ? outcome : Judged(std::move(outcome));
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

}  // namespace brenu
