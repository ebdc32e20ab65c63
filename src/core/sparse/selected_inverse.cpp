#include "core/sparse/selected_inverse.h"

#include <algorithm>
#include <vector>

#include "core/large_vector.h"
#include "core/parallel.h"
#include "core/sparse/dense_factor.h"
#include "core/sparse/row_runs.h"
#include "core/sparse/subtrees.h"

namespace brenu {

namespace {

constexpr std::ptrdiff_t kBlock = 64;  // columns of triangular products treated together

std::size_t At(std::ptrdiff_t i) { return static_cast<std::size_t>(i); }

// From the last supernode to the first.  A supernode needs the inverse Z of the rows below it, a
// full square, which its parent cuts out for it.
class Inversion {
 public:
  Inversion(const SymbolicFactor& symbolic, std::span<double> elements)
      : m_symbolic(symbolic),
        m_elements(elements),
        m_squares(symbolic.Supernodes().size()),
        m_workers(WorkerCount()) {}

  void Run() {
    const Subtrees subtrees(m_symbolic, m_workers.size());
    for (std::size_t k = subtrees.above.size(); k-- > 0;) InvertAbove(subtrees.above[k]);
    ForEach(subtrees.ranges.size(), [&](std::size_t i, std::size_t worker) {
      Invert(subtrees.ranges[i], m_workers[worker]);
    });
  }

 private:
  struct Worker {
    LargeVector<double> stack;     // squares for supernodes still to come, the next one on top
    std::vector<double> inverseD;  // of the current supernode, like the rest
    LargeVector<double> x;         // X, by columns
    LargeVector<double> y;         // Y, by columns
    LargeVector<double> z;         // Z_RJ, by columns
    LargeVector<double> work;
    DenseProduct product;
    RowRuns runs;  // of the child that is served
  };

  // A supernode above the subtrees.
  void InvertAbove(std::int32_t k) {
    const Supernode& s = SupernodeOf(k);
    LargeVector<double>& square = m_squares[At(k)];
    Invert(s, square.data(), m_workers[0]);
    for (const std::int32_t c : m_symbolic.Children(At(k))) {
      m_squares[At(c)].resize(SquareSize(SupernodeOf(c)));
      CutOut(SupernodeOf(c), s, square.data(), m_squares[At(c)].data(), m_workers[0].runs);
    }
    Release(square);
  }

  // A subtree, with squares on a stack.
  void Invert(const Subtrees::Range& range, Worker& worker) {
    LargeVector<double>& stack = worker.stack;
    LargeVector<double>& square = m_squares[At(range.end - 1)];
    stack.clear();
    stack.reserve(MostStacked(range));
    stack.insert(stack.end(), square.begin(), square.end());
    Release(square);
    for (std::int32_t k = range.end; k-- > range.first;) {
      const Supernode& s = SupernodeOf(k);
      Invert(s, stack.data() + (stack.size() - SquareSize(s)), worker);
      ServeChildren(s, m_symbolic.Children(At(k)), stack, worker.runs);
    }
  }

  // With J the columns and R the rows below, X = L_JJ^-1 and Y = L_RJ X:
  //   Z_RJ = -Z_RR Y,  Z_JJ = X^T D^-1 X - Z_RJ^T Y.
  void Invert(const Supernode& s, const double* zBelow, Worker& worker) {
    const std::ptrdiff_t height = s.Height();
    const std::ptrdiff_t width = s.width;
    const std::ptrdiff_t rows = s.rowCount;
    double* const panel = m_elements.data() + s.firstElement;

    worker.inverseD.resize(At(width));
    for (std::ptrdiff_t j = 0; j < width; ++j)
      worker.inverseD[At(j)] = 1.0 / panel[j * (height + 1)];
    worker.x.assign(At(width * width), 0.0);
    worker.work.resize(At(width * width));
    InvertUnitLower({panel, 1, height}, width, worker.x.data(), worker.work.data(), worker.product);

    // X is lower triangular: column j of Y needs the columns from j on.
    worker.y.assign(At(rows * width), 0.0);
    for (std::ptrdiff_t j = 0; j < width; j += kBlock) {
      const MatrixView l = {panel + j * height + width, 1, height};
      const MatrixView x = {worker.x.data() + j * (width + 1), width, 1};
      worker.product.Add({l, x, nullptr, 1.0, rows, std::min(kBlock, width - j), width - j},
                         worker.y.data() + j * rows, rows, DenseProduct::Part::kWhole);
    }

    const MatrixView y = {worker.y.data(), rows, 1};
    for (std::ptrdiff_t j = 0; j < width; ++j) std::fill_n(panel + j * height, height, 0.0);
    worker.product.Add({{zBelow, 1, rows}, y, nullptr, -1.0, rows, width, rows}, panel + width,
                       height, DenseProduct::Part::kWhole);
    // Z_RJ moves out of the panel: a product must not overlap its result.
    worker.z.resize(At(rows * width));
    for (std::ptrdiff_t j = 0; j < width; ++j) {
      std::copy_n(panel + j * height + width, rows, worker.z.data() + j * rows);
    }
    worker.product.Add({{worker.z.data(), rows, 1}, y, nullptr, -1.0, width, width, rows}, panel,
                       height, DenseProduct::Part::kLower);
    // Row i of X^T begins with element i.
    for (std::ptrdiff_t i = 0; i < width; i += kBlock) {
      const MatrixView xi = {worker.x.data() + i * (width + 1), width, 1};
      const MatrixView x = {worker.x.data() + i, width, 1};
      const std::ptrdiff_t end = std::min(i + kBlock, width);
      worker.product.Add({xi, x, worker.inverseD.data() + i, 1.0, end - i, end, width - i},
                         panel + i, height, DenseProduct::Part::kWhole);
    }
  }

  // Puts the squares that the children need in the place of the supernode's own one.
  void ServeChildren(const Supernode& s, std::span<const std::int32_t> children,
                     LargeVector<double>& stack, RowRuns& runs) const {
    const std::size_t ownAt = stack.size() - SquareSize(s);
    std::size_t childAt = stack.size();
    std::size_t needed = 0;
    for (const std::int32_t c : children) needed += SquareSize(SupernodeOf(c));
    stack.resize(childAt + needed);
    for (const std::int32_t c : children) {
      CutOut(SupernodeOf(c), s, stack.data() + ownAt, stack.data() + childAt, runs);
      childAt += SquareSize(SupernodeOf(c));
    }
    stack.erase(stack.begin() + static_cast<std::ptrdiff_t>(ownAt),
                stack.begin() + static_cast<std::ptrdiff_t>(ownAt + SquareSize(s)));
  }

  void CutOut(const Supernode& child, const Supernode& parent, const double* zBelow, double* square,
              RowRuns& runs) const {
    const double* const panel = m_elements.data() + parent.firstElement;
    const auto places = m_symbolic.RowsInParent(child);
    const std::size_t size = places.size();
    runs.Find(places);
    ForEachPart(size, kBlock, [&](std::size_t first, std::size_t end) {
      for (std::size_t j = first; j < end; ++j) {
        const std::ptrdiff_t place = places[j];
        const bool inPanel = place < parent.width;
        const double* const source = inPanel ? panel : zBelow;
        // Where row 0 of the column would stand.
        const std::ptrdiff_t column = inPanel
                                          ? place * parent.Height()
                                          : (place - parent.width) * parent.rowCount - parent.width;
        runs.ForEachFrom(j, [&](std::size_t row, std::ptrdiff_t at, std::size_t count) {
          std::copy_n(source + column + at, count, square + j * size + row);
        });
      }
      // The upper triangle, some columns at a time so that they stay in the cache.
      for (std::size_t i = first + 1; i < size; ++i) {
        const std::size_t columns = std::min(end, i);
        for (std::size_t j = first; j < columns; ++j) square[i * size + j] = square[j * size + i];
      }
    });
  }

  // The largest size of the stack.
  std::size_t MostStacked(const Subtrees::Range& range) const {
    std::size_t size = SquareSize(SupernodeOf(range.end - 1));
    std::size_t most = size;
    for (std::int32_t s = range.end; s-- > range.first;) {
      for (const std::int32_t c : m_symbolic.Children(At(s))) size += SquareSize(SupernodeOf(c));
      most = std::max(most, size);
      size -= SquareSize(SupernodeOf(s));
    }
    return most;
  }

  const Supernode& SupernodeOf(std::int32_t s) const { return m_symbolic.Supernodes()[At(s)]; }
  static std::size_t SquareSize(const Supernode& s) { return At(s.rowCount) * At(s.rowCount); }

  const SymbolicFactor& m_symbolic;
  std::span<double> m_elements;
  std::vector<LargeVector<double>> m_squares;  // by supernode: of and above subtree roots
  std::vector<Worker> m_workers;
};

}  // namespace

void InvertSelected(const SymbolicFactor& symbolic, std::span<double> elements) {
  Inversion(symbolic, elements).Run();
}

}  // namespace brenu
