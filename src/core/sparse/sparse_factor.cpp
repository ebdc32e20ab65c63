#include "core/sparse/sparse_factor.h"

#include <algorithm>
#include <vector>

#include "core/sparse/dense_factor.h"

namespace brenu {

namespace {

std::size_t At(std::ptrdiff_t i) { return static_cast<std::size_t>(i); }

// What the columns eliminated so far subtract from the rows below a supernode is a dense square,
// its update.  It waits on a stack until the parent takes it up.
class Factorisation {
 public:
  Factorisation(const SymbolicFactor& symbolic, std::span<double> elements, PivotCheck* check)
      : m_symbolic(symbolic), m_elements(elements), m_check(check) {
    m_stack.reserve(MostStacked());
  }

  bool Run() {
    const auto supernodes = m_symbolic.Supernodes();
    for (std::size_t s = 0; s < supernodes.size(); ++s) {
      if (!Eliminate(supernodes[s], m_symbolic.Children(s))) return false;
    }
    return true;
  }

 private:
  bool Eliminate(const Supernode& s, std::span<const std::int32_t> children) {
    const std::ptrdiff_t height = s.Height();
    const std::ptrdiff_t width = s.width;
    const std::ptrdiff_t rows = s.rowCount;
    std::size_t waiting = m_stack.size();
    for (const std::int32_t c : children) waiting -= UpdateSize(SupernodeOf(c));

    const std::size_t updateAt = m_stack.size();
    m_stack.resize(updateAt + UpdateSize(s));  // of zeros
    double* const panel = m_elements.data() + s.firstElement;
    double* const update = m_stack.data() + updateAt;
    const double* childUpdate = m_stack.data() + waiting;
    for (const std::int32_t c : children) {
      TakeUp(SupernodeOf(c), childUpdate, s, panel, update);
      childUpdate += UpdateSize(SupernodeOf(c));
    }

    if (!FactorPanel(panel, height, height, width, m_product, m_check, s.first)) return false;
    m_d.resize(At(width));
    for (std::ptrdiff_t j = 0; j < width; ++j) m_d[At(j)] = panel[j * (height + 1)];
    // U -= L D L^T
    const MatrixView below = {panel + width, 1, height};
    m_product.Add({below, below, m_d.data(), -1.0, rows, rows, width}, update, rows,
                  DenseProduct::Part::kLower);

    std::copy_n(update, UpdateSize(s), m_stack.data() + waiting);
    m_stack.resize(waiting + UpdateSize(s));
    return true;
  }

  // Adds the lower triangle of a child's update to the parent's columns and update.
  void TakeUp(const Supernode& child, const double* childUpdate, const Supernode& parent,
              double* panel, double* update) const {
    const auto places = m_symbolic.RowsInParent(child);
    for (std::size_t j = 0; j < places.size(); ++j) {
      const std::ptrdiff_t place = places[j];
      const bool inPanel = place < parent.width;
      double* const target = inPanel ? panel : update;
      // Where row 0 of the column would stand.
      const std::ptrdiff_t column = inPanel
                                        ? place * parent.Height()
                                        : (place - parent.width) * parent.rowCount - parent.width;
      const double* const from = childUpdate + j * places.size();
      for (std::size_t i = j; i < places.size(); ++i) target[column + places[i]] += from[i];
    }
  }

  // The largest size of the stack.
  std::size_t MostStacked() const {
    std::size_t most = 0;
    std::size_t size = 0;
    for (std::size_t s = 0; s < m_symbolic.Supernodes().size(); ++s) {
      size += UpdateSize(m_symbolic.Supernodes()[s]);
      most = std::max(most, size);
      for (const std::int32_t c : m_symbolic.Children(s)) size -= UpdateSize(SupernodeOf(c));
    }
    return most;
  }

  const Supernode& SupernodeOf(std::int32_t s) const { return m_symbolic.Supernodes()[At(s)]; }
  static std::size_t UpdateSize(const Supernode& s) { return At(s.rowCount) * At(s.rowCount); }

  const SymbolicFactor& m_symbolic;
  std::span<double> m_elements;
  PivotCheck* m_check;
  std::vector<double> m_stack;  // updates that wait, those of the children of one parent together
  std::vector<double> m_d;      // D of the current supernode
  DenseProduct m_product;
};

}  // namespace

bool FactorSparse(const SymbolicFactor& symbolic, std::span<double> elements, PivotCheck* check) {
  return Factorisation(symbolic, elements, check).Run();
}

namespace {

// L y = b of one supernode: its own part of y, then what that takes from the rows below.
void SolveForward(const SymbolicFactor& symbolic, const Supernode& s, const double* panel,
                  double* x, std::vector<double>& below) {
  below.assign(At(s.rowCount), 0.0);
  double* const own = x + s.first;
  for (std::ptrdiff_t j = 0; j < s.width; ++j, panel += s.Height()) {
    for (std::ptrdiff_t i = j + 1; i < s.width; ++i) own[i] -= panel[i] * own[j];
    const double* const lower = panel + s.width;
    for (std::ptrdiff_t i = 0; i < s.rowCount; ++i) below[At(i)] += lower[i] * own[j];
  }
  const auto rows = symbolic.Rows(s);
  for (std::size_t i = 0; i < rows.size(); ++i) x[rows[i]] -= below[i];
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

}  // namespace

void SolveSparse(const SymbolicFactor& symbolic, std::span<const double> factor,
                 std::span<double> x) {
  const auto supernodes = symbolic.Supernodes();
  std::vector<double> below;
  for (const Supernode& s : supernodes) {
    SolveForward(symbolic, s, factor.data() + s.firstElement, x.data(), below);
  }
  SolveBackward(symbolic, factor, x);
}

void SolveBackward(const SymbolicFactor& symbolic, std::span<const double> factor,
                   std::span<double> x) {
  const auto supernodes = symbolic.Supernodes();
  std::vector<double> below;
  for (std::size_t k = supernodes.size(); k-- > 0;) {
    const Supernode& s = supernodes[k];
    SolveBackward(symbolic, s, factor.data() + s.firstElement, x.data(), below);
  }
}

}  // namespace brenu
