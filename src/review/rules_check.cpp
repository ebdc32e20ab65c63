#include "review/rules_check.h"

#include <cmath>
#include <string>

#include "core/distributions.h"

namespace brenu {

namespace {

// The point that two results put furthest apart, in standard errors of the first.
struct Furthest {
  std::string name;
  double distance = 0.0;  // metres
  double ratio = 1.0;     // in standard errors; what does not exceed one does not count
};

void CompareHeights(const AdjustmentContext& context, Furthest& furthest, bool& isRefused) {
  const LevelAdjustment& textbook = context.level.results;
  LevelAdjustment classic(context.level.net);
  if (!classic.LevelAdjust().ok) {
    isRefused = true;
    return;
  }
  const NetworkLayout& net = context.level.net->layout;
  for (const PointNo i : net.NewPoints()) {
    const std::string& name = net.Names().NameAt(net.SlotOf(i));
    const auto a = textbook.ResultOfPoint(name);
    const auto b = classic.ResultOfPoint(name);
    if (!a || !b) continue;
    const double distance = std::fabs(a->height - b->height);
    if (distance > furthest.ratio * a->sigma) furthest = {name, distance, distance / a->sigma};
  }
}

void ComparePlanes(const AdjustmentContext& context, Furthest& furthest, bool& isRefused) {
  const PlaneAdjustment& textbook = context.plane.results;
  PlaneAdjustment classic(context.plane.net);
  if (!classic.Adjust().ok) {
    isRefused = true;
    return;
  }
  const NetworkLayout& net = context.plane.net->layout;
  for (const PointNo i : net.NewPoints()) {
    const std::string& name = net.Names().NameAt(net.SlotOf(i));
    const auto a = textbook.ResultOfPoint(name);
    const auto b = classic.ResultOfPoint(name);
    if (!a || !b) continue;
    const double distance = std::hypot(a->x - b->x, a->y - b->y);
    if (distance > furthest.ratio * a->mp) furthest = {name, distance, distance / a->mp};
  }
}

bool HasTakenOut(const AdjustmentContext& context) {
  return !context.level.results.AllTakenOut().empty() ||
         !context.plane.results.AllTakenOut().empty();
}

}  // namespace

Findings CompareRules(const AdjustmentContext& context) {
  const bool isOrdinary = context.param.format != kFormatDistancesOnly;
  // What was snooped differs by what was taken out.
  if (!isOrdinary || context.store.Points().size() > kMostPointsCompared || HasTakenOut(context)) {
    return {};
  }
  Furthest furthest;
  bool isRefused = false;
  if (context.adjusted.heights) CompareHeights(context, furthest, isRefused);
  if (context.adjusted.plane) ComparePlanes(context, furthest, isRefused);
  if (isRefused) return {Note(BRENU_CLASSIC_RULES_REFUSE)};
  if (furthest.name.empty()) return {};
  return {Note(BRENU_RULES_DIFFER, {furthest.name}, {furthest.distance, furthest.ratio})};
}

Findings CheckLevelSigma(const AdjustmentContext& context) {
  const LevelAdjustment& level = context.level.results;
  const double r = level.Redundancy();
  if (!context.adjusted.heights || r < 1.0 || !std::isfinite(level.Sigma0())) return {};
  const double ratio = level.Sigma0() / level.Apriori();
  const double statistic = r * ratio * ratio;
  constexpr double kTail = 0.025;
  const bool fits =
      statistic >= ChiSquareQuantile(kTail, r) && statistic <= ChiSquareQuantile(1.0 - kTail, r);
  constexpr double kMillimetres = 1000.0;
  constexpr double kLeastShown = 0.005;  // mm; below it the observations are computed ones
  if (fits || level.Sigma0() * kMillimetres < kLeastShown) return {};
  return {Note(BRENU_LEVEL_SIGMA_CONTRADICTED, {},
               {level.Sigma0() * kMillimetres, level.Apriori() * kMillimetres})};
}

}  // namespace brenu
