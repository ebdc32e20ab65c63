#include "core/sparse/sparse_solution.h"

#include <algorithm>
#include <numeric>
#include <vector>

#include "core/parallel.h"
#include "core/sparse/subtrees.h"

namespace brenu {

namespace {

std::size_t At(std::ptrdiff_t i) { return static_cast<std::size_t>(i); }

// L y = b of one supernode: its own part of y and what that takes from the rows below.
void SolveForward(const Supernode& s, const double* panel, double* x, std::vector<double>& below) {
  below.assign(At(s.rowCount), 0.0);
  double* const own = x + s.first;
  for (std::ptrdiff_t j = 0; j < s.width; ++j, panel += s.Height()) {
    for (std::ptrdiff_t i = j + 1; i < s.width; ++i) own[i] -= panel[i] * own[j];
    const double* const lower = panel + s.width;
    for (std::ptrdiff_t i = 0; i < s.rowCount; ++i) below[At(i)] += lower[i] * own[j];
  }
}

// L^T x = D^-1 y of one supernode, with the rows below known.
void SolveBackward(const SymbolicFactor& symbolic, const Supernode& s, const double* panel,
                   double* x, std::vector<double>& below) {
  const auto rows = symbolic.Rows(s);
  below.resize(rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) below[i] = x[rows[i]];
  double* const own = x + s.first;
  for (std::ptrdiff_t j = s.width; j-- > 0;) {
    const double* const column = panel + j * s.Height();
    double sum = own[j] / column[j];
    for (std::ptrdiff_t i = j + 1; i < s.width; ++i) sum -= column[i] * own[i];
    const double* const lower = column + s.width;
    for (std::ptrdiff_t i = 0; i < s.rowCount; ++i) sum -= lower[i] * below[At(i)];
    own[j] = sum;
  }
}

// Supernodes of a subtree, in ascending order.  What they take from rows above the subtree is put
// down in `outside`.
void SolveForward(const SymbolicFactor& symbolic, std::span<const double> factor,
                  const Subtrees::Range& range, double* x, std::vector<double>& outside) {
  const Supernode& root = symbolic.Supernodes()[At(range.end - 1)];
  const std::int32_t end = root.first + root.width;
  std::vector<double> below;
  for (std::int32_t k = range.first; k < range.end; ++k) {
    const Supernode& s = symbolic.Supernodes()[At(k)];
    SolveForward(s, factor.data() + s.firstElement, x, below);
    const auto rows = symbolic.Rows(s);
    for (std::size_t i = 0; i < rows.size(); ++i) {
      if (rows[i] < end) {
        x[rows[i]] -= below[i];
      } else {
        outside.push_back(below[i]);
      }
    }
  }
}

// Takes it from these rows.
void SubtractOutside(const SymbolicFactor& symbolic, const Subtrees::Range& range,
                     const std::vector<double>& outside, double* x) {
  const Supernode& root = symbolic.Supernodes()[At(range.end - 1)];
  const std::int32_t end = root.first + root.width;
  auto value = outside.begin();
  for (std::int32_t k = range.first; k < range.end; ++k) {
    for (const std::int32_t row : symbolic.Rows(symbolic.Supernodes()[At(k)])) {
      if (row >= end) x[row] -= *value++;
    }
  }
}

// The rows above the subtrees get everything in the order of supernodes.
void SolveForward(const SymbolicFactor& symbolic, std::span<const double> factor,
                  const Subtrees& subtrees, double* x) {
  std::vector<std::vector<double>> outside(subtrees.ranges.size());
  ForEach(subtrees.ranges.size(), [&](std::size_t i, std::size_t) {
    SolveForward(symbolic, factor, subtrees.ranges[i], x, outside[i]);
  });
  std::vector<std::size_t> order(subtrees.ranges.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
    return subtrees.ranges[a].first < subtrees.ranges[b].first;
  });
  std::vector<double> below;
  auto next = order.begin();
  for (const std::int32_t k : subtrees.above) {
    for (; next != order.end() && subtrees.ranges[*next].first < k; ++next) {
      SubtractOutside(symbolic, subtrees.ranges[*next], outside[*next], x);
    }
    const Supernode& s = symbolic.Supernodes()[At(k)];
    SolveForward(s, factor.data() + s.firstElement, x, below);
    const auto rows = symbolic.Rows(s);
    for (std::size_t i = 0; i < rows.size(); ++i) x[rows[i]] -= below[i];
  }
}

void SolveBackward(const SymbolicFactor& symbolic, std::span<const double> factor,
                   const Subtrees& subtrees, double* x) {
  std::vector<double> below;
  for (std::size_t k = subtrees.above.size(); k-- > 0;) {
    const Supernode& s = symbolic.Supernodes()[At(subtrees.above[k])];
    SolveBackward(symbolic, s, factor.data() + s.firstElement, x, below);
  }
  ForEach(subtrees.ranges.size(), [&](std::size_t i, std::size_t) {
    std::vector<double> own;
    for (std::int32_t k = subtrees.ranges[i].end; k-- > subtrees.ranges[i].first;) {
      const Supernode& s = symbolic.Supernodes()[At(k)];
      SolveBackward(symbolic, s, factor.data() + s.firstElement, x, own);
    }
  });
}

}  // namespace

void SolveSparse(const SymbolicFactor& symbolic, std::span<const double> factor,
                 std::span<double> x) {
  const Subtrees subtrees(symbolic, WorkerCount());
  SolveForward(symbolic, factor, subtrees, x.data());
  SolveBackward(symbolic, factor, subtrees, x.data());
}

void SolveForward(const SymbolicFactor& symbolic, const Supernode& s, const double* panel,
                  double* x) {
  std::vector<double> below;
  SolveForward(s, panel, x, below);
  const auto rows = symbolic.Rows(s);
  for (std::size_t i = 0; i < rows.size(); ++i) x[rows[i]] -= below[i];
}

void SolveBackward(const SymbolicFactor& symbolic, std::span<const double> factor,
                   std::span<double> x) {
  SolveBackward(symbolic, factor, Subtrees(symbolic, WorkerCount()), x.data());
}

}  // namespace brenu
