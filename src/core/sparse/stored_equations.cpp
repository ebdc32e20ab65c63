#include "core/sparse/stored_equations.h"

#include <algorithm>
#include <numeric>

#include "core/parallel.h"

namespace brenu {

namespace {
std::size_t At(std::int32_t i) { return static_cast<std::size_t>(i); }
}  // namespace

void StoredEquations::Clear(const SymbolicFactor& symbolic) {
  m_diagonal.assign(At(symbolic.UnknownCount()), 0.0);
  m_weights.clear();
  m_end.clear();
  m_places.clear();
  m_coefficients.clear();
}

void StoredEquations::Reserve(std::size_t equations, std::size_t terms) {
  m_weights.reserve(equations);
  m_end.reserve(equations);
  m_places.reserve(terms);
  m_coefficients.reserve(terms);
}

void StoredEquations::Release() {
  brenu::Release(m_weights);
  brenu::Release(m_end);
  brenu::Release(m_places);
  brenu::Release(m_coefficients);
  brenu::Release(m_touching);
  brenu::Release(m_firstOf);
}

void StoredEquations::Add(const SymbolicFactor& symbolic, std::span<const Term> equation,
                          double weight) {
  const std::size_t first = m_places.size();
  for (const Term& t : equation) {
    m_places.push_back(symbolic.PlaceOf(t.unknown));
    m_coefficients.push_back(t.coefficient);
  }
  m_end.push_back(m_places.size());
  m_weights.push_back(weight);
  const std::int32_t* const places = m_places.data() + first;
  for (std::size_t c = 0; c < equation.size(); ++c) {
    const double scaled = equation[c].coefficient * weight;
    double& element = m_diagonal[At(places[c])];
    for (std::size_t r = 0; r < equation.size(); ++r) {
      if (places[r] == places[c]) element += scaled * equation[r].coefficient;
    }
  }
}

void StoredEquations::GroupBySupernodes(const SymbolicFactor& symbolic) {
  // Calls visit(supernode) once for each supernode with a term of an equation.
  const auto forEachSupernode = [&](std::size_t equation, auto visit) {
    for (std::size_t k = Begin(equation); k < m_end[equation]; ++k) {
      const std::size_t s = symbolic.SupernodeNumberAt(m_places[k]);
      bool isFirst = true;
      for (std::size_t before = Begin(equation); isFirst && before < k; ++before) {
        isFirst = symbolic.SupernodeNumberAt(m_places[before]) != s;
      }
      if (isFirst) visit(s);
    }
  };
  m_firstOf.assign(symbolic.Supernodes().size() + 1, 0);
  for (std::size_t e = 0; e < m_end.size(); ++e) {
    forEachSupernode(e, [&](std::size_t s) { ++m_firstOf[s + 1]; });
  }
  std::partial_sum(m_firstOf.begin(), m_firstOf.end(), m_firstOf.begin());
  m_touching.resize(m_firstOf.back());
  std::vector<std::size_t> next(m_firstOf.begin(), m_firstOf.end() - 1);
  for (std::size_t e = 0; e < m_end.size(); ++e) {
    forEachSupernode(e,
                     [&](std::size_t s) { m_touching[next[s]++] = static_cast<std::uint32_t>(e); });
  }
}

void StoredEquations::Fill(const SymbolicFactor& symbolic, std::size_t supernode, double* panel,
                           std::vector<std::int32_t>& rowOf) const {
  const Supernode& s = symbolic.Supernodes()[supernode];
  const std::int32_t height = s.Height();
  // Large panels are mostly touched for the first time: by all threads.
  constexpr std::size_t kElements = 1 << 17;
  const std::size_t size = At(s.width) * At(height);
  ForEachPart(size, kElements, [panel](std::size_t begin, std::size_t end) {
    std::fill(panel + begin, panel + end, 0.0);
  });
  for (std::int32_t j = 0; j < s.width; ++j) {
    panel[std::int64_t{j} * (height + 1)] = m_diagonal[At(s.first + j)];
    rowOf[At(s.first + j)] = j;
  }
  std::int32_t row = s.width;
  for (const std::int32_t place : symbolic.Rows(s)) rowOf[At(place)] = row++;
  for (std::size_t k = m_firstOf[supernode]; k < m_firstOf[supernode + 1]; ++k) {
    const std::size_t e = m_touching[k];
    const std::size_t begin = Begin(e);
    const std::size_t end = m_end[e];
    for (std::size_t c = begin; c < end; ++c) {
      const std::int32_t place = m_places[c];
      if (place < s.first || place >= s.first + s.width) continue;
      double* const column = panel + std::int64_t{place - s.first} * height;
      const double scaled = m_coefficients[c] * m_weights[e];
      for (std::size_t r = begin; r < end; ++r) {
        if (m_places[r] > place) column[rowOf[At(m_places[r])]] += scaled * m_coefficients[r];
      }
    }
  }
}

}  // namespace brenu
