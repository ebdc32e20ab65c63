// The adjustment by the rules of textbooks (docs/computations.md, "Two sets of rules").
#include <algorithm>
#include <cmath>
#include <utility>

#include "core/angles.h"
#include "core/parallel.h"
#include "plane/approximate/approximate.h"
#include "plane/plane_adjustment.h"

namespace brenu {

namespace {
constexpr std::int32_t kAlwaysSparse = -1;  // the sparse form tells what is not determined
}  // namespace

PlaneAdjustment::PlaneAdjustment(std::shared_ptr<const PlaneNet> net, RuleSet rules)
    : m_net(std::move(net)),
      m_param(m_net->param),
      m_rules(rules),
      m_coords(StartingCoordinates(*m_net)),
      m_obs(m_net->layout, m_param.format == kFormatDistancesOnly),
      m_normal(kAlwaysSparse) {}

Outcome PlaneAdjustment::AdjustAsTextbook() {
  const ThreadTeam team;
  Outcome outcome = PlaceAndConverge(false);
  if (outcome.ok) outcome += FinishAsTextbook();
  return outcome;
}

Outcome PlaneAdjustment::ApproximateAsTextbook() {
  const ThreadTeam team;
  Outcome outcome;
  outcome.findings = PlacePoints();
  if (!HasNewPoint() && m_net->layout.NewPointCount() > 0) {
    outcome.ok = false;
    outcome.findings.push_back(Error(BRENU_NOTHING_PLACED));
  }
  return outcome;
}

Outcome PlaneAdjustment::PlaceAndConverge(bool withoutGrossErrors) {
  Outcome outcome = ApproximateAsTextbook();
  if (!outcome.ok) return outcome;
  if (withoutGrossErrors) TakeOutGrossErrors();
  outcome += Converge();
  return outcome;
}

Outcome PlaneAdjustment::FinishAsTextbook() {
  m_redundancy = CountOnce();
  m_sigma0 = std::sqrt(CalcExactResiduals() / m_redundancy);
  CalcPointPrecision();
  m_controlFits = FitControl();
  const bool isFinite = m_redundancy <= 0 || std::isfinite(m_sigma0);
  return isFinite ? Outcome{} : Outcome(Error(BRENU_PLANE_RESIDUALS_TOO_LARGE));
}

// Approximate coordinates; points without are left out.
Findings PlaneAdjustment::PlacePoints() {
  approximate::Selection selection;
  selection.directions = m_param.format != kFormatDistancesOnly;
  Findings unplaced = PlaceByShape(*m_net, selection, m_coords);
  KeepApproximateCoordinates();
  m_isLeftOut.Assign(m_net->points.Size(), 0);
  for (const PointNo i : m_net->layout.Points()) {
    if (!HasCoordinates(m_coords[m_net->layout.SlotOf(i)])) m_isLeftOut[i] = 1;
  }
  ExcludeObservations();
  return unplaced;
}

bool PlaneAdjustment::HasNewPoint() const {
  for (const PointNo i : m_net->layout.NewPoints()) {
    if (m_isLeftOut[i] == 0) return true;
  }
  return false;
}

// Of points left out, and of names that no point has.
void PlaneAdjustment::ExcludeObservations() {
  const auto isOut = [this](Slot slot) {
    const PointNo point = m_net->layout.PointOf(slot);
    return point.IsNone() || m_isLeftOut[point] != 0;
  };
  for (auto* table : {&m_obs.directions, &m_obs.distances, &m_obs.azimuths}) {
    for (PlaneObs& o : *table) {
      if (!isOut(o.from) && !isOut(o.to)) continue;
      o.inUse = false;
      o.leftOut = true;
    }
  }
}

// The points of unknowns that the observations do not determine.
Findings PlaneAdjustment::LeaveOut(const std::vector<std::int32_t>& unknowns) {
  const NetworkLayout& net = m_net->layout;
  std::vector<std::string> names;
  for (const std::int32_t unknown : unknowns) {
    const PointNo point(unknown / 2);
    if (unknown >= 2 * net.PointCount() || net.IsControl(point)) continue;
    if (std::exchange(m_isLeftOut[point], 1) != 0) continue;
    names.push_back(net.Names().NameAt(net.SlotOf(point)));
  }
  ExcludeObservations();
  if (names.empty()) return {};
  return {Warning(BRENU_POINTS_UNDETERMINED, std::move(names))};
}

// Much more firmly than any observation, but so that a cofactor still tells what the observations
// have to say about the point.
void PlaneAdjustment::HoldFirmly() {
  constexpr double kFirmness = 1e8;
  const auto hold = [this](std::int32_t unknown) {
    if (IsFreed(unknown)) return 0.0;
    const double own = m_normal.DiagonalElement(unknown);
    const double weight = own > 0.0 ? kFirmness * own : 1.0;
    m_normal.Hold(unknown, weight);
    return weight;
  };
  m_holding.Assign(static_cast<std::size_t>(m_net->layout.ControlCount()), {0.0, 0.0});
  for (const PointNo i : m_net->layout.ControlPoints()) {
    m_holding[i] = {hold(2 * i.Number()), hold(2 * i.Number() + 1)};
  }
  for (const PointNo i : m_net->layout.NewPoints()) {
    if (m_isLeftOut[i] == 0) continue;
    hold(2 * i.Number());
    hold(2 * i.Number() + 1);
  }
}

// Forms and solves the equations, until no point is left that they do not determine.
Findings PlaneAdjustment::SolveAndLeaveOut() {
  Findings left;
  for (;;) {
    static_cast<void>(BuildNormals());  // names without a point are left out
    HoldFirmly();
    Findings found = LeaveOut(m_normal.SolveDetermined());
    if (found.empty()) return left;
    left.insert(left.end(), found.begin(), found.end());
  }
}

Outcome PlaneAdjustment::Converge() {
  constexpr int kMostPasses = 60;
  constexpr double kSettled = 1e-5;     // metres: a hundredth of a millimetre
  constexpr double kWellLinear = 1e-3;  // below this the last factors will do
  constexpr double kAlmostSettled = 1e-3;
  Outcome outcome;
  double before = std::numeric_limits<double>::infinity();
  double pvv = CalcExactResiduals();
  for (int pass = 0; pass < kMostPasses; ++pass) {
    std::vector<double> step;
    if (before > kWellLinear || !m_normal.IsSolved()) {
      Findings left = SolveAndLeaveOut();
      if (!left.empty()) pvv = CalcExactResiduals();
      outcome.findings.insert(outcome.findings.end(), left.begin(), left.end());
      step.assign(m_normal.Solution().begin(), m_normal.Solution().end());
    } else {
      step = m_normal.SolveAgain(RightHandSide());
    }
    const double largest = LargestCorrection(step);
    if (!std::isfinite(largest) || !std::isfinite(pvv)) {
      outcome += ExplainNotFinite();
      return outcome;
    }
    if (largest <= kSettled) {  // too little for [pvv] to tell whether it is for the better
      Move(step, 1.0);
      CalcExactResiduals();
      return outcome;
    }
    const bool improved = StepDamped(step, pvv);
    // Corrections that get no smaller any more are those of rounding.
    const bool isStuck = !improved || largest > before / 2.0;
    if (isStuck && largest < kAlmostSettled) return outcome;
    if (!improved) break;
    before = largest;
  }
  outcome += Error(BRENU_PLANE_NOT_CONVERGED);
  return outcome;
}

// What the equations say of control is no correction: a coordinate that the observations hardly
// touch is held by next to nothing.
bool PlaneAdjustment::Moves(std::int32_t unknown) const {
  const PointNo point(unknown / 2);
  return m_isLeftOut[point] == 0 && (!m_net->layout.IsControl(point) || IsFreed(unknown));
}

double PlaneAdjustment::LargestCorrection(std::span<const double> step) const {
  double largest = 0.0;
  for (std::int32_t unknown = 0; unknown < 2 * m_net->layout.PointCount(); ++unknown) {
    const double correction = std::fabs(step[static_cast<std::size_t>(unknown)]);
    if (Moves(unknown) && !(correction <= largest)) largest = correction;
  }
  return largest;
}

void PlaneAdjustment::Move(std::span<const double> step, double part) {
  const NetworkLayout& net = m_net->layout;
  for (const Slot slot : net.Slots()) {
    const PointNo point = net.PointOf(slot);
    if (point.IsNone()) continue;
    const std::int32_t x = 2 * point.Number();
    const std::size_t unknown = 2 * point.Position();
    if (Moves(x)) m_coords[slot].x += part * step[unknown];
    if (Moves(x + 1)) m_coords[slot].y += part * step[unknown + 1];
  }
}

// The whole step, or as much of it as lets [pvv] decrease; false when no part of it does.
bool PlaneAdjustment::StepDamped(std::span<const double> step, double& pvv) {
  constexpr int kMostHalvings = 12;
  constexpr double kRounding = 1e-12;
  double part = 1.0;
  Move(step, part);
  for (int i = 0; i < kMostHalvings; ++i) {
    const double now = CalcExactResiduals();
    if (now <= pvv * (1.0 + kRounding)) {
      pvv = now;
      return true;
    }
    Move(step, -part / 2.0);
    part /= 2.0;
  }
  Move(step, -part);
  CalcExactResiduals();
  return false;
}

double PlaneAdjustment::OrientationOf(const DirectionSet& set) const {
  const bool anyInUse = m_obs.HasDirectionInUse(set);
  double first = 0.0;
  double sum = 0.0;
  double count = 0.0;
  for (std::int32_t k = set.first; k < set.end; ++k) {
    const PlaneObs& o = m_obs.directions[static_cast<std::size_t>(k)];
    if (o.leftOut || (anyInUse && !o.inUse)) continue;
    const double turn = DirectionCoefficients(o.from, o.to).value - o.observed;
    if (count == 0.0) first = turn;
    sum += HalfCircle(turn - first);
    ++count;
  }
  return count == 0.0 ? 0.0 : first + sum / count;
}

// -A'Pl with the residuals of the coordinates as they are.
std::vector<double> PlaneAdjustment::RightHandSide() const {
  std::vector<double> b(m_normal.Solution().size(), 0.0);
  const auto add = [&b](std::span<const Term> terms, double weight, double residual) {
    for (const Term& t : terms) {
      b[static_cast<std::size_t>(t.unknown)] -= t.coefficient * weight * residual;
    }
  };
  const double angleWeight = 1.0 / (m_param.MO * m_param.MO);
  for (const DirectionSet& set : m_obs.sets) {
    for (std::int32_t k = set.first; k < set.end; ++k) {
      const PlaneObs& o = m_obs.directions[static_cast<std::size_t>(k)];
      if (!o.inUse) continue;
      LineEquation line = DirectionCoefficients(o.from, o.to);
      add(line.TermsWithOrientation(set.orientation), angleWeight, o.residual);
    }
  }
  for (const PlaneObs& o : m_obs.distances) {
    if (!o.inUse) continue;
    const double error = DistanceError(o.observed);
    add(DistanceCoefficients(o.from, o.to).Terms(), 1.0 / (error * error), o.residual);
  }
  for (const PlaneObs& o : m_obs.azimuths) {
    if (!o.inUse) continue;
    add(DirectionCoefficients(o.from, o.to).Terms(), angleWeight, o.residual);
  }
  return b;
}

// Observations in use minus unknowns of the points and circles that take part.
std::int32_t PlaneAdjustment::CountOnce() const {
  std::int32_t count = 0;
  for (const auto* table : {&m_obs.directions, &m_obs.distances, &m_obs.azimuths}) {
    for (const PlaneObs& o : *table) count += o.inUse ? 1 : 0;
  }
  for (const PointNo i : m_net->layout.NewPoints()) count -= m_isLeftOut[i] == 0 ? 2 : 0;
  return count - OrientationCount();
}

}  // namespace brenu
