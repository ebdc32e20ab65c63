#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "core/unknown_pattern.h"

namespace brenu {

// One term of an observation equation: a coefficient and the unknown that it belongs to.
struct Term {
  std::int32_t unknown;
  double coefficient;
};

// A symmetric matrix that is summed up from equations and then inverted: N of normal equations.
// Two ways of storing it stand behind this interface.
class NormalMatrix {
 public:
  NormalMatrix() = default;
  NormalMatrix(const NormalMatrix&) = delete;
  NormalMatrix& operator=(const NormalMatrix&) = delete;
  virtual ~NormalMatrix() = default;

  // Before the first equation, too.
  virtual void Clear() = 0;
  // For so many equations with so many terms in all.
  virtual void Reserve(std::size_t equations, std::size_t terms) = 0;
  // Adds a_k p a_m to the element of the unknowns of any two terms.
  virtual void Add(std::span<const Term> equation, double weight) = 0;
  virtual double& Diagonal(std::int32_t unknown) = 0;
  // x = N^-1 b; false when a pivot vanishes beside 1.0.  N is used up in either case.
  virtual bool Solve(std::span<const double> b, std::span<double> x) = 0;
  // The same where nothing is singular: unknowns that no equation determines are held at 0.  Gives
  // all unknowns that would move with them, ascending.
  virtual std::vector<std::int32_t> SolveDetermined(std::span<const double> b,
                                                    std::span<double> x) = 0;
  // Once more with the same matrix, after SolveDetermined: until the first Cofactor, or with the
  // factors kept.
  virtual void KeepFactors() = 0;
  virtual void SolveAgain(std::span<const double> b, std::span<double> x) = 0;
  // The cofactors between functions, each of unknowns that meet, as a square by rows: with the
  // factors kept.
  virtual std::vector<double> CofactorsBetween(std::span<const std::vector<Term>> functions) = 0;
  // Computes what the three functions below need, which they otherwise do at the first call:
  // several threads may call them after it.
  virtual void MakeCofactors() = 0;
  // Element (i, j) of N^-1, after a successful Solve.  Not a number where the matrix keeps none.
  // After a failed one it means nothing.
  virtual double Cofactor(std::int32_t i, std::int32_t j) = 0;
  // The sum of a_k Q a_m over any two terms, Q the element of N^-1 of their unknowns.
  virtual double QuadraticForm(std::span<const Term> function) = 0;
  // The sum of Q a_m over all terms, Q the element of N^-1 of an unknown and that of the term, for
  // the unknown of each term.
  virtual void Multiply(std::span<const Term> function, std::span<double> product) = 0;
  // Where an unknown stands in the matrix.  Equations are added fastest in the order of places.
  virtual std::int32_t PlaceOf(std::int32_t unknown) const = 0;
};

// All elements, inverted at once: best for small networks.
std::unique_ptr<NormalMatrix> MakePackedNormalMatrix(std::int32_t unknowns);

// The elements of the pattern and what a factorisation adds to them.  Cofactors are kept for
// unknowns that meet according to the pattern, and computed, all together, when the first of them
// is asked for.
std::unique_ptr<NormalMatrix> MakeSparseNormalMatrix(const UnknownPattern& pattern);

}  // namespace brenu
