#include "job/wrong_control.h"

#include <cmath>
#include <limits>
#include <string>

#include "job/network_build.h"

namespace brenu {

Findings FindWrongControl(const AdjustmentContext& context) {
  constexpr std::size_t kMostPoints = 3000;
  constexpr int kMostTrials = 50;
  constexpr double kContradicted = 10.0;  // standard errors
  Findings found;
  if (context.store.Points().size() > kMostPoints) return found;
  double least = std::numeric_limits<double>::infinity();
  int trials = 0;
  for (const auto& [index, point] : context.store.Points()) {
    if (!IsPlaneControl(point) || ++trials > kMostTrials) continue;
    PlaneAdjustment free(PlaneNetFreeing(context, index), RuleSet::kTextbook);
    if (!free.AdjustAsTextbook().ok || !(free.Sigma0() < least)) continue;
    const auto place = free.ResultOfPoint(NameOf(point));
    if (!place) continue;
    const double dx = place->x - point.x;
    const double dy = place->y - point.y;
    const bool isX = std::fabs(dx) > std::fabs(dy);
    const double w = std::fabs(isX ? dx / place->mx : dy / place->my);
    if (!(w > kContradicted)) continue;
    least = free.Sigma0();
    found = {Warning(BRENU_CONTROL_DOES_NOT_FIT, {std::string(NameOf(point)), isX ? "X" : "Y"},
                     {isX ? dx : dy, w})};
  }
  return found;
}

}  // namespace brenu
