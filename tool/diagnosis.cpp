#include "diagnosis.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <string_view>
#include <vector>

#include "job/adjustment_context.h"
#include "job/computations.h"
#include "job/result_lookup.h"
#include "format.h"
#include "network_view.h"

namespace brenu::tool {

namespace {

const char* const kNoMemory = "there is not enough memory for this network; split it";

const char* TitleOf(Network network) {
  return network == Network::kHeights ? "levelling network" : "plane network";
}

bool HasLevelledDifference(const AdjustmentContext& context) {
  const auto observations = ObservationsOf(context);
  return std::any_of(observations.begin(), observations.end(),
                     [](const Observation& o) { return IsLevelled(o.data); });
}

// A sentence about the new points that the last computation of the network could not reach.
template <typename Net>
std::optional<std::string> ExplainUnreached(const AdjustmentContext& context, const Net& net,
                                            const char* values, const std::string& remedy) {
  std::vector<std::string_view> names;
  for (const auto& [index, point] : context.store.Points()) {
    if (!net.IsReached(NameOf(point))) names.push_back(NameOf(point));
  }
  if (names.empty()) return std::nullopt;
  return std::string(values) + " cannot be computed for " + Points(names) + "; " + remedy;
}

bool HasAngles(const AdjustmentContext& context) {
  const auto observations = ObservationsOf(context);
  return std::any_of(observations.begin(), observations.end(), [](const Observation& o) {
    return HasDirection(o.data) || HasAzimuth(o.data);
  });
}

// With control of both kinds every point must be reached in both networks.
std::string InBothNetworks(const AdjustmentContext& context, std::string remedy) {
  if (context.netType != kPlaneAndLevelling) return remedy;
  return remedy +
         ", or adjust heights and plane as two jobs: with control points of both kinds every "
         "point needs both";
}

// Whether the adjustment fails for want of memory: it runs once more, past the barrier of the
// interface.
bool RunsOutOfMemory(AdjustmentContext& context) {
  try {
    RunLeastSquareAdj(context);
    return false;
  } catch (const std::bad_alloc&) {
    return true;
  }
}

bool IsFiniteResult(AdjustmentContext& context, Network network, std::int32_t index) {
  PlaneResult plane{};
  VerticalResult vertical{};
  if (network == Network::kHeights) {
    return GetVerticalResult(&context, index, &vertical) && std::isfinite(vertical.height);
  }
  return GetPlaneResult(&context, index, &plane) && std::isfinite(plane.x) &&
         std::isfinite(plane.y);
}

// The first observed line whose ends have the same approximate coordinates.
std::optional<Observation> FindLineWithoutLength(AdjustmentContext& context) {
  if (!ApproxCalc(&context)) return std::nullopt;
  for (const Observation& o : ObservationsOf(context)) {
    const std::int32_t target = GetPointNum(&context, o.target);
    PlaneResult from{};
    PlaneResult to{};
    if (!GetPlaneResult(&context, o.station, &from) || !GetPlaneResult(&context, target, &to)) {
      continue;
    }
    if (std::hypot(to.x - from.x, to.y - from.y) == 0.0) return o;
  }
  return std::nullopt;
}

}  // namespace

std::optional<std::string> FindMissingPart(AdjustmentContext& context) {
  if (context.store.Points().empty()) {
    return "the file holds no points; add them and their observations";
  }
  const std::int32_t type = GetNetType(&context);
  if (type == kNoControl) {
    return "no control point is among the points; give one or more the type 01 (height known), 10 "
           "(X and Y known) or 11 (both)";
  }
  if (context.store.Observations().empty()) {
    return "the file holds points but no observations; add observations";
  }
  if (!IsOrdinary(context) && !HasPlane(type)) {
    return "formats 1 (traverses without orientation) and 3 (distances only) need points with "
           "known X and Y; correct the format or the types of the points";
  }
  return std::nullopt;
}

std::string ExplainNoApproximation(AdjustmentContext& context) {
  if (auto sentence = FindMissingPart(context)) return *sentence;
  if (HasLevelling(context.netType)) {
    if (!HasLevelledDifference(context)) {
      return "bench marks are there but no levelled height difference; give each height difference "
             "the length of its line";
    }
    if (auto sentence = ExplainUnreached(context, context.levelNet, "heights",
                                         InBothNetworks(context,
                                                        "connect them with a bench mark by height "
                                                        "differences that have a line length"))) {
      return *sentence;
    }
  }
  if (HasPlane(context.netType)) {
    if (!HasAngles(context)) {
      return "there are distances but no directions to place points by; add directions, or adjust "
             "the distances alone with format 3";
    }
    if (auto sentence = ExplainUnreached(
            context, context.planeNet, "approximate coordinates",
            InBothNetworks(context,
                           "observe each with direction and distance, or by intersection, from "
                           "oriented known stations"))) {
      return *sentence;
    }
  }
  return kNoMemory;
}

std::string ExplainNoSolution(AdjustmentContext& context) {
  if (RunsOutOfMemory(context)) return kNoMemory;
  // Levelling equations are regular once every height is reached.
  const Network network = HasPlane(context.netType) ? Network::kPlane : Network::kHeights;
  return std::string("the normal equations of the ") + TitleOf(network) +
         " are singular; look for points that its observations do not determine, and for a-priori "
         "errors that leave them no weight";
}

std::string ExplainNoSnooping(AdjustmentContext& context) {
  if (!LeastSquareAdj(&context)) return ExplainNoSolution(context);
  return "data snooping took out observations that the network cannot do without; take out lines "
         "to points that hang on a single one, which it cannot judge, or give a smaller ALPHA";
}

std::optional<std::string> FindUndeterminedPlane(AdjustmentContext& context) {
  if (!HasPlane(context.netType)) return std::nullopt;
  for (const Observation& o : ObservationsOf(context)) {
    if (context.planeNet.IsControl(o.stationName) && context.planeNet.IsControl(o.target)) continue;
    if (LineResult(context, o.station, o.target)) return std::nullopt;
    return ExplainNoSnooping(context);
  }
  return std::nullopt;
}

std::optional<std::string> FindTraverseFault(AdjustmentContext& context, bool computed) {
  if (auto sentence = FindMissingPart(context)) return sentence;
  if (context.planeNet.Traverses().empty()) {
    return "no traverse joins two control points; between its points each needs a distance, and "
           "every point on the way directions to the one before and the one after";
  }
  if (auto sentence = ExplainUnreached(context, context.planeNet, "coordinates",
                                       "lead a traverse between two control points over each, with "
                                       "all its distances and directions")) {
    return sentence;
  }
  if (!computed) return kNoMemory;
  return std::nullopt;
}

std::optional<std::string> FindSenselessResult(AdjustmentContext& context) {
  for (const Network network : AdjustedNetworks(context)) {
    const auto count = static_cast<std::int32_t>(GetPointCount(&context));
    for (std::int32_t i = 0; i < count; ++i) {
      if (IsFiniteResult(context, network, i)) continue;
      if (const auto line = FindLineWithoutLength(context)) {
        return "the points of the observed line " + Line(line->stationName, line->target) +
               " lie at the same place; correct their coordinates or the observation";
      }
      return std::string("the adjusted values of the ") + TitleOf(network) +
             " are no finite numbers; look for gross errors in coordinates and observations";
    }
    const NetworkFigures figures = FiguresOf(context, network);
    if (figures.newPoints > 0 && figures.redundancy > 0 && !std::isfinite(figures.sigma0)) {
      return std::string("the residuals of the ") + TitleOf(network) +
             " are too large to compute with; look for gross errors in coordinates and "
             "observations";
    }
  }
  return std::nullopt;
}

}  // namespace brenu::tool
