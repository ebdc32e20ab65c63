#include "core/snooping.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace brenu {

namespace {

constexpr double kLeastRedundancy = 0.05;  // below this others hardly check an observation
constexpr std::size_t kMostChanges = 40;   // before everything is adjusted anew
constexpr int kMostBatches = 2000;

// The equations of all observations, one after the other.
class Equations {
 public:
  void Take(const SnoopedNetwork& network) {
    m_first.assign(1, 0);
    m_unknowns.clear();
    m_coefficients.clear();
    Term terms[SnoopedNetwork::kMostTerms];
    for (std::size_t i = 0; i < network.Count(); ++i) {
      const std::size_t count = network.Terms(i, terms);
      for (std::size_t k = 0; k < count; ++k) {
        m_unknowns.push_back(terms[k].unknown);
        m_coefficients.push_back(terms[k].coefficient);
      }
      m_first.push_back(m_unknowns.size());
    }
  }

  double Along(std::size_t i, const std::vector<double>& g) const {
    double sum = 0.0;
    for (std::size_t k = m_first[i]; k < m_first[i + 1]; ++k) {
      sum += m_coefficients[k] * g[static_cast<std::size_t>(m_unknowns[k])];
    }
    return sum;
  }
  void Spread(std::size_t i, std::vector<double>& to) const {
    for (std::size_t k = m_first[i]; k < m_first[i + 1]; ++k) {
      to[static_cast<std::size_t>(m_unknowns[k])] = m_coefficients[k];
    }
  }

 private:
  std::vector<std::size_t> m_first;  // with one entry more
  std::vector<std::int32_t> m_unknowns;
  std::vector<double> m_coefficients;
};

class Snooping {
 public:
  Snooping(SnoopedNetwork& network, double critical)
      : m_network(network), m_critical(critical), m_items(network.Count()) {}

  SnoopingResult Run(const std::function<void(int)>& announceRound) {
    for (int batch = 0; batch < kMostBatches; ++batch) {
      Refresh();
      if (batch == 0) RecordWhatIsOut();
      if (Findings misfit = m_network.ControlMisfit(Limit()); !misfit.empty()) {
        // The blame may have been put on what was out from the beginning.
        if (batch > 0 || !PutAllIn()) {
          m_result.outcome.findings = std::move(misfit);
          break;
        }
      } else if (!TakeOutBatch(announceRound) && !TryAgain()) {
        break;
      }
      if (Outcome converged = m_network.Converge(); !converged.ok) {
        m_result.outcome = std::move(converged);
        return std::move(m_result);
      }
    }
    CountUntested();
    return std::move(m_result);
  }

 private:
  struct Item {
    bool isInUse = false;
    bool isLeftOut = false;
    bool isFinal = false;  // came in again when it was tried: the next time it stays out
    double residual = 0.0;
    double variance = 0.0;
    double cofactor = 0.0;  // of the adjusted observation

    double ResidualVariance() const { return variance - cofactor; }
    bool IsChecked() const { return ResidualVariance() > kLeastRedundancy * variance; }
    // Of an observation in use that others check; 0 for any other.
    double TestValue() const {
      if (!isInUse || !IsChecked()) return 0.0;
      return std::fabs(residual) / std::sqrt(ResidualVariance());
    }
    // Of one that is out, as if it were in.
    double PredictionTest() const { return std::fabs(residual) / std::sqrt(variance + cofactor); }
  };
  // What a change of the observations in use has added to the cofactors: g g^T / d.
  struct Change {
    std::vector<double> g;  // Q a^T, by unknown
    double d;
  };

  // Everything from the adjustment as it stands.
  void Refresh() {
    m_changes.clear();
    m_network.Normal().KeepFactors();
    m_equations.Take(m_network);
    Term terms[SnoopedNetwork::kMostTerms];
    for (std::size_t i = 0; i < m_items.size(); ++i) {
      Item& item = m_items[i];
      const SnoopedNetwork::Observation o = m_network.At(i);
      item.isInUse = o.isInUse;
      item.isLeftOut = o.isLeftOut;
      item.residual = o.residual;
      item.variance = o.variance;
      if (o.isLeftOut) continue;
      const std::size_t count = m_network.Terms(i, terms);
      item.cofactor = m_network.Normal().QuadraticForm({terms, count});
    }
  }

  void RecordWhatIsOut() {
    for (std::size_t i = 0; i < m_items.size(); ++i) {
      const Item& item = m_items[i];
      if (item.isInUse || item.isLeftOut) continue;
      m_result.takenOut.push_back({i, item.PredictionTest(), {}});
    }
  }

  // What a control point has to exceed to take the blame.
  double Limit() const {
    constexpr double kClearly = 1.2;
    double largest = m_critical;
    for (const Item& item : m_items) largest = std::max(largest, item.TestValue());
    return kClearly * largest;
  }

  // False when none exceeds the critical value.
  bool TakeOutBatch(const std::function<void(int)>& announceRound) {
    while (m_changes.size() < kMostChanges) {
      std::size_t worst = m_items.size();
      double largest = m_critical;
      for (std::size_t i = 0; i < m_items.size(); ++i) {
        const double value = m_items[i].TestValue();
        if (!(value > largest)) continue;
        largest = value;
        worst = i;
      }
      if (worst == m_items.size()) break;
      if (announceRound) announceRound(++m_round);
      TakeOut(worst);
    }
    return !m_changes.empty();
  }

  void TakeOut(std::size_t i) {
    std::vector<double> g = Effect(i);
    m_result.takenOut.push_back({i, m_items[i].TestValue(), IndistinguishableFrom(i, g)});
    SetInUse(i, false);
    Apply(i, std::move(g), m_items[i].ResidualVariance());
  }

  // Puts back what agrees with the others after all, the best first; false when nothing does.
  bool TryAgain() {
    while (m_changes.size() < kMostChanges) {
      std::size_t best = m_items.size();
      double least = m_critical;
      for (const SnoopedOut& out : m_result.takenOut) {
        const Item& item = m_items[out.number];
        if (item.isFinal || item.isLeftOut || !(item.PredictionTest() < least)) continue;
        least = item.PredictionTest();
        best = out.number;
      }
      if (best == m_items.size()) break;
      m_items[best].isFinal = true;
      SetInUse(best, true);
      Apply(best, Effect(best), -(m_items[best].variance + m_items[best].cofactor));
      std::erase_if(m_result.takenOut,
                    [best](const SnoopedOut& out) { return out.number == best; });
    }
    return !m_changes.empty();
  }

  // False when none is out.
  bool PutAllIn() {
    if (m_result.takenOut.empty()) return false;
    for (const SnoopedOut& out : m_result.takenOut) SetInUse(out.number, true);
    m_result.takenOut.clear();
    return true;
  }

  void SetInUse(std::size_t i, bool isInUse) {
    m_items[i].isInUse = isInUse;
    m_network.SetInUse(i, isInUse);
  }

  // Q a^T with the cofactors as they are after all changes.
  std::vector<double> Effect(std::size_t i) {
    std::vector<double> g(m_network.Normal().Solution().size(), 0.0);
    m_equations.Spread(i, g);
    g = m_network.Normal().SolveAgain(g);
    for (const Change& change : m_changes) {
      const double part = m_equations.Along(i, change.g) / change.d;
      for (std::size_t k = 0; k < g.size(); ++k) g[k] += part * change.g[k];
    }
    return g;
  }

  // Taking out: d is the variance of the residual; putting in: that of the prediction, negative.
  void Apply(std::size_t i, std::vector<double> g, double d) {
    const double part = m_items[i].residual / d;
    for (std::size_t k = 0; k < m_items.size(); ++k) {
      if (m_items[k].isLeftOut) continue;
      const double common = m_equations.Along(k, g);
      m_items[k].residual += common * part;
      m_items[k].cofactor += common * common / d;
    }
    m_changes.push_back({std::move(g), d});
  }

  std::vector<std::size_t> IndistinguishableFrom(std::size_t i,
                                                 const std::vector<double>& g) const {
    constexpr double kCorrelation = 0.98;
    std::vector<std::size_t> others;
    for (std::size_t k = 0; k < m_items.size(); ++k) {
      const Item& other = m_items[k];
      if (k == i || !other.isInUse || !other.IsChecked()) continue;
      const double covariance = std::fabs(m_equations.Along(k, g));
      const double scale = std::sqrt(m_items[i].ResidualVariance() * other.ResidualVariance());
      if (covariance > kCorrelation * scale) others.push_back(k);
    }
    return others;
  }

  void CountUntested() {
    for (const Item& item : m_items) m_result.untested += item.isInUse && !item.IsChecked() ? 1 : 0;
  }

  SnoopedNetwork& m_network;
  double m_critical;
  int m_round = 0;
  Equations m_equations;
  std::vector<Item> m_items;
  std::vector<Change> m_changes;  // since the last refreshing
  SnoopingResult m_result;
};

}  // namespace

SnoopingResult Snoop(SnoopedNetwork& network, double critical,
                     const std::function<void(int)>& announceRound) {
  return Snooping(network, critical).Run(announceRound);
}

}  // namespace brenu
