#include <algorithm>
#include <limits>

#include "core/normal_matrix.h"
#include "core/sparse/selected_inverse.h"
#include "core/sparse/sparse_factor.h"
#include "core/sparse/symbolic_factor.h"

namespace brenu {

namespace {

std::size_t At(std::int64_t i) { return static_cast<std::size_t>(i); }

class SparseNormalMatrix : public NormalMatrix {
 public:
  explicit SparseNormalMatrix(const UnknownPattern& pattern)
      : m_symbolic(pattern), m_elements(At(m_symbolic.ElementCount()), 0.0) {}

  void Clear() override {
    std::fill(m_elements.begin(), m_elements.end(), 0.0);
    m_isInverse = false;
  }

  void Add(std::span<const Term> equation, double weight) override {
    for (const Term& column : equation) {
      const std::int32_t columnPlace = m_symbolic.PlaceOf(column.unknown);
      const double scaled = column.coefficient * weight;
      for (const Term& row : equation) {
        const std::int32_t rowPlace = m_symbolic.PlaceOf(row.unknown);
        if (rowPlace < columnPlace) continue;
        m_elements[At(m_symbolic.FindElement(rowPlace, columnPlace))] += scaled * row.coefficient;
      }
    }
  }

  double& Diagonal(std::int32_t unknown) override {
    const std::int32_t place = m_symbolic.PlaceOf(unknown);
    return m_elements[At(m_symbolic.FindElement(place, place))];
  }

  bool Solve(std::span<const double> b, std::span<double> x) override {
    if (!FactorSparse(m_symbolic, m_elements)) return false;
    std::vector<double> byPlace(b.size());
    for (std::size_t i = 0; i < b.size(); ++i) byPlace[PlaceOf(i)] = b[i];
    SolveSparse(m_symbolic, m_elements, byPlace);
    for (std::size_t i = 0; i < b.size(); ++i) x[i] = byPlace[PlaceOf(i)];
    return true;
  }

  double Cofactor(std::int32_t i, std::int32_t j) override {
    if (!m_isInverse) {
      InvertSelected(m_symbolic, m_elements);
      m_isInverse = true;
    }
    const auto [column, row] = std::minmax({m_symbolic.PlaceOf(i), m_symbolic.PlaceOf(j)});
    const std::int64_t element = m_symbolic.FindElement(row, column);
    return element < 0 ? std::numeric_limits<double>::quiet_NaN() : m_elements[At(element)];
  }

 private:
  std::size_t PlaceOf(std::size_t unknown) const {
    return At(m_symbolic.PlaceOf(static_cast<std::int32_t>(unknown)));
  }

  SymbolicFactor m_symbolic;
  std::vector<double> m_elements;  // N, after Solve L and D, after the first Cofactor N^-1
  bool m_isInverse = false;
};

}  // namespace

std::unique_ptr<NormalMatrix> MakeSparseNormalMatrix(const UnknownPattern& pattern) {
  return std::make_unique<SparseNormalMatrix>(pattern);
}

}  // namespace brenu
