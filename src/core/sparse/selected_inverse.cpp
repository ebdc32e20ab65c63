#include "core/sparse/selected_inverse.h"

#include <algorithm>
#include <vector>

#include "core/large_vector.h"
#include "core/parallel.h"
#include "core/sparse/dense_factor.h"
#include "core/sparse/row_runs.h"
#include "core/sparse/subtrees.h"
#include "core/sparse/triangle.h"

namespace brenu {

namespace {

constexpr std::ptrdiff_t kBlock = 64;  // columns of triangular products treated together

std::size_t At(std::ptrdiff_t i) { return static_cast<std::size_t>(i); }

// From the last supernode to the first.  A supernode needs the inverse Z of the rows below it,
// which its parent cuts out for it: a triangle as long as it waits, a full square when its turn
// comes.
class Inversion {
 public:
  Inversion(const SymbolicFactor& symbolic, std::span<double> elements)
      : m_symbolic(symbolic),
        m_elements(elements),
        m_waiting(symbolic.Supernodes().size()),
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
    LargeVector<double> stack;   // triangles of supernodes still to come, the next one on top
    LargeVector<double> zBelow;  // of the current supernode, like the rest
    std::vector<double> inverseD;
    LargeVector<double> x;  // X, by columns
    LargeVector<double> y;  // Y, by columns
    LargeVector<double> z;  // Z_RJ, by columns
    LargeVector<double> work;
    DenseProduct product;
    RowRuns runs;  // of the child that is served
  };

  // A supernode above the subtrees.
  void InvertAbove(std::int32_t k) {
    const Supernode& s = SupernodeOf(k);
    Worker& worker = m_workers[0];
    Unpack(m_waiting[At(k)].data(), s, worker.zBelow);
    Release(m_waiting[At(k)]);
    Invert(s, worker);
    for (const std::int32_t c : m_symbolic.Children(At(k))) {
      m_waiting[At(c)].resize(TriangleSize(SupernodeOf(c).rowCount));
      CutOut(SupernodeOf(c), s, m_waiting[At(c)].data(), worker);
    }
    // The next ones are smaller.
    Release(worker.x);
    Release(worker.work);
  }

  // A subtree, with triangles on a stack.
  void Invert(const Subtrees::Range& range, Worker& worker) {
    LargeVector<double>& stack = worker.stack;
    LargeVector<double>& waiting = m_waiting[At(range.end - 1)];
    stack.clear();
    stack.reserve(MostStacked(range));
    stack.insert(stack.end(), waiting.begin(), waiting.end());
    Release(waiting);
    for (std::int32_t k = range.end; k-- > range.first;) {
      const Supernode& s = SupernodeOf(k);
      std::size_t top = stack.size() - TriangleSize(s.rowCount);
      Unpack(stack.data() + top, s, worker.zBelow);
      stack.resize(top);
      Invert(s, worker);
      for (const std::int32_t c : m_symbolic.Children(At(k))) {
        top = stack.size();
        stack.resize(top + TriangleSize(SupernodeOf(c).rowCount));
        CutOut(SupernodeOf(c), s, stack.data() + top, worker);
      }
    }
  }

  static void Unpack(const double* triangle, const Supernode& s, LargeVector<double>& square) {
    square.clear();  // else old contents would move
    square.resize(At(s.rowCount) * At(s.rowCount));
    ForEachPart(At(s.rowCount), At(kBlock), [&](std::size_t begin, std::size_t end) {
      UnpackSquare(triangle, s.rowCount, square.data(), static_cast<std::ptrdiff_t>(begin),
                   static_cast<std::ptrdiff_t>(end));
    });
  }

  // With J the columns and R the rows below, X = L_JJ^-1 and Y = L_RJ X:
  //   Z_RJ = -Z_RR Y,  Z_JJ = X^T D^-1 X - Z_RJ^T Y.
  void Invert(const Supernode& s, Worker& worker) {
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
    worker.product.Add({{worker.zBelow.data(), 1, rows}, y, nullptr, -1.0, rows, width, rows},
                       panel + width, height, DenseProduct::Part::kWhole);
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

  // The triangle that a child needs.
  void CutOut(const Supernode& child, const Supernode& parent, double* triangle,
              Worker& worker) const {
    const double* const panel = m_elements.data() + parent.firstElement;
    const double* const zBelow = worker.zBelow.data();
    const auto places = m_symbolic.RowsInParent(child);
    RowRuns& runs = worker.runs;
    runs.Find(places);
    ForEachPart(places.size(), At(kBlock), [&](std::size_t first, std::size_t end) {
      for (std::size_t j = first; j < end; ++j) {
        const std::ptrdiff_t place = places[j];
        const bool inPanel = place < parent.width;
        const double* const source = inPanel ? panel : zBelow;
        // Where row 0 of the columns would stand.
        const std::ptrdiff_t column = inPanel
                                          ? place * parent.Height()
                                          : (place - parent.width) * parent.rowCount - parent.width;
        const auto here = static_cast<std::ptrdiff_t>(j);
        double* const to = triangle + ColumnOfTriangle(here, child.rowCount) - here;
        runs.ForEachFrom(j, [&](std::size_t row, std::ptrdiff_t at, std::size_t count) {
          std::copy_n(source + column + at, count, to + row);
        });
      }
    });
  }

  // The largest size of the stack.
  std::size_t MostStacked(const Subtrees::Range& range) const {
    std::size_t size = TriangleSize(SupernodeOf(range.end - 1).rowCount);
    std::size_t most = size;
    for (std::int32_t s = range.end; s-- > range.first;) {
      size -= TriangleSize(SupernodeOf(s).rowCount);
      for (const std::int32_t c : m_symbolic.Children(At(s))) {
        size += TriangleSize(SupernodeOf(c).rowCount);
      }
      most = std::max(most, size);
    }
    return most;
  }

  const Supernode& SupernodeOf(std::int32_t s) const { return m_symbolic.Supernodes()[At(s)]; }

  const SymbolicFactor& m_symbolic;
  std::span<double> m_elements;
  std::vector<LargeVector<double>> m_waiting;  // by supernode: of and above subtree roots
  std::vector<Worker> m_workers;
};

}  // namespace

void InvertSelected(const SymbolicFactor& symbolic, std::span<double> elements) {
  Inversion(symbolic, elements).Run();
}

}  // namespace brenu
