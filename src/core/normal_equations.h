#pragma once

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "core/normal_matrix.h"
#include "core/parallel.h"
#include "core/unknown_pattern.h"

namespace brenu {

// Up to this many unknowns the normal matrix is stored packed, above it sparse: the measured place
// where both take the same time.
inline constexpr std::int32_t kMostPackedUnknowns = 60;

// Observation equations to be added, in their order.
class EquationList {
 public:
  static constexpr std::size_t kMostTerms = 5;
  struct Equation {
    Term terms[kMostTerms];
    std::size_t count;
    double weight, reduced;
    std::span<const Term> Terms() const { return {terms, count}; }
  };

  void Add(std::span<const Term> terms, double weight, double reduced) {
    assert(terms.size() <= kMostTerms);
    Equation& equation = m_equations.emplace_back();
    std::copy(terms.begin(), terms.end(), equation.terms);
    equation.count = terms.size();
    equation.weight = weight;
    equation.reduced = reduced;
  }
  void Clear() { m_equations.clear(); }
  const std::vector<Equation>& All() const { return m_equations; }

 private:
  std::vector<Equation> m_equations;
};

// Normal equations N x = b of an adjustment by indirect observations, and after the solution the
// cofactor matrix Q = N^-1.
//
// An observation equation v = sum a_k x_k + l (l is computed minus observed) of weight p adds
// a_k p a_m to N and -a_k p l to b.  The pattern of the unknowns is given once a network and serves
// for any number of solutions.
class NormalEquations {
 public:
  explicit NormalEquations(std::int32_t mostPackedUnknowns = kMostPackedUnknowns)
      : m_mostPackedUnknowns(mostPackedUnknowns) {}

  // Forgets the pattern too.
  void Clear() { *this = NormalEquations(m_mostPackedUnknowns); }
  bool HasPattern() const { return m_matrix != nullptr; }
  // Analyses the pattern.  Equations can be added after the next Reset.
  void SetPattern(const UnknownPattern& pattern);

  // The numbers 0..count-1 of equations in the order in which they are added fastest; `unknownOf`
  // gives any one unknown of each.
  template <typename UnknownOf>
  std::vector<std::size_t> FastestOrder(std::size_t count, UnknownOf unknownOf) const;

  // Starts anew with N and b zero; the last solution stays until the next one.  Takes memory for so
  // many equations, should there be more it grows.
  void Reset(std::size_t equations = 0);

  // The unknowns of an equation must meet in the pattern.
  void Add(std::span<const Term> equation, double weight, double reduced);
  // Adds what make(k, list) puts on the list for k = 0..count-1, in this order; the lists are made
  // side by side.
  template <typename Make>
  void AddAll(std::size_t count, Make make);
  // Holds an unknown near zero: adds a large weight to its diagonal element...
  void Hold(std::int32_t unknown, double weight) { m_matrix->Diagonal(unknown) += weight; }
  // ...or puts it in the place of that element.
  void ReplaceDiagonal(std::int32_t unknown, double weight) {
    m_matrix->Diagonal(unknown) = weight;
  }

  // Computes x = Q b; false when N is singular, which is tested by each pivot against 1.0 alone: a
  // defect that rounding hides gives a meaningless solution.
  bool Solve();
  // What the equations added so far, and what holds unknowns, have put there.
  double DiagonalElement(std::int32_t unknown) const { return m_matrix->Diagonal(unknown); }
  bool IsSolved() const { return m_solved; }
  // The same where nothing is singular: unknowns that no equation determines, to 1e-12 of their
  // diagonal elements, are held at 0.  Gives all unknowns that would move with them, ascending.
  // Needs the sparse form.
  std::vector<std::int32_t> SolveDetermined();
  // N^-1 b for another right-hand side, after SolveDetermined: as long as no cofactor was asked
  // for, or until the next Reset when the factors are kept, which takes as much memory again.
  std::vector<double> SolveAgain(std::span<const double> b) const;
  void KeepFactors() { m_matrix->KeepFactors(); }
  // The cofactors between functions of the unknowns, a square by rows, while the factors are kept.
  // The unknowns of one function must meet.
  std::vector<double> CofactorsBetween(std::span<const std::vector<Term>> functions) const {
    return m_matrix->CofactorsBetween(functions);
  }

  // Of the last successful Solve; zero before the first.
  std::span<const double> Solution() const { return m_solution; }
  // Valid after a successful Solve, until the next Reset.
  // Several threads may ask for them after MakeCofactors, which the first call does otherwise.
  void MakeCofactors() const { m_matrix->MakeCofactors(); }
  // Of two unknowns that meet in the pattern.
  double Cofactor(std::int32_t i, std::int32_t j) const { return m_matrix->Cofactor(i, j); }
  // The cofactor of a linear function of the unknowns: sum over all k, m of a_k Q(k, m) a_m.
  double QuadraticForm(std::span<const Term> function) const {
    return m_matrix->QuadraticForm(function);
  }
  // Q times a linear function of unknowns that all meet in the pattern, for these unknowns.
  void Multiply(std::span<const Term> function, std::span<double> product) const {
    m_matrix->Multiply(function, product);
  }

 private:
  std::int32_t m_mostPackedUnknowns;
  std::unique_ptr<NormalMatrix> m_matrix;  // null without a pattern
  std::vector<double> m_rhs;
  std::vector<double> m_solution;
  bool m_solved = false;
};

template <typename UnknownOf>
std::vector<std::size_t> NormalEquations::FastestOrder(std::size_t count,
                                                       UnknownOf unknownOf) const {
  std::vector<std::pair<std::int32_t, std::size_t>> byPlace;
  byPlace.reserve(count);
  for (std::size_t k = 0; k < count; ++k) byPlace.emplace_back(m_matrix->PlaceOf(unknownOf(k)), k);
  std::sort(byPlace.begin(), byPlace.end());
  std::vector<std::size_t> order;
  order.reserve(count);
  for (const auto& [place, k] : byPlace) order.push_back(k);
  return order;
}

template <typename Make>
void NormalEquations::AddAll(std::size_t count, Make make) {
  constexpr std::size_t kPart = 256;
  constexpr std::size_t kPartsOfWave = 64;  // what waits to be added stays small
  if (count <= kPart || WorkerCount() == 1) {
    EquationList list;
    for (std::size_t k = 0; k < count; ++k) {
      list.Clear();
      make(k, list);
      for (const auto& e : list.All()) Add(e.Terms(), e.weight, e.reduced);
    }
    return;
  }
  std::vector<EquationList> lists(std::min(kPartsOfWave, (count + kPart - 1) / kPart));
  for (std::size_t begin = 0; begin < count; begin += kPartsOfWave * kPart) {
    const std::size_t wave = std::min(count - begin, kPartsOfWave * kPart);
    ForEachPart(wave, kPart, [&](std::size_t first, std::size_t end) {
      EquationList& list = lists[first / kPart];
      list.Clear();
      for (std::size_t k = first; k < end; ++k) make(begin + k, list);
    });
    for (std::size_t part = 0; part * kPart < wave; ++part) {
      for (const auto& e : lists[part].All()) Add(e.Terms(), e.weight, e.reduced);
    }
  }
}

}  // namespace brenu
