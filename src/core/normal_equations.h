#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace brenu {

// One term of an observation equation: a coefficient and the unknown that it belongs to.
struct Term {
  std::int32_t unknown;
  double coefficient;
};

// Normal equations N x = b of an adjustment by indirect observations, and after the solution the
// cofactor matrix Q = N^-1.
//
// An observation equation v = sum a_k x_k + l (l is computed minus observed) of weight p adds
// a_k p a_m to N and -a_k p l to b.
class NormalEquations {
 public:
  // Starts anew with `unknowns` unknowns, N and b zero.
  void Reset(std::int32_t unknowns);
  std::int32_t UnknownCount() const { return m_count; }

  void Add(std::span<const Term> equation, double weight, double reduced);
  // Holds an unknown near zero: adds a large weight to its diagonal element...
  void Hold(std::int32_t unknown, double weight);
  // ...or puts it in the place of that element.
  void ReplaceDiagonal(std::int32_t unknown, double weight);

  // Inverts N and computes x = Q b; false when N is singular.
  bool Solve();
  bool IsSolved() const { return m_solved; }

  // Valid after a successful Solve, until the next Reset.
  std::span<const double> Solution() const { return m_solution; }
  double Cofactor(std::int32_t i, std::int32_t j) const;
  // The cofactor of a linear function of the unknowns: sum over all k, m of a_k Q(k, m) a_m.
  double QuadraticForm(std::span<const Term> function) const;

 private:
  std::int32_t m_count = 0;
  bool m_solved = false;
  std::vector<double> m_matrix;  // packed: N, after Solve Q
  std::vector<double> m_rhs;
  std::vector<double> m_solution;
};

}  // namespace brenu
