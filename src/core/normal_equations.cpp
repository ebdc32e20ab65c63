#include "core/normal_equations.h"

#include <algorithm>
#include <cassert>

namespace brenu {

void NormalEquations::SetPattern(const UnknownPattern& pattern) {
  Clear();  // should memory end on the way, there is no pattern
  const std::int32_t unknowns = pattern.UnknownCount();
  m_rhs.assign(static_cast<std::size_t>(unknowns), 0.0);
  m_solution.assign(static_cast<std::size_t>(unknowns), 0.0);
  m_matrix = unknowns <= m_mostPackedUnknowns ? MakePackedNormalMatrix(unknowns)
                                              : MakeSparseNormalMatrix(pattern);
}

void NormalEquations::Reset(std::size_t equations) {
  assert(HasPattern());
  m_solved = false;
  m_matrix->Clear();
  m_matrix->Reserve(equations, equations * EquationList::kMostTerms);
  std::fill(m_rhs.begin(), m_rhs.end(), 0.0);
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

std::vector<std::int32_t> NormalEquations::SolveDetermined() {
  m_solved = true;
  return m_matrix->SolveDetermined(m_rhs, m_solution);
}

std::vector<double> NormalEquations::SolveAgain(std::span<const double> b) const {
  std::vector<double> x(b.size());
  m_matrix->SolveAgain(b, x);
  return x;
}

}  // namespace brenu
