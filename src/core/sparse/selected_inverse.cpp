#include "core/sparse/selected_inverse.h"

#include <algorithm>
#include <vector>

#include "core/sparse/dense_factor.h"

namespace brenu {

namespace {

constexpr std::ptrdiff_t kBlock = 64;  // columns of triangular products treated together

std::size_t At(std::ptrdiff_t i) { return static_cast<std::size_t>(i); }

// From the last supernode to the first.  A supernode needs the inverse Z of the rows below it, a
// full square.  Its parent cuts it out and leaves it on a stack.
class Inversion {
 public:
  Inversion(const SymbolicFactor& symbolic, std::span<double> elements)
      : m_symbolic(symbolic), m_elements(elements) {
    m_stack.reserve(MostStacked());
  }

  void Run() {
    const auto supernodes = m_symbolic.Supernodes();
    for (std::size_t s = supernodes.size(); s-- > 0;) {
      Invert(supernodes[s]);
      ServeChildren(supernodes[s], m_symbolic.Children(s));
    }
  }

 private:
  // With J the columns and R the rows below, X = L_JJ^-1 and Y = L_RJ X:
  //   Z_RJ = -Z_RR Y,  Z_JJ = X^T D^-1 X - Z_RJ^T Y.
  void Invert(const Supernode& s) {
    const std::ptrdiff_t height = s.Height();
    const std::ptrdiff_t width = s.width;
    const std::ptrdiff_t rows = s.rowCount;
    double* const panel = m_elements.data() + s.firstElement;
    const double* const zBelow = m_stack.data() + (m_stack.size() - SquareSize(s));

    m_inverseD.resize(At(width));
    for (std::ptrdiff_t j = 0; j < width; ++j) m_inverseD[At(j)] = 1.0 / panel[j * (height + 1)];
    m_x.assign(At(width * width), 0.0);
    m_work.resize(At(width * width));
    InvertUnitLower({panel, 1, height}, width, m_x.data(), m_work.data(), m_product);

    // X is lower triangular: column j of Y needs the columns from j on.
    m_y.assign(At(rows * width), 0.0);
    for (std::ptrdiff_t j = 0; j < width; j += kBlock) {
      const MatrixView l = {panel + j * height + width, 1, height};
      const MatrixView x = {m_x.data() + j * (width + 1), width, 1};
      m_product.Add({l, x, nullptr, 1.0, rows, std::min(kBlock, width - j), width - j},
                    m_y.data() + j * rows, rows, DenseProduct::Part::kWhole);
    }

    const MatrixView y = {m_y.data(), rows, 1};
    for (std::ptrdiff_t j = 0; j < width; ++j) std::fill_n(panel + j * height, height, 0.0);
    m_product.Add({{zBelow, 1, rows}, y, nullptr, -1.0, rows, width, rows}, panel + width, height,
                  DenseProduct::Part::kWhole);
    // Z_RJ moves out of the panel: a product must not overlap its result.
    m_z.resize(At(rows * width));
    for (std::ptrdiff_t j = 0; j < width; ++j) {
      std::copy_n(panel + j * height + width, rows, m_z.data() + j * rows);
    }
    m_product.Add({{m_z.data(), rows, 1}, y, nullptr, -1.0, width, width, rows}, panel, height,
                  DenseProduct::Part::kLower);
    // Row i of X^T begins with element i.
    for (std::ptrdiff_t i = 0; i < width; i += kBlock) {
      const MatrixView xi = {m_x.data() + i * (width + 1), width, 1};
      const MatrixView x = {m_x.data() + i, width, 1};
      const std::ptrdiff_t end = std::min(i + kBlock, width);
      m_product.Add({xi, x, m_inverseD.data() + i, 1.0, end - i, end, width - i}, panel + i, height,
                    DenseProduct::Part::kWhole);
    }
  }

  // Puts the squares that the children need in the place of the supernode's own one.
  void ServeChildren(const Supernode& s, std::span<const std::int32_t> children) {
    const std::size_t ownAt = m_stack.size() - SquareSize(s);
    std::size_t childAt = m_stack.size();
    std::size_t needed = 0;
    for (const std::int32_t c : children) needed += SquareSize(SupernodeOf(c));
    m_stack.resize(childAt + needed);
    for (const std::int32_t c : children) {
      CutOut(SupernodeOf(c), s, m_stack.data() + ownAt, m_stack.data() + childAt);
      childAt += SquareSize(SupernodeOf(c));
    }
    m_stack.erase(m_stack.begin() + static_cast<std::ptrdiff_t>(ownAt),
                  m_stack.begin() + static_cast<std::ptrdiff_t>(ownAt + SquareSize(s)));
  }

  void CutOut(const Supernode& child, const Supernode& parent, const double* zBelow,
              double* square) const {
    const double* const panel = m_elements.data() + parent.firstElement;
    const auto places = m_symbolic.RowsInParent(child);
    const std::size_t size = places.size();
    for (std::size_t j = 0; j < size; ++j) {
      const std::ptrdiff_t place = places[j];
      const bool inPanel = place < parent.width;
      const double* const source = inPanel ? panel : zBelow;
      // Where row 0 of the column would stand.
      const std::ptrdiff_t column = inPanel
                                        ? place * parent.Height()
                                        : (place - parent.width) * parent.rowCount - parent.width;
      for (std::size_t i = j; i < size; ++i) {
        square[j * size + i] = square[i * size + j] = source[column + places[i]];
      }
    }
  }

  // The largest size of the stack.
  std::size_t MostStacked() const {
    std::size_t most = 0;
    std::size_t size = 0;
    for (std::size_t s = m_symbolic.Supernodes().size(); s-- > 0;) {
      for (const std::int32_t c : m_symbolic.Children(s)) size += SquareSize(SupernodeOf(c));
      most = std::max(most, size);
      size -= SquareSize(m_symbolic.Supernodes()[s]);
    }
    return most;
  }

  const Supernode& SupernodeOf(std::int32_t s) const { return m_symbolic.Supernodes()[At(s)]; }
  static std::size_t SquareSize(const Supernode& s) { return At(s.rowCount) * At(s.rowCount); }

  const SymbolicFactor& m_symbolic;
  std::span<double> m_elements;
  std::vector<double> m_stack;     // squares for supernodes still to come, the next one on top
  std::vector<double> m_inverseD;  // of the current supernode, like the rest
  std::vector<double> m_x;         // X, by columns
  std::vector<double> m_y;         // Y, by columns
  std::vector<double> m_z;         // Z_RJ, by columns
  std::vector<double> m_work;
  DenseProduct m_product;
};

}  // namespace

void InvertSelected(const SymbolicFactor& symbolic, std::span<double> elements) {
  Inversion(symbolic, elements).Run();
}

}  // namespace brenu
