#include <bit>
#include <limits>

#include "core/sparse/ordering.h"

namespace brenu {

namespace {

// The neighbours of every vertex as a row of bits.
class BitRows {
 public:
  explicit BitRows(const Graph& graph)
      : m_words((graph.weights.size() + kBits - 1) / kBits),
        m_bits(m_words * graph.weights.size(), 0) {
    for (std::int32_t v = 0; v < graph.Count(); ++v) {
      for (const std::int32_t u : graph.Neighbours(v)) Row(v)[Word(u)] |= Bit(u);
    }
  }

  int Degree(std::int32_t v) const {
    int degree = 0;
    const std::uint64_t* row = m_bits.data() + m_words * static_cast<std::size_t>(v);
    for (std::size_t w = 0; w < m_words; ++w) degree += std::popcount(row[w]);
    return degree;
  }

  // Takes v out and connects its neighbours; calls changed(u) for each of them.
  template <typename Changed>
  void Eliminate(std::int32_t v, Changed changed) {
    const std::uint64_t* gone = Row(v);
    for (std::size_t w = 0; w < m_words; ++w) {
      for (std::uint64_t left = gone[w]; left != 0; left &= left - 1) {
        const auto u = static_cast<std::int32_t>(w * kBits) + std::countr_zero(left);
        std::uint64_t* row = Row(u);
        for (std::size_t k = 0; k < m_words; ++k) row[k] |= gone[k];
        row[Word(u)] &= ~Bit(u);
        row[Word(v)] &= ~Bit(v);
        changed(u);
      }
    }
  }

 private:
  static constexpr std::size_t kBits = 64;
  static std::size_t Word(std::int32_t v) { return static_cast<std::size_t>(v) / kBits; }
  static std::uint64_t Bit(std::int32_t v) {
    return std::uint64_t{1} << (static_cast<std::size_t>(v) % kBits);
  }
  std::uint64_t* Row(std::int32_t v) {
    return m_bits.data() + m_words * static_cast<std::size_t>(v);
  }

  std::size_t m_words;  // a row
  std::vector<std::uint64_t> m_bits;
};

}  // namespace

std::vector<std::int32_t> MinimumDegreeOrder(const Graph& graph) {
  constexpr int kDone = std::numeric_limits<int>::max();
  BitRows rows(graph);
  std::vector<int> degree(graph.weights.size());
  for (std::int32_t v = 0; v < graph.Count(); ++v) {
    degree[static_cast<std::size_t>(v)] = rows.Degree(v);
  }

  std::vector<std::int32_t> order;
  for (std::size_t k = 0; k < degree.size(); ++k) {
    std::size_t best = 0;
    for (std::size_t v = 1; v < degree.size(); ++v) {
      if (degree[v] < degree[best]) best = v;
    }
    const auto v = static_cast<std::int32_t>(best);
    order.push_back(v);
    degree[best] = kDone;
    rows.Eliminate(v,
                   [&](std::int32_t u) { degree[static_cast<std::size_t>(u)] = rows.Degree(u); });
  }
  return order;
}

}  // namespace brenu
