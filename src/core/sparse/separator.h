#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "core/sparse/graph.h"

namespace brenu {

// The vertices of a graph in two parts that no edge connects, and the separator between them.
struct Separation {
  static constexpr std::uint8_t kSeparator = 2;

  std::vector<std::uint8_t> part;         // by vertex: 0, 1 or kSeparator
  std::array<std::int64_t, 3> weights{};  // of the two parts and the separator

  // Sums up the weights of the parts.
  void Weigh(const Graph& graph);
  // The balance that is kept: neither part has more than three fifths of everything.
  std::int64_t HeaviestAllowed() const {
    return (weights[0] + weights[1] + weights[2]) * 3 / 5 + 1;
  }
  bool IsBetterThan(const Separation& other) const;
};

// A light separator that leaves parts of similar weight, found by multilevel bisection (Karypis and
// Kumar, A fast and high quality multilevel scheme for partitioning irregular graphs): the graph is
// coarsened, the smallest one is cut, and the cut is refined on the way back.
Separation FindSeparator(const Graph& graph);

// Moves separator vertices into the parts while that makes the separator lighter or the balance
// better (Fiduccia and Mattheyses, A linear-time heuristic for improving network partitions, in its
// form for vertex separators).  The parts stay unconnected.
void RefineSeparator(const Graph& graph, Separation& separation);

}  // namespace brenu
