#include "core/snooping.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/parallel.h"

namespace brenu {

namespace {

constexpr double kLeastRedundancy = 0.05;  // below this others hardly check an observation
constexpr double kLeastSeen = 0.001;       // and below this rounding blurs what they say
constexpr std::size_t kMostChanges = 40;   // before everything is adjusted anew
constexpr std::size_t kMostTried = 1000;   // at once
constexpr int kMostBatches = 2000;
constexpr std::size_t kItemsOfPart = 1024;  // computed by one thread

// The equations of all observations, one after the other.
class Equations {
 public:
  void Take(const SnoopedNetwork& network) {
    const std::size_t count = network.Count();
    m_unknowns.resize(SnoopedNetwork::kMostTerms * count);
    m_coefficients.resize(m_unknowns.size());
    m_counts.resize(count);
    ForEachPart(count, kItemsOfPart, [&](std::size_t begin, std::size_t end) {
      Term terms[SnoopedNetwork::kMostTerms];
      for (std::size_t i = begin; i < end; ++i) {
        m_counts[i] = network.Terms(i, terms);
        for (std::size_t k = 0; k < m_counts[i]; ++k) {
          m_unknowns[First(i) + k] = terms[k].unknown;
          m_coefficients[First(i) + k] = terms[k].coefficient;
        }
      }
    });
  }

  std::vector<Term> Terms(std::size_t i) const {
    std::vector<Term> terms;
    for (std::size_t k = First(i); k < End(i); ++k) {
      terms.push_back({m_unknowns[k], m_coefficients[k]});
    }
    return terms;
  }
  double Along(std::size_t i, const std::vector<double>& g) const {
    double sum = 0.0;
    for (std::size_t k = First(i); k < End(i); ++k) {
      sum += m_coefficients[k] * g[static_cast<std::size_t>(m_unknowns[k])];
    }
    return sum;
  }
  void Spread(std::size_t i, std::vector<double>& to) const {
    for (std::size_t k = First(i); k < End(i); ++k) {
      to[static_cast<std::size_t>(m_unknowns[k])] = m_coefficients[k];
    }
  }

 private:
  static std::size_t First(std::size_t i) { return SnoopedNetwork::kMostTerms * i; }
  std::size_t End(std::size_t i) const { return First(i) + m_counts[i]; }

  std::vector<std::size_t> m_counts;  // of terms
  std::vector<std::int32_t> m_unknowns;
  std::vector<double> m_coefficients;
};

class Snooping {
 public:
  Snooping(SnoopedNetwork& network, const OutlierTest& test)
      : m_network(network), m_test(test), m_items(network.Count()) {}

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
    // With the a-priori sigma0.  Of an observation in use that others check; 0 for any other.
    double TestValue() const { return IsChecked() ? Standardised() : 0.0; }
    double Standardised() const {
      if (!isInUse || !(ResidualVariance() > kLeastSeen * variance)) return 0.0;
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
    m_network.Normal().MakeCofactors();
    ForEachPart(m_items.size(), kItemsOfPart, [&](std::size_t begin, std::size_t end) {
      Term terms[SnoopedNetwork::kMostTerms];
      for (std::size_t i = begin; i < end; ++i) {
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
    });
  }

  void RecordWhatIsOut() {
    const double sigma0 = EstimateUnitWeight().sigma0;
    for (std::size_t i = 0; i < m_items.size(); ++i) {
      const Item& item = m_items[i];
      if (item.isInUse || item.isLeftOut) continue;
      m_result.takenOut.push_back({i, item.PredictionTest() / sigma0, {}});
    }
  }

  // By how much a-priori errors are multiplied, and the redundancy of what is in use.
  struct UnitWeight {
    double sigma0 = 1.0;
    double redundancy = 0.0;
  };
  UnitWeight EstimateUnitWeight() const { return UnitWeightOf(SumUp()); }

  // Of what is in use.
  struct Sums {
    double pvv = 0.0;
    double redundancy = 0.0;  // all redundancy numbers together
  };
  Sums SumUp() const {
    Sums sums;
    if (m_test.kind == OutlierTest::Kind::kBaarda) return sums;
    for (const Item& item : m_items) {
      if (!item.isInUse) continue;
      sums.pvv += item.residual * item.residual / item.variance;
      sums.redundancy += item.ResidualVariance() / item.variance;
    }
    return sums;
  }
  UnitWeight UnitWeightOf(const Sums& sums) const {
    if (m_test.kind == OutlierTest::Kind::kBaarda) return {};
    const double redundancy = std::round(sums.redundancy);
    return {std::sqrt(sums.pvv / redundancy), redundancy};
  }

  // What a control point has to exceed to take the blame.
  double Limit() const {
    constexpr double kClearly = 1.2;
    const UnitWeight unit = EstimateUnitWeight();
    double largest = unit.sigma0 * m_test.Critical(unit.redundancy);
    for (const Item& item : m_items) largest = std::max(largest, item.Standardised());
    return kClearly * largest;
  }

  // False when no test value exceeds the critical one.
  bool TakeOutBatch(const std::function<void(int)>& announceRound) {
    while (m_changes.size() < kMostChanges) {
      const UnitWeight unit = EstimateUnitWeight();
      std::size_t worst = Largest(unit.sigma0 * m_test.Critical(unit.redundancy), &Item::TestValue);
      if (worst == m_items.size()) break;
      // An error that hardly shows in its own residual shows all the more in those of others.
      const std::size_t hidden = Largest(m_items[worst].TestValue(), &Item::Standardised);
      if (hidden != m_items.size()) worst = hidden;
      if (announceRound) announceRound(++m_round);
      TakeOut(worst, unit.sigma0);
    }
    return !m_changes.empty();
  }

  // The first item with the largest value above the limit; past the end without any.
  std::size_t Largest(double limit, double (Item::*value)() const) const {
    std::vector<std::size_t> ofParts((m_items.size() + kItemsOfPart - 1) / kItemsOfPart);
    ForEachPart(m_items.size(), kItemsOfPart, [&](std::size_t begin, std::size_t end) {
      std::size_t first = m_items.size();
      double largest = limit;
      for (std::size_t i = begin; i < end; ++i) {
        if (!((m_items[i].*value)() > largest)) continue;
        largest = (m_items[i].*value)();
        first = i;
      }
      ofParts[begin / kItemsOfPart] = first;
    });
    std::size_t first = m_items.size();
    for (const std::size_t i : ofParts) {
      if (i == m_items.size()) continue;
      if (first == m_items.size() || (m_items[i].*value)() > (m_items[first].*value)()) first = i;
    }
    return first;
  }

  void TakeOut(std::size_t i, double sigma0) {
    std::vector<double> g = Effect(i);
    m_result.takenOut.push_back(
        {i, m_items[i].Standardised() / sigma0, IndistinguishableFrom(i, g)});
    SetInUse(i, false);
    Apply(i, std::move(g), m_items[i].ResidualVariance());
  }

  // Puts back what agrees with the others after all, the best first; false when nothing does.  Only
  // what is out is watched meanwhile: the network is adjusted anew afterwards.
  bool TryAgain() {
    std::vector<std::size_t> tried;  // numbers of items
    for (const SnoopedOut& out : m_result.takenOut) {
      const Item& item = m_items[out.number];
      if (!item.isFinal && !item.isLeftOut) tried.push_back(out.number);
    }
    const auto isBetter = [this](std::size_t a, std::size_t b) {
      return m_items[a].PredictionTest() < m_items[b].PredictionTest();
    };
    if (tried.size() > kMostTried) {
      std::stable_sort(tried.begin(), tried.end(), isBetter);
      tried.resize(kMostTried);
    }
    Sums sums = SumUp();
    const auto limit = [&] {
      const UnitWeight unit = UnitWeightOf(sums);
      return unit.sigma0 * m_test.CriticalOfPrediction(unit.redundancy);
    };
    if (tried.empty() || !(LeastOf(tried) < limit())) return false;

    std::vector<std::vector<Term>> functions;
    functions.reserve(tried.size());
    for (const std::size_t i : tried) functions.push_back(m_equations.Terms(i));
    const std::vector<double> cofactors = m_network.Normal().CofactorsBetween(functions);
    std::vector<Change> changes;  // g by number in `tried`
    for (;;) {
      std::size_t best = tried.size();
      double least = limit();
      for (std::size_t k = 0; k < tried.size(); ++k) {
        const Item& item = m_items[tried[k]];
        if (item.isFinal || !(item.PredictionTest() < least)) continue;
        least = item.PredictionTest();
        best = k;
      }
      if (best == tried.size()) break;
      Item& item = m_items[tried[best]];
      item.isFinal = true;
      SetInUse(tried[best], true);
      const auto row = cofactors.begin() + static_cast<std::ptrdiff_t>(best * tried.size());
      std::vector<double> g(row, row + static_cast<std::ptrdiff_t>(tried.size()));
      for (const Change& change : changes) {
        const double part = change.g[best] / change.d;
        for (std::size_t k = 0; k < g.size(); ++k) g[k] += part * change.g[k];
      }
      const double d = -(item.variance + item.cofactor);
      // An observation put in adds the square of its prediction test to [pvv].
      sums.pvv += item.residual * item.residual / -d;
      sums.redundancy += 1.0;
      const double part = item.residual / d;
      for (std::size_t k = 0; k < tried.size(); ++k) {
        m_items[tried[k]].residual += g[k] * part;
        m_items[tried[k]].cofactor += g[k] * g[k] / d;
      }
      changes.push_back({std::move(g), d});
    }
    std::erase_if(m_result.takenOut,
                  [this](const SnoopedOut& out) { return m_items[out.number].isInUse; });
    return true;
  }

  double LeastOf(const std::vector<std::size_t>& items) const {
    double least = m_items[items.front()].PredictionTest();
    for (const std::size_t i : items) least = std::min(least, m_items[i].PredictionTest());
    return least;
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

  // d is the variance of the residual.
  void Apply(std::size_t i, std::vector<double> g, double d) {
    const double part = m_items[i].residual / d;
    ForEachPart(m_items.size(), kItemsOfPart, [&](std::size_t begin, std::size_t end) {
      for (std::size_t k = begin; k < end; ++k) {
        if (m_items[k].isLeftOut) continue;
        const double common = m_equations.Along(k, g);
        m_items[k].residual += common * part;
        m_items[k].cofactor += common * common / d;
      }
    });
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
  OutlierTest m_test;
  int m_round = 0;
  Equations m_equations;
  std::vector<Item> m_items;
  std::vector<Change> m_changes;  // since the last refreshing
  SnoopingResult m_result;
};

}  // namespace

SnoopingResult Snoop(SnoopedNetwork& network, const OutlierTest& test,
                     const std::function<void(int)>& announceRound) {
  return Snooping(network, test).Run(announceRound);
}

}  // namespace brenu
