// Data snooping by the rules of textbooks.
#include <algorithm>
#include <cmath>
#include <utility>

#include "core/angles.h"
#include "core/median.h"
#include "core/parallel.h"
#include "core/snooping.h"
#include "plane/approximate/candidates.h"
#include "plane/plane_adjustment.h"

namespace brenu {

// Observations that contradict the approximate coordinates.
class PlaneAdjustment::GrossErrors {
 public:
  explicit GrossErrors(PlaneAdjustment& net) : m_net(net) {
    const std::size_t points = net.m_net->points.Size();
    m_measures.Assign(points, 0);
    m_suspects.Assign(points, 0);
  }

  std::vector<PlaneObs*> Find() {
    RateDirections();
    for (PlaneObs& o : m_net.m_obs.distances) {
      if (!o.inUse) continue;
      const double v = m_net.DistanceCoefficients(o.from, o.to).value - o.observed;
      m_rated.push_back({&o, std::fabs(v) / m_net.DistanceError(o.observed), true});
    }
    const double limit = kManyErrors * Scale();
    for (const Rated& r : m_rated) Count(*r.observation, r.ratio > limit);
    std::vector<PlaneObs*> found;
    for (const Rated& r : m_rated) {
      const PlaneObs& o = *r.observation;
      if (r.ratio > limit && r.othersJudge && HasPlenty(o.from) && HasPlenty(o.to)) {
        found.push_back(r.observation);
      }
    }
    return found;
  }

 private:
  static constexpr double kManyErrors = 10.0;  // standard errors, in the scale of all

  struct Rated {
    PlaneObs* observation;
    double ratio;  // residual by standard error
    bool othersJudge;
  };

  // With circles turned as most of their directions say, which takes four.
  void RateDirections() {
    constexpr std::size_t kMajority = 4;
    const approximate::Accuracy accuracy(m_net.m_param);
    std::vector<double> angles;
    std::vector<double> lengths;
    for (const DirectionSet& set : m_net.m_obs.sets) {
      angles.clear();
      lengths.clear();
      const auto begin = m_net.m_obs.directions.begin() + set.first;
      const auto end = m_net.m_obs.directions.begin() + set.end;
      for (auto o = begin; o != end; ++o) {
        if (!o->inUse) continue;
        angles.push_back(m_net.DirectionCoefficients(o->from, o->to).value - o->observed);
        lengths.push_back(m_net.DistanceCoefficients(o->from, o->to).value);
      }
      if (angles.empty()) continue;
      const double common = approximate::CommonOrientation(angles, lengths, accuracy);
      std::size_t k = 0;
      for (auto o = begin; o != end; ++o) {
        if (!o->inUse) continue;
        const double v = HalfCircle(angles[k++] - common) * kRho;
        m_rated.push_back({&*o, std::fabs(v) / m_net.m_param.MO, angles.size() >= kMajority});
      }
    }
  }

  // Of the residuals as a whole, whatever a part of them does.
  double Scale() const {
    std::vector<double> ratios;
    for (const Rated& r : m_rated) ratios.push_back(r.ratio);
    return RobustScale(std::move(ratios));
  }

  void Count(const PlaneObs& o, bool isSuspect) {
    for (const Slot slot : {o.from, o.to}) {
      const PointNo point = m_net.m_net->layout.PointOf(slot);
      ++m_measures[point];
      m_suspects[point] += isSuspect ? 1 : 0;
    }
  }

  bool HasPlenty(Slot slot) const {
    constexpr std::int32_t kPlenty = 6;
    const PointNo point = m_net.m_net->layout.PointOf(slot);
    return m_measures[point] >= kPlenty && 3 * m_suspects[point] <= m_measures[point];
  }

  PlaneAdjustment& m_net;
  std::vector<Rated> m_rated;
  Table<PointNo, std::int32_t> m_measures, m_suspects;
};

// The network as data snooping sees it: directions, then distances, then azimuths.
class PlaneAdjustment::Snooped : public SnoopedNetwork {
 public:
  explicit Snooped(PlaneAdjustment& net) : m_net(net) {
    for (const DirectionSet& set : net.m_obs.sets) {
      for (std::int32_t k = set.first; k < set.end; ++k) m_setOf.push_back(&set);
    }
  }

  std::size_t Count() const override {
    const ObservationTables& obs = m_net.m_obs;
    return obs.directions.size() + obs.distances.size() + obs.azimuths.size();
  }

  Observation At(std::size_t number) const override {
    const PlaneObs& o = Find(number).observation;
    const bool isDistance = IdOf(number).kind == PlaneKind::kDistance;
    const double error = isDistance ? m_net.DistanceError(o.observed) : m_net.m_param.MO;
    return {o.inUse, o.leftOut, o.residual, error * error};
  }

  std::size_t Terms(std::size_t number, std::span<Term, kMostTerms> terms) const override {
    const auto [o, kind] = Find(number);
    const auto copy = [&terms](std::span<const Term> from) {
      std::copy(from.begin(), from.end(), terms.begin());
      return from.size();
    };
    if (kind == PlaneKind::kDistance) {
      return copy(m_net.DistanceCoefficients(o.from, o.to).Terms());
    }
    LineEquation line = m_net.DirectionCoefficients(o.from, o.to);
    const std::int32_t orientation =
        kind == PlaneKind::kDirection ? m_setOf[number]->orientation : -1;
    return copy(orientation < 0 ? line.Terms() : line.TermsWithOrientation(orientation));
  }

  void SetInUse(std::size_t number, bool isInUse) override {
    Find(number).observation.inUse = isInUse;
  }
  Outcome Converge() override { return m_net.Converge(); }
  NormalEquations& Normal() override { return m_net.m_normal; }

  Findings ControlMisfit(double largest) const override {
    Findings found;
    for (const ControlFit& fit : m_net.FitControl()) {
      const bool isX = std::fabs(fit.wx) > std::fabs(fit.wy);
      const double w = std::fabs(isX ? fit.wx : fit.wy);
      if (!(w > largest)) continue;
      largest = w;
      const NetworkLayout& layout = m_net.m_net->layout;
      found = {Warning(BRENU_CONTROL_DOES_NOT_FIT,
                       {layout.Names().NameAt(layout.SlotOf(fit.point)), isX ? "X" : "Y"},
                       {isX ? fit.ownDx : fit.ownDy, w})};
    }
    return found;
  }

  PlaneObsId IdOf(std::size_t number) const {
    const auto [o, kind] = Find(number);
    return {kind, o.sight};
  }

 private:
  struct Found {
    PlaneObs& observation;
    PlaneKind kind;
  };
  Found Find(std::size_t number) const {
    ObservationTables& obs = m_net.m_obs;
    if (number < obs.directions.size()) return {obs.directions[number], PlaneKind::kDirection};
    number -= obs.directions.size();
    if (number < obs.distances.size()) return {obs.distances[number], PlaneKind::kDistance};
    return {obs.azimuths[number - obs.distances.size()], PlaneKind::kAzimuth};
  }

  PlaneAdjustment& m_net;
  std::vector<const DirectionSet*> m_setOf;  // by direction
};

// Gross errors of which there are many hide each other from the tests, and one of a sight that
// holds a point by itself puts the blame on all others.  The approximate coordinates are those that
// most observations agree on: what contradicts them badly at points that have plenty of others
// begins outside, and comes in when it agrees after all.
void PlaneAdjustment::TakeOutGrossErrors() {
  GrossErrors errors(*this);
  for (PlaneObs* o : errors.Find()) o->inUse = false;
}

namespace {
bool LosesPoints(const Outcome& outcome) {
  return std::any_of(outcome.findings.begin(), outcome.findings.end(),
                     [](const Finding& f) { return f.code == BRENU_POINTS_UNDETERMINED; });
}
}  // namespace

Outcome PlaneAdjustment::SnoopAsTextbook(const OutlierTest& test,
                                         const std::function<void(int)>& announceRound) {
  const ThreadTeam team;
  Outcome outcome = PlaceAndConverge(true);
  if (!outcome.ok || LosesPoints(outcome)) {
    *this = PlaneAdjustment(m_net, m_rules);
    outcome = PlaceAndConverge(false);
  }
  if (!outcome.ok) return outcome;
  Snooped network(*this);
  SnoopingResult result = Snoop(network, test, announceRound);
  outcome += std::move(result.outcome);
  if (!outcome.ok) return outcome;
  m_untested = result.untested;
  for (const SnoopedOut& out : result.takenOut) {
    TakenOut record{network.IdOf(out.number), out.testValue, -network.At(out.number).residual, {}};
    for (const std::size_t other : out.alternatives) {
      record.alternatives.push_back(network.IdOf(other));
    }
    m_takenOut.push_back(std::move(record));
  }
  outcome += FinishAsTextbook();
  for (Finding& finding : outcome.findings) {
    if (finding.code == BRENU_CONTROL_DOES_NOT_FIT) RefineControlMisfit(finding);
  }
  return outcome;
}

}  // namespace brenu
