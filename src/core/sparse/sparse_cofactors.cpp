#include "core/sparse/sparse_cofactors.h"

#include <algorithm>
#include <utility>

#include "core/parallel.h"
#include "core/sparse/sparse_solution.h"

namespace brenu {

namespace {

std::size_t At(std::ptrdiff_t i) { return static_cast<std::size_t>(i); }

// y of a function on its way up the tree: the columns of one supernode after the other.
struct Way {
  std::int32_t start = -1;  // the first supernode
  std::vector<double> y;
};

std::int32_t FirstSupernode(const SymbolicFactor& symbolic, std::span<const Term> function) {
  std::int32_t place = symbolic.UnknownCount();
  for (const Term& t : function) place = std::min(place, symbolic.PlaceOf(t.unknown));
  if (place == symbolic.UnknownCount()) return -1;
  return static_cast<std::int32_t>(symbolic.SupernodeNumberAt(place));
}

// `x` is zero before and after.
Way GoUp(const SymbolicFactor& symbolic, std::span<const double> factor,
         std::span<const Term> function, std::vector<double>& x) {
  Way way{FirstSupernode(symbolic, function), {}};
  for (const Term& t : function) x[At(symbolic.PlaceOf(t.unknown))] += t.coefficient;
  for (std::int32_t k = way.start; k >= 0; k = symbolic.Supernodes()[At(k)].parent) {
    const Supernode& s = symbolic.Supernodes()[At(k)];
    SolveForward(symbolic, s, factor.data() + s.firstElement, x.data());
    double* const own = x.data() + s.first;
    way.y.insert(way.y.end(), own, own + s.width);
    std::fill_n(own, s.width, 0.0);
  }
  return way;
}

double Dot(const double* a, const double* b, std::size_t count) {
  double sums[4] = {};
  std::size_t i = 0;
  for (; i + 4 <= count; i += 4) {
    for (std::size_t k = 0; k < 4; ++k) sums[k] += a[i + k] * b[i + k];
  }
  for (; i < count; ++i) sums[0] += a[i] * b[i];
  return (sums[0] + sums[1]) + (sums[2] + sums[3]);
}

}  // namespace

std::vector<double> CofactorsBetween(const SymbolicFactor& symbolic, std::span<const double> factor,
                                     std::span<const std::vector<Term>> functions) {
  const auto supernodes = symbolic.Supernodes();
  // By supernode: the columns from it up to the root.
  std::vector<std::size_t> columns(supernodes.size());
  for (std::size_t k = supernodes.size(); k-- > 0;) {
    const Supernode& s = supernodes[k];
    columns[k] = At(s.width) + (s.parent < 0 ? 0 : columns[At(s.parent)]);
  }

  constexpr std::size_t kWays = 16;  // gone by one thread
  std::vector<Way> ways(functions.size());
  ForEachPart(ways.size(), kWays, [&](std::size_t begin, std::size_t end) {
    std::vector<double> x(At(symbolic.UnknownCount()), 0.0);
    for (std::size_t i = begin; i < end; ++i) ways[i] = GoUp(symbolic, factor, functions[i], x);
  });

  const std::size_t count = functions.size();
  std::vector<double> cofactors(count * count, 0.0);
  constexpr std::size_t kRows = 8;  // computed by one thread
  ForEachPart(count, kRows, [&](std::size_t begin, std::size_t end) {
    std::vector<double> weighted;  // y / d
    for (std::size_t i = begin; i < end; ++i) {
      weighted = ways[i].y;
      auto value = weighted.begin();
      for (std::int32_t k = ways[i].start; k >= 0; k = supernodes[At(k)].parent) {
        const Supernode& s = supernodes[At(k)];
        const double* const panel = factor.data() + s.firstElement;
        for (std::ptrdiff_t j = 0; j < s.width; ++j) *value++ /= panel[j * (s.Height() + 1)];
      }
      for (std::size_t j = 0; j <= i; ++j) {
        // Where the two ways meet: parents have higher numbers.
        std::int32_t a = ways[i].start;
        std::int32_t b = ways[j].start;
        while (a != b && a >= 0 && b >= 0) {
          std::int32_t& lower = a < b ? a : b;
          lower = supernodes[At(lower)].parent;
        }
        if (a != b || a < 0) continue;
        const std::size_t common = columns[At(a)];
        const double* const y = ways[j].y.data() + (ways[j].y.size() - common);
        const double cofactor = Dot(weighted.data() + (weighted.size() - common), y, common);
        cofactors[i * count + j] = cofactors[j * count + i] = cofactor;
      }
    }
  });
  return cofactors;
}

}  // namespace brenu
