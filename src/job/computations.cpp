#include "job/computations.h"

#include <algorithm>
#include <string>
#include <utility>

#include "job/network_build.h"
#include "job/wrong_control.h"
#include "plane/unoriented_traverses.h"

namespace brenu {

namespace {

Outcome MissingPart(const AdjustmentContext& context) {
  return Error(context.store.Points().empty() ? BRENU_NO_POINTS : BRENU_NO_CONTROL);
}

// Begins a new computation; the results of the one before are gone, unless there is nothing to
// compute with.
Outcome BeginPlane(PlanePart& plane) {
  if (plane.net->IsEmpty()) return Error(BRENU_NO_OBSERVATIONS);
  plane.results = {};  // first of all, for its memory
  plane.results = PlaneAdjustment(plane.net);
  return {};
}

template <typename Compute>
Outcome ComputeLevel(LevelPart& level, Compute compute) {
  level.results = {};
  level.results = LevelAdjustment(level.net);
  Outcome outcome = compute(level.results);
  if (!level.results.ApproximateHeights().IsEmpty()) {
    level.heights = level.results.ApproximateHeights();
  }
  return outcome;
}

// Goes on from approximate coordinates where they are all that has been computed of this network.
template <typename Compute>
Outcome ComputePlane(PlanePart& plane, Compute compute) {
  const bool isPlaced = &plane.results.Net() == plane.net.get() && plane.results.IsPlacedOnly();
  if (Outcome begun = isPlaced ? Outcome() : BeginPlane(plane); !begun.ok) return begun;
  Outcome outcome = compute(plane.results);
  if (!plane.results.ApproximateCoordinates().IsEmpty()) {
    plane.points.SetPositions(plane.results.ApproximateCoordinates());
  }
  return outcome;
}

// With control of both kinds every point must be reached in both networks.
void SayThatBothAreNeeded(Outcome& outcome) {
  for (Finding& finding : outcome.findings) {
    const bool unreached =
        finding.code == BRENU_HEIGHTS_UNREACHED || finding.code == BRENU_COORDINATES_UNREACHED;
    if (unreached) finding.values = {1.0};
  }
}

// Levelling first, the plane only when the levelling succeeded.
template <typename Level, typename Plane>
Outcome RunByType(AdjustmentContext& context, Level level, Plane plane) {
  if (context.netType == kNoControl) return MissingPart(context);
  Outcome outcome;
  if (HasLevelling(context.netType)) outcome = ComputeLevel(context.level, level);
  if (outcome.ok && HasPlane(context.netType)) outcome += ComputePlane(context.plane, plane);
  if (!outcome.ok && context.store.Observations().empty()) return Error(BRENU_NO_OBSERVATIONS);
  if (context.netType == kPlaneAndLevelling) SayThatBothAreNeeded(outcome);
  return outcome;
}

// The outcome, with a note whether it is a success.
Outcome Noted(Outcome outcome, bool& done) {
  done = outcome.ok;
  return outcome;
}

}  // namespace

Outcome RunApproxCalc(AdjustmentContext& context) {
  BuildNetworks(context);
  return RunByType(
      context, [](LevelAdjustment& level) { return level.CalcApproxHeight(); },
      [](PlaneAdjustment& plane) { return plane.CalcApproxCoordinates(); });
}

Outcome RunLeastSquareAdj(AdjustmentContext& context) {
  if (context.param.format == kFormatDistancesOnly) {
    context.adjusted = {};
    return Noted(context.plane.results.AdjustDistances(context.plane.net->param),
                 context.adjusted.plane);
  }
  BuildNetworks(context);
  return RunByType(
      context,
      [&](LevelAdjustment& level) { return Noted(level.LevelAdjust(), context.adjusted.heights); },
      [&](PlaneAdjustment& plane) { return Noted(plane.Adjust(), context.adjusted.plane); });
}

Outcome RunNonDirectionAdj(AdjustmentContext& context) {
  BuildNetworks(context);
  if (context.param.format != kFormatNoOrientation) {
    return Error(BRENU_FORMAT_IS_NOT, {}, {kFormatNoOrientation});
  }
  if (context.netType == kNoControl) return MissingPart(context);
  if (!HasPlane(context.netType)) return Error(BRENU_FORMAT_NEEDS_PLANE);
  // Traverses begin with the known points alone.
  if (!context.plane.net->IsEmpty()) context.plane.results = {};
  return ComputePlane(context.plane, [&](PlaneAdjustment& plane) {
    return AdjustWithoutOrientation(plane, context.plane.traverses);
  });
}

Outcome RunDataSnooping(AdjustmentContext& context, std::uint32_t kind, double levelAlpha,
                        double planeAlpha, const AnnounceRound& announceRound) {
  BuildNetworks(context);
  if (kind != static_cast<std::uint32_t>(context.netType)) {
    return Error(BRENU_KIND_IS_NOT_NETWORK_TYPE, {},
                 {static_cast<double>(kind), static_cast<double>(context.netType)});
  }
  return RunByType(
      context,
      [&](LevelAdjustment& level) {
        return Noted(level.LevelDataSnooping(levelAlpha, announceRound), context.adjusted.heights);
      },
      [&](PlaneAdjustment& plane) {
        return Noted(plane.DataSnooping(planeAlpha, announceRound), context.adjusted.plane);
      });
}

namespace {

// That one network leaves out a point of the other one alone says nothing.
bool SaysSomething(const AdjustmentContext& context, Finding& finding) {
  if (context.netType != kPlaneAndLevelling || finding.names.empty()) return true;
  if (finding.code == BRENU_HEIGHTS_LEFT_OUT) {
    const NetworkLayout& net = context.level.net->layout;
    std::erase_if(finding.names, [&net](const std::string& name) {
      const Slot slot = net.Names().Find(name);
      return net.SightsFrom(slot).Size() == 0 && net.SightsTo(slot).empty();
    });
    return !finding.names.empty();
  }
  return finding.code != BRENU_POINT_LEFT_OUT || finding.values[0] + finding.values[1] > 0.0;
}

template <typename Level, typename Plane>
Outcome RunEach(AdjustmentContext& context, Level level, Plane plane) {
  BuildNetworks(context);
  if (context.netType == kNoControl) return MissingPart(context);
  if (context.store.Observations().empty()) return Error(BRENU_NO_OBSERVATIONS);
  const bool distancesOnly = context.param.format == kFormatDistancesOnly;
  if (distancesOnly && !HasPlane(context.netType)) return Error(BRENU_FORMAT_NEEDS_PLANE);
  Outcome outcome;
  outcome.ok = false;
  const auto take = [&](Outcome part) {
    outcome.ok = outcome.ok || part.ok;
    for (Finding& finding : part.findings) {
      if (SaysSomething(context, finding)) outcome.findings.push_back(std::move(finding));
    }
  };
  context.adjusted = {};
  context.level.results = {};
  context.plane.results = {};
  if (HasLevelling(context.netType) && !distancesOnly) {
    context.level.results = LevelAdjustment(context.level.net, context.rules.levelSigma);
    take(level(context.level.results));
    if (!context.level.results.ApproximateHeights().IsEmpty()) {
      context.level.heights = context.level.results.ApproximateHeights();
    }
  }
  if (HasPlane(context.netType)) {
    context.plane.results = PlaneAdjustment(context.plane.net, RuleSet::kTextbook);
    take(plane(context.plane.results));
    context.plane.points.SetPositions(context.plane.results.ApproximateCoordinates());
  }
  const bool isAstray =
      std::any_of(outcome.findings.begin(), outcome.findings.end(),
                  [](const Finding& f) { return f.code == BRENU_PLANE_NOT_CONVERGED; });
  if (isAstray) {
    for (Finding& finding : FindWrongControl(context)) {
      outcome.findings.push_back(std::move(finding));
    }
  }
  return outcome;
}

}  // namespace

Outcome RunTextbook(AdjustmentContext& context, const std::optional<OutlierTest>& snooping,
                    const AnnounceRound& announceRound) {
  return RunEach(
      context,
      [&](LevelAdjustment& level) {
        return Noted(
            snooping ? level.SnoopAsTextbook(*snooping, announceRound) : level.AdjustAsTextbook(),
            context.adjusted.heights);
      },
      [&](PlaneAdjustment& plane) {
        return Noted(
            snooping ? plane.SnoopAsTextbook(*snooping, announceRound) : plane.AdjustAsTextbook(),
            context.adjusted.plane);
      });
}

Outcome RunTextbookApprox(AdjustmentContext& context) {
  return RunEach(
      context, [](LevelAdjustment& level) { return level.ApproximateAsTextbook(); },
      [](PlaneAdjustment& plane) { return plane.ApproximateAsTextbook(); });
}

Outcome PreparePlane(AdjustmentContext& context) {
  if (!HasPlane(context.netType)) return Error(BRENU_FORMAT_NEEDS_PLANE);
  context.adjusted.plane = false;
  return BeginPlane(context.plane);
}

}  // namespace brenu
