#include "core/sparse/sparse_factor.h"

#include <algorithm>
#include <atomic>
#include <vector>

#include "core/large_vector.h"
#include "core/parallel.h"
#include "core/sparse/dense_factor.h"
#include "core/sparse/dense_tile.h"
#include "core/sparse/subtrees.h"
#include "core/sparse/triangle.h"

namespace brenu {

namespace {

constexpr std::size_t kColumns = 128;  // of large squares, worth a thread

std::size_t At(std::ptrdiff_t i) { return static_cast<std::size_t>(i); }

// Of squares only the lower triangles are used, and what tiles of products along the diagonal
// touch: the pages of the rest need never be there.
std::ptrdiff_t FirstUsed(std::ptrdiff_t column) {
  return std::max<std::ptrdiff_t>(0, column - kTileRows);
}

void ClearLower(double* square, std::ptrdiff_t size, std::size_t begin, std::size_t end) {
  for (auto j = static_cast<std::ptrdiff_t>(begin); j < static_cast<std::ptrdiff_t>(end); ++j) {
    const std::ptrdiff_t first = FirstUsed(j);
    std::fill_n(square + j * size + first, size - first, 0.0);
  }
}

// What the columns eliminated so far subtract from the rows below a supernode is a dense square,
// its update, whose lower triangle waits until the parent takes it up.
class Factorisation {
 public:
  Factorisation(const SymbolicFactor& symbolic, const StoredEquations& matrix,
                std::span<double> elements, PivotCheck* check)
      : m_symbolic(symbolic),
        m_matrix(matrix),
        m_elements(elements),
        m_check(check),
        m_waiting(symbolic.Supernodes().size()) {}

  bool Run() {
    const Subtrees subtrees(m_symbolic, WorkerCount());
    for (std::size_t i = 0; i < WorkerCount(); ++i) m_workers.emplace_back(m_symbolic, m_check);
    std::atomic<bool> isRegular = true;
    ForEach(subtrees.ranges.size(), [&](std::size_t i, std::size_t worker) {
      if (isRegular && !Eliminate(subtrees.ranges[i], m_workers[worker])) isRegular = false;
    });
    for (Worker& worker : m_workers) Release(worker.stack);
    for (const std::int32_t s : subtrees.above) {
      if (!isRegular || !EliminateAbove(At(s))) return false;
    }
    if (m_check != nullptr) {
      for (const Worker& worker : m_workers) m_check->Join(worker.check);
    }
    return isRegular;
  }

 private:
  struct Worker {
    Worker(const SymbolicFactor& symbolic, const PivotCheck* original)
        : rowOf(At(symbolic.UnknownCount())),
          check(original == nullptr ? PivotCheck({}) : PivotCheck(*original)) {}

    LargeVector<double> stack;  // updates that wait, those of the children of one parent together
    std::vector<double> d;      // D of the current supernode
    std::vector<std::int32_t> rowOf;
    PivotCheck check;
    DenseProduct product;
  };

  // A subtree.  Updates wait on a stack, below the square of the current one; that of the root is
  // then kept for its parent.
  bool Eliminate(const Subtrees::Range& range, Worker& worker) {
    LargeVector<double>& stack = worker.stack;
    stack.clear();
    stack.reserve(MostStacked(range));
    for (std::int32_t k = range.first; k < range.end; ++k) {
      const Supernode& s = SupernodeOf(k);
      const auto children = m_symbolic.Children(At(k));
      std::size_t waiting = stack.size();
      for (const std::int32_t c : children) waiting -= TriangleSize(SupernodeOf(c).rowCount);

      const std::size_t updateAt = stack.size();
      stack.resize(updateAt + SquareSize(s));
      double* const panel = m_elements.data() + s.firstElement;
      double* const update = stack.data() + updateAt;
      ClearLower(update, s.rowCount, 0, At(s.rowCount));
      m_matrix.Fill(m_symbolic, At(k), panel, worker.rowOf);
      const double* childUpdate = stack.data() + waiting;
      for (const std::int32_t c : children) {
        TakeUp(SupernodeOf(c), childUpdate, s, panel, update);
        childUpdate += TriangleSize(SupernodeOf(c).rowCount);
      }
      if (!Factor(s, update, worker)) return false;
      PackLower(update, s.rowCount, stack.data() + waiting, 0, s.rowCount);
      stack.resize(waiting + TriangleSize(s.rowCount));
    }
    m_waiting[At(range.end - 1)].assign(stack.begin(), stack.end());
    return true;
  }

  // A supernode above the subtrees.
  bool EliminateAbove(std::size_t k) {
    const Supernode& s = m_symbolic.Supernodes()[k];
    double* const panel = m_elements.data() + s.firstElement;
    m_square.clear();
    m_square.resize(SquareSize(s));
    double* const update = m_square.data();
    ForEachPart(At(s.rowCount), kColumns, [&](std::size_t begin, std::size_t end) {
      ClearLower(update, s.rowCount, begin, end);
    });
    m_matrix.Fill(m_symbolic, k, panel, m_workers[0].rowOf);
    for (const std::int32_t c : m_symbolic.Children(k)) {
      TakeUp(SupernodeOf(c), m_waiting[At(c)].data(), s, panel, update);
      Release(m_waiting[At(c)]);
    }
    if (!Factor(s, update, m_workers[0])) return false;
    m_waiting[k].resize(TriangleSize(s.rowCount));
    ForEachPart(At(s.rowCount), kColumns, [&](std::size_t begin, std::size_t end) {
      PackLower(update, s.rowCount, m_waiting[k].data(), static_cast<std::ptrdiff_t>(begin),
                static_cast<std::ptrdiff_t>(end));
    });
    return true;
  }

  bool Factor(const Supernode& s, double* update, Worker& worker) {
    const std::ptrdiff_t height = s.Height();
    const std::ptrdiff_t width = s.width;
    const std::ptrdiff_t rows = s.rowCount;
    double* const panel = m_elements.data() + s.firstElement;
    PivotCheck* const check = m_check == nullptr ? nullptr : &worker.check;
    if (!FactorPanel(panel, height, height, width, worker.product, check, s.first)) return false;
    worker.d.resize(At(width));
    for (std::ptrdiff_t j = 0; j < width; ++j) worker.d[At(j)] = panel[j * (height + 1)];
    // U -= L D L^T
    const MatrixView below = {panel + width, 1, height};
    worker.product.Add({below, below, worker.d.data(), -1.0, rows, rows, width}, update, rows,
                       DenseProduct::Part::kLower);
    return true;
  }

  // Adds the lower triangle of a child's update to the parent's columns and update.
  void TakeUp(const Supernode& child, const double* childUpdate, const Supernode& parent,
              double* panel, double* update) const {
    const auto places = m_symbolic.RowsInParent(child);
    ForEachPart(places.size(), kColumns, [&](std::size_t first, std::size_t end) {
      for (std::size_t j = first; j < end; ++j) {
        const std::ptrdiff_t place = places[j];
        const bool inPanel = place < parent.width;
        double* const target = inPanel ? panel : update;
        // Where row 0 of the column would stand.
        const std::ptrdiff_t column = inPanel
                                          ? place * parent.Height()
                                          : (place - parent.width) * parent.rowCount - parent.width;
        const double* const from =
            childUpdate + ColumnOfTriangle(static_cast<std::ptrdiff_t>(j), child.rowCount) - j;
        for (std::size_t i = j; i < places.size(); ++i) target[column + places[i]] += from[i];
      }
    });
  }

  // The largest size of the stack.
  std::size_t MostStacked(const Subtrees::Range& range) const {
    std::size_t most = 0;
    std::size_t size = 0;
    for (std::int32_t s = range.first; s < range.end; ++s) {
      most = std::max(most, size + SquareSize(SupernodeOf(s)));
      size += TriangleSize(SupernodeOf(s).rowCount);
      for (const std::int32_t c : m_symbolic.Children(At(s)))
        size -= TriangleSize(SupernodeOf(c).rowCount);
    }
    return most;
  }

  const Supernode& SupernodeOf(std::int32_t s) const { return m_symbolic.Supernodes()[At(s)]; }
  static std::size_t SquareSize(const Supernode& s) { return At(s.rowCount) * At(s.rowCount); }

  const SymbolicFactor& m_symbolic;
  const StoredEquations& m_matrix;
  std::span<double> m_elements;
  PivotCheck* m_check;
  std::vector<LargeVector<double>> m_waiting;  // by supernode: updates of and above subtree roots
  LargeVector<double> m_square;                // the update of a supernode above the subtrees
  std::vector<Worker> m_workers;
};

}  // namespace

bool FactorSparse(const SymbolicFactor& symbolic, const StoredEquations& matrix,
                  std::span<double> elements, PivotCheck* check) {
  return Factorisation(symbolic, matrix, elements, check).Run();
}

}  // namespace brenu
