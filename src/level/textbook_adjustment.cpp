// The adjustment of heights by the rules of textbooks (docs/computations.md, "Two sets of rules").
#include <cmath>
#include <utility>

#include "core/parallel.h"
#include "core/snooping.h"
#include "level/level_adjustment.h"

namespace brenu {

namespace {
constexpr std::int32_t kAlwaysSparse = -1;
}  // namespace

LevelAdjustment::LevelAdjustment(std::shared_ptr<const LevelNet> net, double apriori)
    : m_net(std::move(net)), m_normal(kAlwaysSparse), m_apriori(apriori) {}

Outcome LevelAdjustment::AdjustAsTextbook() {
  const ThreadTeam team;
  Outcome outcome = ApproximateAsTextbook();
  if (outcome.ok) outcome += Solve();
  if (outcome.ok) outcome += FinishAsTextbook();
  return outcome;
}

// Approximate heights; what they do not reach is left out.
Outcome LevelAdjustment::ApproximateAsTextbook() {
  Outcome outcome = CalcApproxHeight();
  const NetworkLayout& net = m_net->layout;
  m_isLeftOut.Assign(m_net->points.Size(), 0);
  m_state.Assign(net.Sights().Size(), LineState::kInUse);
  if (!outcome.ok) {
    if (net.Sights().IsEmpty()) return outcome;
    Finding unreached = std::move(outcome.findings.front());
    outcome = {};
    for (const std::string& name : unreached.names) m_isLeftOut[net.IndexOfPoint(name)] = 1;
    if (static_cast<std::int32_t>(unreached.names.size()) == net.NewPointCount()) return unreached;
    outcome.findings.push_back(Warning(BRENU_HEIGHTS_LEFT_OUT, std::move(unreached.names)));
  }
  const auto isOut = [&](Slot slot) {
    return net.PointOf(slot).IsNone() || m_isLeftOut[net.PointOf(slot)] != 0;
  };
  for (const SightNo k : net.Sights().Indices()) {
    const Sight& s = net.At(k);
    // A line of no or no finite length has no weight to take part with.
    const bool hasWeight = std::isfinite(m_weight[k]) && m_weight[k] > 0.0;
    if (isOut(s.station) || isOut(s.target) || !hasWeight) m_state[k] = LineState::kLeftOut;
  }
  return outcome;
}

Outcome LevelAdjustment::Solve() {
  const NetworkLayout& net = m_net->layout;
  if (!m_normal.HasPattern()) m_normal.SetPattern(MakePattern());
  m_normal.Reset();
  for (const SightNo k : net.Sights().Indices()) {
    if (m_state[k] != LineState::kInUse) continue;
    const Sight& s = net.At(k);
    const Term equation[] = {{net.PointOf(s.station).Number(), -1.0},
                             {net.PointOf(s.target).Number(), 1.0}};
    m_normal.Add(equation, m_weight[k],
                 m_heights[s.target] - m_heights[s.station] - s.obs.heightDiff);
  }
  // Much more firmly than any line, but so that a cofactor still tells what the lines say.
  constexpr double kFirmness = 1e8;
  m_holding.Assign(m_net->points.Size(), 0.0);
  for (const PointNo i : net.Points()) {
    if (!net.IsControl(i) && m_isLeftOut[i] == 0) continue;
    const double own = m_normal.DiagonalElement(i.Number());
    m_holding[i] = own > 0.0 ? kFirmness * own : 1.0;
    m_normal.Hold(i.Number(), m_holding[i]);
  }
  if (!m_normal.SolveDetermined().empty()) return Error(BRENU_HEIGHTS_SINGULAR);
  const auto solution = m_normal.Solution();
  for (const Slot slot : net.Slots()) {
    const PointNo point = net.PointOf(slot);
    if (point.IsNone() || net.IsControl(point) || m_isLeftOut[point] != 0) continue;
    m_solution[point] += solution[point.Position()];
    m_heights[slot] += solution[point.Position()];
  }
  CalcVtPV();
  return {};
}

Outcome LevelAdjustment::FinishAsTextbook() {
  double pvv = 0.0;
  for (const SightNo k : m_weight.Indices()) {
    if (!IsRemoved(k)) pvv += m_weight[k] * m_residual[k] * m_residual[k];
  }
  m_sigma0 = std::sqrt(pvv / Redundancy());
  CalcLevelPrecision();
  m_benchMarkFits = FitBenchMarks();
  Outcome outcome = ExplainNotFinite();
  outcome.ok = outcome.findings.empty();
  return outcome;
}

std::vector<BenchMarkFit> LevelAdjustment::FitBenchMarks() const {
  std::vector<BenchMarkFit> fits;
  const NetworkLayout& net = m_net->layout;
  Table<PointNo, double> pull;  // -A'Pv
  pull.Assign(m_net->points.Size(), 0.0);
  for (const SightNo k : net.Sights().Indices()) {
    if (m_state[k] != LineState::kInUse) continue;
    pull[net.PointOf(net.At(k).station)] += m_weight[k] * m_residual[k];
    pull[net.PointOf(net.At(k).target)] -= m_weight[k] * m_residual[k];
  }
  // Held with the weight W a bench mark has the cofactor 1 / (W + S), S being what the lines would
  // weigh it with, were it free.
  for (const PointNo i : net.ControlPoints()) {
    if (!(m_holding[i] > 1.0)) continue;  // nothing touches it
    const double s = 1.0 / m_normal.Cofactor(i.Number(), i.Number()) - m_holding[i];
    if (!(s > 1e-14 * m_holding[i])) continue;
    fits.push_back({i, pull[i] / s, pull[i] / (std::sqrt(s) * m_apriori)});
  }
  return fits;
}

// The network as data snooping sees it; residuals in units of the a-priori error.
class LevelAdjustment::Snooped : public SnoopedNetwork {
 public:
  explicit Snooped(LevelAdjustment& net) : m_net(net) {}

  std::size_t Count() const override { return m_net.m_state.Size(); }
  Observation At(std::size_t number) const override {
    const SightNo k(number);
    const LineState state = m_net.m_state[k];
    return {state == LineState::kInUse, state == LineState::kLeftOut,
            m_net.m_residual[k] / m_net.m_apriori, 1.0 / m_net.m_weight[k]};
  }
  std::size_t Terms(std::size_t number, std::span<Term, kMostTerms> terms) const override {
    const NetworkLayout& net = m_net.m_net->layout;
    const Sight& s = net.At(SightNo(number));
    terms[0] = {net.PointOf(s.station).Number(), -1.0};
    terms[1] = {net.PointOf(s.target).Number(), 1.0};
    return 2;
  }
  void SetInUse(std::size_t number, bool isInUse) override {
    m_net.m_state[SightNo(number)] = isInUse ? LineState::kInUse : LineState::kTakenOut;
  }
  Outcome Converge() override { return m_net.Solve(); }
  NormalEquations& Normal() override { return m_net.m_normal; }
  Findings ControlMisfit(double largest) const override {
    Findings found;
    for (const BenchMarkFit& fit : m_net.FitBenchMarks()) {
      if (!(std::fabs(fit.w) > largest)) continue;
      largest = std::fabs(fit.w);
      const NetworkLayout& net = m_net.m_net->layout;
      found = {Warning(BRENU_CONTROL_DOES_NOT_FIT, {net.Names().NameAt(net.SlotOf(fit.point)), "H"},
                       {fit.correction, largest})};
    }
    return found;
  }

 private:
  LevelAdjustment& m_net;
};

Outcome LevelAdjustment::SnoopAsTextbook(const OutlierTest& test,
                                         const std::function<void(int)>& announceRound) {
  const ThreadTeam team;
  Outcome outcome = ApproximateAsTextbook();
  if (outcome.ok) outcome += Solve();
  if (!outcome.ok) return outcome;
  Snooped network(*this);
  SnoopingResult result = Snoop(network, test, announceRound);
  outcome += std::move(result.outcome);
  if (!outcome.ok) return outcome;
  m_untested = result.untested;
  for (const SnoopedOut& out : result.takenOut) {
    const SightNo k(out.number);
    LevelTakenOut record{k, out.testValue, -m_residual[k], {}};
    for (const std::size_t other : out.alternatives) record.alternatives.emplace_back(other);
    m_takenOut.push_back(std::move(record));
  }
  return outcome += FinishAsTextbook();
}

}  // namespace brenu
