#include "core/normal_equations.h"

namespace brenu {

void NormalEquations::SetPattern(const UnknownPattern& pattern) {
  const std::int32_t unknowns = pattern.UnknownCount();
  m_matrix = unknowns <= m_mostPackedUnknowns ? MakePackedNormalMatrix(unknowns)
                                              : MakeSparseNormalMatrix(pattern);
  m_solution.assign(static_cast<std::size_t>(unknowns), 0.0);
  m_solved = false;
}

void NormalEquations::Reset() {
  m_solved = false;
  m_matrix->Clear();
  m_rhs.assign(m_solution.size(), 0.0);
}

void NormalEquations::Add(std::span<const Term> equation, double weight, double reduced) {
  for (const Term& t : equation) {
    m_rhs[static_cast<std::size_t>(t.unknown)] -= t.coefficient * weight * reduced;
  }
  m_matrix->Add(equation, weight);
}

bool NormalEquations::Solve() {
  m_solved = m_matrix->Solve(m_rhs, m_solution);
  return m_solved;
}

}  // namespace brenu
