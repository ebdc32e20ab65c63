#include "level/level_adjustment.h"

#include <cmath>
#include <utility>

#include "core/parallel.h"

namespace brenu {

namespace {
// Known heights stay unknowns of the system and are held by this diagonal element.
constexpr double kFixingWeight = 1e30;
}  // namespace

LevelAdjustment::LevelAdjustment(std::shared_ptr<const LevelNet> net,
                                 std::int32_t mostPackedUnknowns)
    : m_net(std::move(net)), m_normal(mostPackedUnknowns) {}

bool LevelAdjustment::PrepareLevel() {
  const NetworkLayout& net = m_net->layout;
  const std::size_t points = m_net->points.Size();
  const std::size_t sights = net.Sights().Size();
  m_pointSigma.Assign(points, 0.0);
  m_obsSigma.Assign(sights, 0.0);
  // A name that no point has stands at height 0.
  m_heights.Assign(net.Slots().Size(), 0.0);
  for (const PointNo i : net.Points()) m_heights[net.SlotOf(i)] = m_net->points[i].h;
  m_weight.Reserve(sights);
  for (const Sight& s : net.Sights()) m_weight.Add(1000.0 / s.obs.distance);
  // Results are there when these two are: should memory end on the way, there are none.
  m_solution.Assign(points, 0.0);
  m_residual.Assign(sights, 0.0);
  return points > 0 && sights > 0;
}

Outcome LevelAdjustment::LevelAdjust() {
  const ThreadTeam team;
  if (Outcome reached = CalcApproxHeight(); !reached.ok) return reached;
  if (Outcome formed = FormNormalEquation(); !formed.ok) return formed;
  HoldKnownHeights();
  if (Outcome solved = SolveHeight(); !solved.ok) return solved;
  SetSigma0(CalcVtPV());
  CalcLevelPrecision();
  return ExplainNotFinite();
}

// Lines of weight 0 stay in the pattern.
UnknownPattern LevelAdjustment::MakePattern() const {
  const NetworkLayout& net = m_net->layout;
  UnknownPattern pattern = PointPattern(net.PointCount(), 1);
  for (const Sight& s : net.Sights()) {
    pattern.Connect(net.PointOf(s.station).Number(), net.PointOf(s.target).Number());
  }
  return pattern;
}

Outcome LevelAdjustment::FormNormalEquation() {
  if (!m_normal.HasPattern()) m_normal.SetPattern(MakePattern());
  m_normal.Reset();
  const NetworkLayout& net = m_net->layout;
  for (const SightNo k : net.Sights().Indices()) {
    const Sight& s = net.At(k);
    const PointNo i = net.PointOf(s.station);
    const PointNo j = net.PointOf(s.target);
    if (i.IsNone() || j.IsNone()) {
      return Error(BRENU_NAME_WITHOUT_POINT,
                   {net.Names().NameAt(s.station), net.Names().NameAt(s.target)});
    }
    const double computed = m_heights[s.target] - m_heights[s.station];
    const Term equation[] = {{i.Number(), -1.0}, {j.Number(), 1.0}};
    m_normal.Add(equation, m_weight[k], computed - s.obs.heightDiff);
  }
  return {};
}

void LevelAdjustment::HoldKnownHeights() {
  const NetworkLayout& net = m_net->layout;
  for (const PointNo i : net.ControlPoints()) {
    m_normal.ReplaceDiagonal(net.PointOf(net.SlotOf(i)).Number(), kFixingWeight);
  }
}

Outcome LevelAdjustment::SolveHeight() {
  if (!m_normal.Solve()) return Error(BRENU_HEIGHTS_SINGULAR);
  const NetworkLayout& net = m_net->layout;
  const auto solution = m_normal.Solution();
  for (const Slot slot : net.Slots()) {
    const PointNo point = net.PointOf(slot);
    m_solution[point] = solution[point.Position()];
    m_heights[slot] += solution[point.Position()];
  }
  return {};
}

double LevelAdjustment::CalcVtPV() {
  double sum = 0.0;
  const NetworkLayout& net = m_net->layout;
  for (const SightNo k : net.Sights().Indices()) {
    const Sight& s = net.At(k);
    const double v = m_heights[s.target] - m_heights[s.station] - s.obs.heightDiff;
    m_residual[k] = v;
    sum += m_weight[k] * v * v;
  }
  return sum;
}

// The divisor is the number of new heights, not the redundancy (docs/computations.md, "Levelling").
void LevelAdjustment::SetSigma0(double vtpv) {
  m_sigma0 = std::sqrt(vtpv / m_net->layout.NewPointCount());
}

double LevelAdjustment::CofactorOfDifference(const Sight& sight) const {
  const std::int32_t i = m_net->layout.PointOf(sight.station).Number();
  const std::int32_t j = m_net->layout.PointOf(sight.target).Number();
  return m_normal.Cofactor(j, j) + m_normal.Cofactor(i, i) - 2.0 * m_normal.Cofactor(i, j);
}

// By the rules of textbooks errors are a priori when nothing is redundant.
double LevelAdjustment::PrecisionScale() const {
  return !m_state.IsEmpty() && Redundancy() <= 0 ? m_apriori : m_sigma0;
}

void LevelAdjustment::CalcLevelPrecision() {
  const double scale = PrecisionScale();
  const NetworkLayout& net = m_net->layout;
  for (const PointNo i : net.Points()) {
    m_pointSigma[i] = scale * std::sqrt(m_normal.Cofactor(i.Number(), i.Number()));
  }
  for (const SightNo k : net.Sights().Indices()) {
    m_obsSigma[k] = scale * std::sqrt(CofactorOfDifference(net.At(k)));
  }
}

// The results stand all the same.
Outcome LevelAdjustment::ExplainNotFinite() const {
  Outcome outcome;
  const NetworkLayout& net = m_net->layout;
  for (const PointNo i : net.Points()) {
    if (std::isfinite(m_heights[net.SlotOf(i)])) continue;
    outcome.findings.push_back(Error(BRENU_HEIGHTS_NOT_FINITE));
    return outcome;
  }
  if (net.NewPointCount() > 0 && Redundancy() > 0 && !std::isfinite(m_sigma0)) {
    outcome.findings.push_back(Error(BRENU_HEIGHT_RESIDUALS_TOO_LARGE));
  }
  return outcome;
}

}  // namespace brenu
