#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "core/large_vector.h"
#include "core/normal_matrix.h"
#include "core/sparse/symbolic_factor.h"

namespace brenu {

// The equations that a sparse matrix is summed up from, kept until its factorisation puts them into
// one block of columns after the other.
class StoredEquations {
 public:
  // Forgets the equations; all diagonal elements become zero.
  void Clear(const SymbolicFactor& symbolic);
  void Reserve(std::size_t equations, std::size_t terms);
  // Adds a_k p a_m to the element of the unknowns of any two terms.
  void Add(const SymbolicFactor& symbolic, std::span<const Term> equation, double weight);
  // The element on the diagonal, by place, as the equations so far and the caller have made it.
  double& Diagonal(std::int32_t place) { return m_diagonal[static_cast<std::size_t>(place)]; }
  std::span<const double> Diagonal() const { return m_diagonal; }

  // Forgets the equations and gives their memory back; the diagonal stays.
  void Release();

  // To be called between the last equation and the first Fill.
  void GroupBySupernodes(const SymbolicFactor& symbolic);
  // Sets the columns of a supernode; what lies above the diagonal is zero.  `rowOf` has an element
  // for each place and is used up.
  void Fill(const SymbolicFactor& symbolic, std::size_t supernode, double* panel,
            std::vector<std::int32_t>& rowOf) const;

 private:
  std::size_t Begin(std::size_t equation) const { return equation == 0 ? 0 : m_end[equation - 1]; }

  std::vector<double> m_diagonal;         // by place
  LargeVector<double> m_weights;          // by equation
  LargeVector<std::size_t> m_end;         // by equation: where its terms end
  LargeVector<std::int32_t> m_places;     // of the terms
  LargeVector<double> m_coefficients;     // of the terms
  std::vector<std::size_t> m_firstOf;     // by supernode, with one entry more
  LargeVector<std::uint32_t> m_touching;  // the equations with terms in its columns
};

}  // namespace brenu
