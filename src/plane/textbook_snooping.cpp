// Data snooping by the rules of textbooks (W. Baarda, A testing procedure for use in geodetic
// networks), with the effect of taking one observation out computed from one solution each.
#include <algorithm>
#include <cmath>
#include <utility>

#include "core/angles.h"
#include "core/normal_quantile.h"
#include "plane/approximate/candidates.h"
#include "plane/plane_adjustment.h"

namespace brenu {

namespace {
constexpr double kLeastRedundancy = 0.05;  // below this others hardly check an observation
}  // namespace

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
      m_rated.push_back({&o, std::fabs(v) / m_net.DistanceError(o.observed)});
    }
    const double limit = kManyErrors * Scale();
    for (const Rated& r : m_rated) Count(*r.observation, r.ratio > limit);
    std::vector<PlaneObs*> found;
    for (const Rated& r : m_rated) {
      const PlaneObs& o = *r.observation;
      if (r.ratio > limit && HasPlenty(o.from) && HasPlenty(o.to)) found.push_back(r.observation);
    }
    return found;
  }

 private:
  static constexpr double kManyErrors = 10.0;  // standard errors, in the scale of all

  struct Rated {
    PlaneObs* observation;
    double ratio;  // residual by standard error
  };

  // With circles turned as most of their directions say.
  void RateDirections() {
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
        m_rated.push_back({&*o, std::fabs(v) / m_net.m_param.MO});
      }
    }
  }

  // Of the residuals as a whole, whatever a part of them does.
  double Scale() const {
    std::vector<double> ratios;
    for (const Rated& r : m_rated) ratios.push_back(r.ratio);
    if (ratios.empty()) return 1.0;
    const auto middle = ratios.begin() + static_cast<std::ptrdiff_t>(ratios.size() / 2);
    std::nth_element(ratios.begin(), middle, ratios.end());
    constexpr double kOfNormal = 0.6745;  // the median of the amounts of a normal distribution
    return std::max(1.0, *middle / kOfNormal);
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

// What the tests need of all observations, kept up to date from round to round.
class PlaneAdjustment::Snooping {
 public:
  Snooping(PlaneAdjustment& net, double critical) : m_net(net), m_critical(critical) {
    const ObservationTables& obs = net.m_obs;
    for (std::size_t s = 0; s < obs.sets.size(); ++s) {
      for (std::int32_t k = obs.sets[s].first; k < obs.sets[s].end; ++k) {
        m_items.push_back({PlaneKind::kDirection, static_cast<std::size_t>(k), s});
      }
    }
    for (std::size_t k = 0; k < obs.distances.size(); ++k) {
      m_items.push_back({PlaneKind::kDistance, k, 0});
    }
    for (std::size_t k = 0; k < obs.azimuths.size(); ++k) {
      m_items.push_back({PlaneKind::kAzimuth, k, 0});
    }
  }

  Outcome Run(const std::function<void(int)>& announceRound) {
    Outcome outcome;
    for (int batch = 0; batch < kMostBatches; ++batch) {
      Refresh();
      if (batch == 0) RecordGrossErrors();
      if (Finding finding = ControlMisfit(); finding.code != BRENU_NOTHING) {
        if (batch == 0 && PutAllIn()) {  // the blame may have been put on them
          outcome += m_net.Converge();
          if (!outcome.ok) return outcome;
          continue;
        }
        outcome.findings.push_back(std::move(finding));
        break;
      }
      if (!TakeOutBatch(announceRound) && !TryAgain()) break;
      outcome += m_net.Converge();
      if (!outcome.ok) return outcome;
    }
    RecordErrors();
    return outcome;
  }

 private:
  // An observation, or what is known of it.
  struct Item {
    PlaneKind kind;
    std::size_t index;  // in its table
    std::size_t set;    // of a direction
    double residual = 0.0;
    double cofactor = 0.0;  // of the adjusted observation
    double variance = 0.0;  // a priori
    bool isFinal = false;   // taken out again after it was tried: it stays out
  };
  // What taking an observation out, or in, has added to the cofactors: g g^T / d.
  struct Change {
    std::vector<double> g;  // Q a^T, by unknown
    double d;
  };

  static constexpr int kMostBatches = 1000;
  static constexpr std::size_t kMostChanges = 40;  // before everything is computed anew

  PlaneObs& At(const Item& item) const {
    ObservationTables& obs = m_net.m_obs;
    if (item.kind == PlaneKind::kDirection) return obs.directions[item.index];
    return item.kind == PlaneKind::kDistance ? obs.distances[item.index]
                                             : obs.azimuths[item.index];
  }
  PlaneObsId IdOf(const Item& item) const { return {item.kind, At(item).sight}; }

  // Calls use(terms) with the coefficients of the observation.
  template <typename Use>
  auto WithTerms(const Item& item, Use use) const {
    const PlaneObs& o = At(item);
    if (item.kind == PlaneKind::kDistance) {
      return use(m_net.DistanceCoefficients(o.from, o.to).Terms());
    }
    LineEquation line = m_net.DirectionCoefficients(o.from, o.to);
    const std::int32_t orientation =
        item.kind == PlaneKind::kDirection ? m_net.m_obs.sets[item.set].orientation : -1;
    return orientation < 0 ? use(line.Terms()) : use(line.TermsWithOrientation(orientation));
  }
  double Along(const Item& item, const std::vector<double>& g) const {
    return WithTerms(item, [&g](std::span<const Term> terms) {
      double sum = 0.0;
      for (const Term& t : terms) sum += t.coefficient * g[static_cast<std::size_t>(t.unknown)];
      return sum;
    });
  }

  static double ResidualVariance(const Item& item) { return item.variance - item.cofactor; }
  // Of an observation in use that others check; 0 for any other.
  double TestValue(const Item& item) const {
    if (!At(item).inUse || !(ResidualVariance(item) > kLeastRedundancy * item.variance)) return 0.0;
    return std::fabs(item.residual) / std::sqrt(ResidualVariance(item));
  }

  // Everything from the adjustment as it stands.
  void Refresh() {
    m_changes.clear();
    m_net.m_normal.KeepFactors();
    for (Item& item : m_items) {
      const PlaneObs& o = At(item);
      if (o.leftOut) continue;
      const double error = item.kind == PlaneKind::kDistance ? m_net.DistanceError(o.observed)
                                                             : m_net.m_param.MO;
      item.variance = error * error;
      item.residual = o.residual;
      item.cofactor = WithTerms(item, [this](std::span<const Term> terms) {
        return m_net.m_normal.QuadraticForm(terms);
      });
    }
  }

  Item* FindWorst() {
    Item* worst = nullptr;
    double largest = m_critical;
    for (Item& item : m_items) {
      const double value = TestValue(item);
      if (!(value > largest)) continue;
      largest = value;
      worst = &item;
    }
    return worst;
  }

  // False when none exceeds the critical value.
  bool TakeOutBatch(const std::function<void(int)>& announceRound) {
    while (m_changes.size() < kMostChanges) {
      Item* const worst = FindWorst();
      if (worst == nullptr) break;
      if (announceRound) announceRound(++m_rounds);
      TakeOut(*worst);
    }
    return !m_changes.empty();
  }

  void TakeOut(Item& item) {
    TakenOut record{IdOf(item), TestValue(item), 0.0, {}};
    const std::vector<double> g = Effect(item);
    record.alternatives = IndistinguishableFrom(item, g);
    m_net.m_takenOut.push_back(std::move(record));
    At(item).inUse = false;
    Apply(item, g, ResidualVariance(item));
  }

  // Q a^T with the cofactors as they are after all changes.
  std::vector<double> Effect(const Item& item) const {
    std::vector<double> g(m_net.m_normal.Solution().size(), 0.0);
    WithTerms(item, [&g](std::span<const Term> terms) {
      for (const Term& t : terms) g[static_cast<std::size_t>(t.unknown)] = t.coefficient;
    });
    g = m_net.m_normal.SolveAgain(g);
    for (const Change& change : m_changes) {
      const double part = Along(item, change.g) / change.d;
      for (std::size_t i = 0; i < g.size(); ++i) g[i] += part * change.g[i];
    }
    return g;
  }

  // Taking out: d is the variance of the residual; putting in: that of the prediction, reversed.
  void Apply(const Item& item, std::vector<double> g, double d) {
    const double part = item.residual / d;
    for (Item& other : m_items) {
      if (At(other).leftOut) continue;
      const double common = Along(other, g);
      other.residual += common * part;
      other.cofactor += common * common / d;
    }
    m_changes.push_back({std::move(g), d});
  }

  // Others in use whose test values are correlated with this one's by more than 0.98.
  std::vector<PlaneObsId> IndistinguishableFrom(const Item& item,
                                                const std::vector<double>& g) const {
    constexpr double kCorrelation = 0.98;
    std::vector<PlaneObsId> others;
    for (const Item& other : m_items) {
      if (&other == &item || TestValue(other) == 0.0) continue;
      const double covariance = std::fabs(Along(other, g));
      const double scale = std::sqrt(ResidualVariance(item) * ResidualVariance(other));
      if (covariance > kCorrelation * scale) others.push_back(IdOf(other));
    }
    return others;
  }

  // Puts back what agrees with the others after all, the best first; false when nothing does.
  bool TryAgain() {
    while (m_changes.size() < kMostChanges) {
      Item* best = nullptr;
      double least = m_critical;
      for (Item& item : m_items) {
        const PlaneObs& o = At(item);
        if (o.inUse || o.leftOut || item.isFinal) continue;
        const double value = PredictionTest(item);
        if (!(value < least)) continue;
        least = value;
        best = &item;
      }
      if (best == nullptr) break;
      PutIn(*best);
    }
    return !m_changes.empty();
  }

  void PutIn(Item& item) {
    item.isFinal = true;
    At(item).inUse = true;
    Apply(item, Effect(item), -(item.variance + item.cofactor));
    const SightNo sight = At(item).sight;
    std::erase_if(m_net.m_takenOut, [&](const TakenOut& t) {
      return t.id.kind == item.kind && t.id.sight == sight;
    });
  }

  // A control point with a test value larger than that of any observation.
  Finding ControlMisfit() const {
    constexpr double kClearly = 1.2;
    double largest = m_critical;
    for (const Item& item : m_items) largest = std::max(largest, TestValue(item));
    Finding finding;
    for (const ControlFit& fit : m_net.ControlFits()) {
      const bool isX = std::fabs(fit.wx) > std::fabs(fit.wy);
      const double w = isX ? fit.wx : fit.wy;
      if (!(std::fabs(w) > kClearly * largest)) continue;
      largest = std::fabs(w) / kClearly;
      const NetworkLayout& layout = m_net.m_net->layout;
      finding = Warning(BRENU_CONTROL_DOES_NOT_FIT,
                        {layout.Names().NameAt(layout.SlotOf(fit.point)), isX ? "X" : "Y"},
                        {isX ? fit.ownDx : fit.ownDy, std::fabs(w)});
    }
    return finding;
  }

  // Of what was out from the beginning.
  void RecordGrossErrors() {
    for (const Item& item : m_items) {
      const PlaneObs& o = At(item);
      if (o.inUse || o.leftOut) continue;
      m_net.m_takenOut.push_back({IdOf(item), PredictionTest(item), 0.0, {}});
    }
  }
  // False when none is out.
  bool PutAllIn() {
    if (m_net.m_takenOut.empty()) return false;
    m_net.m_takenOut.clear();
    for (const Item& item : m_items) At(item).inUse = !At(item).leftOut;
    return true;
  }
  // Of an observation that is out: its test value were it in.
  static double PredictionTest(const Item& item) {
    return std::fabs(item.residual) / std::sqrt(item.variance + item.cofactor);
  }

  // From the adjustment without them: observed minus adjusted.
  void RecordErrors() {
    for (TakenOut& record : m_net.m_takenOut) {
      const auto& table = record.id.kind == PlaneKind::kDirection  ? m_net.m_obs.directions
                          : record.id.kind == PlaneKind::kDistance ? m_net.m_obs.distances
                                                                   : m_net.m_obs.azimuths;
      if (const PlaneObs* o = FindObs(table, record.id.sight)) record.error = -o->residual;
    }
  }

  PlaneAdjustment& m_net;
  double m_critical;
  int m_rounds = 0;
  std::vector<Item> m_items;
  std::vector<Change> m_changes;  // since the last refreshing
};

// Gross errors of which there are many hide each other from the tests, and one of a sight that
// holds a point by itself puts the blame on all others.  The approximate coordinates are those that
// most observations agree on: what contradicts them badly at points that have plenty of others
// begins outside, and comes in when it agrees after all.
void PlaneAdjustment::TakeOutGrossErrors() {
  GrossErrors errors(*this);
  for (PlaneObs* o : errors.Find()) o->inUse = false;
}

Outcome PlaneAdjustment::SnoopAsTextbook(double alpha,
                                         const std::function<void(int)>& announceRound) {
  Outcome outcome = PlaceAndConverge(true);
  if (!outcome.ok) return outcome;
  outcome += Snooping(*this, NormalQuantile(1.0 - alpha * 0.5)).Run(announceRound);
  if (outcome.ok) FinishAsTextbook();
  return outcome;
}

}  // namespace brenu
