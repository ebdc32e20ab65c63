#include "core/normal_equations.h"

#include "core/packed_matrix.h"

namespace brenu {

namespace {
std::size_t Index(std::int32_t unknown) { return static_cast<std::size_t>(unknown); }
}  // namespace

void NormalEquations::Reset(std::int32_t unknowns) {
  m_count = unknowns;
  m_solved = false;
  m_matrix.assign(PackedSize(Index(unknowns)), 0.0);
  m_rhs.assign(Index(unknowns), 0.0);
  m_solution.assign(Index(unknowns), 0.0);
}

void NormalEquations::Add(std::span<const Term> equation, double weight, double reduced) {
  for (const Term& row : equation) {
    const double scaled = row.coefficient * weight;
    m_rhs[Index(row.unknown)] -= scaled * reduced;
    for (const Term& column : equation) {
      if (row.unknown <= column.unknown) {
        m_matrix[PackedIndex(Index(row.unknown), Index(column.unknown))] +=
            scaled * column.coefficient;
      }
    }
  }
}

void NormalEquations::Hold(std::int32_t unknown, double weight) {
  m_matrix[PackedIndex(Index(unknown), Index(unknown))] += weight;
}

void NormalEquations::ReplaceDiagonal(std::int32_t unknown, double weight) {
  m_matrix[PackedIndex(Index(unknown), Index(unknown))] = weight;
}

bool NormalEquations::Solve() {
  const std::size_t order = Index(m_count);
  if (!InvertPacked(m_matrix, order)) return false;
  // x = Q b, column by column of the stored triangle.
  m_solution.assign(order, 0.0);
  const double* column = m_matrix.data();
  for (std::size_t c = 0; c < order; ++c) {
    double sum = 0.0;
    for (std::size_t r = 0; r < c; ++r) {
      sum += column[r] * m_rhs[r];
      m_solution[r] += column[r] * m_rhs[c];
    }
    m_solution[c] += sum + column[c] * m_rhs[c];
    column += c + 1;
  }
  m_solved = true;
  return true;
}

double NormalEquations::Cofactor(std::int32_t i, std::int32_t j) const {
  return m_matrix[PackedIndex(Index(i), Index(j))];
}

double NormalEquations::QuadraticForm(std::span<const Term> function) const {
  double sum = 0.0;
  for (const Term& k : function) {
    for (const Term& m : function) {
      sum += k.coefficient * Cofactor(k.unknown, m.unknown) * m.coefficient;
    }
  }
  return sum;
}

}  // namespace brenu
