#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "core/normal_matrix.h"
#include "core/sparse/selected_inverse.h"
#include "core/sparse/sparse_factor.h"
#include "core/sparse/symbolic_factor.h"

namespace brenu {

namespace {

std::size_t At(std::int64_t i) { return static_cast<std::size_t>(i); }

class SparseNormalMatrix : public NormalMatrix {
 public:
  explicit SparseNormalMatrix(const UnknownPattern& pattern) : m_symbolic(pattern) {}

  void Clear() override {
    m_elements.assign(At(m_symbolic.ElementCount()), 0.0);
    m_factor.clear();
    m_isFactor = m_isInverse = false;
  }

  void Add(std::span<const Term> equation, double weight) override {
    ForEachColumn(equation, [&](std::size_t c, double* column) {
      const double scaled = equation[c].coefficient * weight;
      for (std::size_t r = 0; r < equation.size(); ++r) {
        if (m_places[r] >= m_places[c]) column[m_rows[r]] += scaled * equation[r].coefficient;
      }
    });
  }

  double& Diagonal(std::int32_t unknown) override {
    const std::int32_t place = m_symbolic.PlaceOf(unknown);
    return m_elements[At(m_symbolic.FindElement(place, place))];
  }

  bool Solve(std::span<const double> b, std::span<double> x) override {
    std::vector<double> byPlace(b.size());
    if (!FactorSparse(m_symbolic, m_elements)) return false;
    m_isFactor = true;
    for (std::size_t i = 0; i < b.size(); ++i) byPlace[Place(i)] = b[i];
    SolveSparse(m_symbolic, m_elements, byPlace);
    for (std::size_t i = 0; i < b.size(); ++i) x[i] = byPlace[Place(i)];
    return true;
  }

  std::vector<std::int32_t> SolveDetermined(std::span<const double> b,
                                            std::span<double> x) override {
    std::vector<double> diagonal(b.size());
    for (std::size_t place = 0; place < diagonal.size(); ++place) {
      const auto p = static_cast<std::int32_t>(place);
      diagonal[place] = m_elements[At(m_symbolic.FindElement(p, p))];
    }
    PivotCheck check(diagonal);
    FactorSparse(m_symbolic, m_elements, &check);
    m_isFactor = true;
    std::vector<std::int32_t> moving = UnknownsMovingWith(check.WeakPlaces());
    SolveAgain(b, x);
    return moving;
  }

  void KeepFactors() override { m_factor = m_elements; }

  void SolveAgain(std::span<const double> b, std::span<double> x) override {
    const std::vector<double>& factor = m_factor.empty() ? m_elements : m_factor;
    assert(!m_factor.empty() || m_isFactor);
    std::vector<double> byPlace(b.size());
    for (std::size_t i = 0; i < b.size(); ++i) byPlace[Place(i)] = b[i];
    SolveSparse(m_symbolic, factor, byPlace);
    for (std::size_t i = 0; i < b.size(); ++i) x[i] = byPlace[Place(i)];
  }

  double Cofactor(std::int32_t i, std::int32_t j) override {
    Invert();
    const auto [column, row] = std::minmax({m_symbolic.PlaceOf(i), m_symbolic.PlaceOf(j)});
    const std::int64_t element = m_symbolic.FindElement(row, column);
    return element < 0 ? std::numeric_limits<double>::quiet_NaN() : m_elements[At(element)];
  }

  double QuadraticForm(std::span<const Term> function) override {
    Invert();
    double sum = 0.0;
    ForEachColumn(function, [&](std::size_t c, const double* column) {
      // Elements beside the diagonal stand for two.
      double own = 0.0;
      double other = 0.0;
      for (std::size_t r = 0; r < function.size(); ++r) {
        if (m_places[r] == m_places[c]) own += column[m_rows[r]] * function[r].coefficient;
        if (m_places[r] > m_places[c]) other += column[m_rows[r]] * function[r].coefficient;
      }
      sum += function[c].coefficient * (own + 2.0 * other);
    });
    return sum;
  }

  void Multiply(std::span<const Term> function, std::span<double> product) override {
    Invert();
    std::fill_n(product.begin(), function.size(), 0.0);
    ForEachColumn(function, [&](std::size_t c, const double* column) {
      for (std::size_t r = 0; r < function.size(); ++r) {
        if (m_places[r] < m_places[c]) continue;
        const double element = column[m_rows[r]];
        product[r] += element * function[c].coefficient;
        if (m_places[r] > m_places[c]) product[c] += element * function[r].coefficient;
      }
    });
  }

  std::int32_t PlaceOf(std::int32_t unknown) const override { return m_symbolic.PlaceOf(unknown); }

 private:
  void Invert() {
    if (m_isInverse) return;
    // Half a factor has no inverse, and half an inverse is left should memory end on the way.
    if (std::exchange(m_isFactor, false)) {
      InvertSelected(m_symbolic, m_elements);
    } else {
      std::fill(m_elements.begin(), m_elements.end(), std::numeric_limits<double>::quiet_NaN());
    }
    m_isInverse = true;
  }

  // A pivot that vanishes leaves a direction of the unknowns in which the equations change nothing:
  // L^T n = e.
  std::vector<std::int32_t> UnknownsMovingWith(const std::vector<std::int32_t>& weakPlaces) const {
    constexpr double kMoving = 1e-7;  // beside 1 for the unknown of the pivot
    std::vector<char> moves(At(m_symbolic.UnknownCount()), 0);
    std::vector<double> n;
    for (const std::int32_t weak : weakPlaces) {
      n.assign(moves.size(), 0.0);
      n[At(weak)] = m_elements[At(m_symbolic.FindElement(weak, weak))];
      SolveBackward(m_symbolic, m_elements, n);
      for (std::size_t place = 0; place < n.size(); ++place) {
        if (std::fabs(n[place]) > kMoving) moves[place] = 1;
      }
    }
    std::vector<std::int32_t> unknowns;
    for (std::int32_t i = 0; i < m_symbolic.UnknownCount(); ++i) {
      if (moves[At(PlaceOf(i))] != 0) unknowns.push_back(i);
    }
    return unknowns;
  }

  // Calls visit(c, column) with the column of the matrix that belongs to each term c; m_places and
  // m_rows then tell the rows of all terms that stand in it.
  template <typename Visit>
  void ForEachColumn(std::span<const Term> terms, Visit visit) {
    m_places.clear();
    for (const Term& t : terms) m_places.push_back(m_symbolic.PlaceOf(t.unknown));
    const Supernode* located = nullptr;  // to which m_rows refers
    for (std::size_t c = 0; c < terms.size(); ++c) {
      const Supernode& s = m_symbolic.SupernodeAt(m_places[c]);
      if (&s != located) LocateRows(s);
      located = &s;
      visit(c,
            m_elements.data() + s.firstElement + std::int64_t{m_places[c] - s.first} * s.Height());
    }
  }

  // The rows of m_places in a supernode.  Neighbouring places are neighbouring rows.
  void LocateRows(const Supernode& s) {
    m_rows.resize(m_places.size());
    for (std::size_t k = 0; k < m_places.size(); ++k) {
      if (m_places[k] < s.first) continue;
      const bool follows =
          k > 0 && m_places[k] == m_places[k - 1] + 1 && m_places[k - 1] >= s.first;
      m_rows[k] = follows ? m_rows[k - 1] + 1 : m_symbolic.FindRow(s, m_places[k]);
      assert(m_rows[k] >= 0 && m_rows[k] == m_symbolic.FindRow(s, m_places[k]));  // in the pattern
    }
  }
  std::size_t Place(std::size_t unknown) const {
    return At(PlaceOf(static_cast<std::int32_t>(unknown)));
  }

  SymbolicFactor m_symbolic;
  std::vector<double> m_elements;  // N, after Solve L and D, after the first Cofactor N^-1
  std::vector<double> m_factor;    // L and D, when they are kept beside the inverse
  bool m_isFactor = false;
  bool m_isInverse = false;
  std::vector<std::int32_t> m_places;  // of the terms being visited
  std::vector<std::int32_t> m_rows;    // beside m_places
};

}  // namespace

std::unique_ptr<NormalMatrix> MakeSparseNormalMatrix(const UnknownPattern& pattern) {
  return std::make_unique<SparseNormalMatrix>(pattern);
}

}  // namespace brenu
