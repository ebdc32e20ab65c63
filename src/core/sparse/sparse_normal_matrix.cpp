#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "core/large_vector.h"
#include "core/normal_matrix.h"
#include "core/sparse/selected_inverse.h"
#include "core/sparse/sparse_cofactors.h"
#include "core/sparse/sparse_factor.h"
#include "core/sparse/sparse_solution.h"
#include "core/sparse/stored_equations.h"
#include "core/sparse/symbolic_factor.h"

namespace brenu {

namespace {

std::size_t At(std::int64_t i) { return static_cast<std::size_t>(i); }

class SparseNormalMatrix : public NormalMatrix {
 public:
  explicit SparseNormalMatrix(const UnknownPattern& pattern) : m_symbolic(pattern) {}

  void Clear() override {
    m_equations.Clear(m_symbolic);
    m_factor.clear();
    m_isFactor = m_isInverse = false;
  }

  void Reserve(std::size_t equations, std::size_t terms) override {
    m_equations.Reserve(equations, terms);
  }

  void Add(std::span<const Term> equation, double weight) override {
    m_equations.Add(m_symbolic, equation, weight);
  }

  double& Diagonal(std::int32_t unknown) override {
    return m_equations.Diagonal(m_symbolic.PlaceOf(unknown));
  }

  bool Solve(std::span<const double> b, std::span<double> x) override {
    if (!Factor(nullptr)) return false;
    SolveAgain(b, x);
    return true;
  }

  std::vector<std::int32_t> SolveDetermined(std::span<const double> b,
                                            std::span<double> x) override {
    PivotCheck check(m_equations.Diagonal());
    Factor(&check);
    std::vector<std::int32_t> moving = UnknownsMovingWith(check.WeakPlaces());
    SolveAgain(b, x);
    return moving;
  }

  void KeepFactors() override { m_factor = m_elements; }

  void SolveAgain(std::span<const double> b, std::span<double> x) override {
    const LargeVector<double>& factor = m_factor.empty() ? m_elements : m_factor;
    assert(!m_factor.empty() || m_isFactor);
    std::vector<double> byPlace(b.size());
    for (std::size_t i = 0; i < b.size(); ++i) byPlace[Place(i)] = b[i];
    SolveSparse(m_symbolic, factor, byPlace);
    for (std::size_t i = 0; i < b.size(); ++i) x[i] = byPlace[Place(i)];
  }

  std::vector<double> CofactorsBetween(std::span<const std::vector<Term>> functions) override {
    assert(!m_factor.empty());
    return brenu::CofactorsBetween(m_symbolic, m_factor, functions);
  }

  void MakeCofactors() override {
    if (m_isInverse) return;
    m_equations.Release();
    // Half a factor has no inverse, and half an inverse is left should memory end on the way.
    if (std::exchange(m_isFactor, false)) {
      InvertSelected(m_symbolic, m_elements);
    } else {
      TakeElements();
      std::fill(m_elements.begin(), m_elements.end(), std::numeric_limits<double>::quiet_NaN());
    }
    m_isInverse = true;
  }

  double Cofactor(std::int32_t i, std::int32_t j) override {
    MakeCofactors();
    const auto [column, row] = std::minmax({m_symbolic.PlaceOf(i), m_symbolic.PlaceOf(j)});
    const std::int64_t element = m_symbolic.FindElement(row, column);
    return element < 0 ? std::numeric_limits<double>::quiet_NaN() : m_elements[At(element)];
  }

  double QuadraticForm(std::span<const Term> function) override {
    MakeCofactors();
    double sum = 0.0;
    Located at;
    ForEachColumn(function, at, [&](std::size_t c, const double* column) {
      // Elements beside the diagonal stand for two.
      double own = 0.0;
      double other = 0.0;
      for (std::size_t r = 0; r < function.size(); ++r) {
        if (at.places[r] == at.places[c]) own += column[at.rows[r]] * function[r].coefficient;
        if (at.places[r] > at.places[c]) other += column[at.rows[r]] * function[r].coefficient;
      }
      sum += function[c].coefficient * (own + 2.0 * other);
    });
    return sum;
  }

  void Multiply(std::span<const Term> function, std::span<double> product) override {
    MakeCofactors();
    std::fill_n(product.begin(), function.size(), 0.0);
    Located at;
    ForEachColumn(function, at, [&](std::size_t c, const double* column) {
      for (std::size_t r = 0; r < function.size(); ++r) {
        if (at.places[r] < at.places[c]) continue;
        const double element = column[at.rows[r]];
        product[r] += element * function[c].coefficient;
        if (at.places[r] > at.places[c]) product[c] += element * function[r].coefficient;
      }
    });
  }

  std::int32_t PlaceOf(std::int32_t unknown) const override { return m_symbolic.PlaceOf(unknown); }

 private:
  // Without setting them: memory is first touched where it is needed, by the thread that needs it.
  void TakeElements() { m_elements.resize(At(m_symbolic.ElementCount())); }
  bool Factor(PivotCheck* check) {
    TakeElements();
    m_equations.GroupBySupernodes(m_symbolic);
    m_isFactor = FactorSparse(m_symbolic, m_equations, m_elements, check);
    return m_isFactor;
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

  // Where the terms of a function stand: their places and, in the column being visited, their rows.
  struct Located {
    static constexpr std::size_t kMostTerms = 8;
    std::array<std::int32_t, kMostTerms> places;
    std::array<std::int32_t, kMostTerms> rows;
  };

  // Calls visit(c, column) with the column of the matrix that belongs to each term c.
  template <typename Visit>
  void ForEachColumn(std::span<const Term> terms, Located& at, Visit visit) const {
    assert(terms.size() <= Located::kMostTerms);
    for (std::size_t k = 0; k < terms.size(); ++k) {
      at.places[k] = m_symbolic.PlaceOf(terms[k].unknown);
    }
    const Supernode* located = nullptr;  // to which the rows refer
    for (std::size_t c = 0; c < terms.size(); ++c) {
      const Supernode& s = m_symbolic.SupernodeAt(at.places[c]);
      if (&s != located) LocateRows(s, terms.size(), at);
      located = &s;
      visit(c,
            m_elements.data() + s.firstElement + std::int64_t{at.places[c] - s.first} * s.Height());
    }
  }

  // Neighbouring places are neighbouring rows.
  void LocateRows(const Supernode& s, std::size_t count, Located& at) const {
    for (std::size_t k = 0; k < count; ++k) {
      const std::int32_t place = at.places[k];
      if (place < s.first) continue;
      const bool follows = k > 0 && place == at.places[k - 1] + 1 && place > s.first;
      at.rows[k] = follows ? at.rows[k - 1] + 1 : m_symbolic.FindRow(s, place);
      assert(at.rows[k] >= 0 && at.rows[k] == m_symbolic.FindRow(s, place));  // in the pattern
    }
  }

  std::size_t Place(std::size_t unknown) const {
    return At(PlaceOf(static_cast<std::int32_t>(unknown)));
  }

  SymbolicFactor m_symbolic;
  StoredEquations m_equations;     // N
  LargeVector<double> m_elements;  // after Solve L and D, after the first Cofactor N^-1
  LargeVector<double> m_factor;    // L and D, when they are kept beside the inverse
  bool m_isFactor = false;
  bool m_isInverse = false;
};

}  // namespace

std::unique_ptr<NormalMatrix> MakeSparseNormalMatrix(const UnknownPattern& pattern) {
  return std::make_unique<SparseNormalMatrix>(pattern);
}

}  // namespace brenu
