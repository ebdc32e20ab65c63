// The sparse solver alone, on the pattern of a plane network with directions everywhere: what one
// analysis, one factorisation and one inversion cost, and how fast they compute.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <vector>

#include "bench/grid_network.h"
#include "core/parallel.h"
#include "core/sparse/dense_product.h"
#include "core/sparse/selected_inverse.h"
#include "core/sparse/sparse_factor.h"
#include "core/sparse/sparse_solution.h"
#include "core/sparse/stored_equations.h"
#include "core/sparse/symbolic_factor.h"
#include "core/unknown_pattern.h"
#include "whole_job.h"

namespace brenu::bench {
namespace {

// Two coordinates and an orientation a point.
UnknownPattern PatternOf(const testing::GeneratedNetwork& network) {
  UnknownPattern pattern = PointPattern(static_cast<std::int32_t>(network.points.size()), 3);
  for (const auto& line : network.lines) pattern.Connect(line.station, line.target);
  return pattern;
}

// Additions and multiplications, L D L^T with the lower triangle only.
double FactorOperations(const SymbolicFactor& symbolic) {
  double sum = 0.0;
  for (const Supernode& s : symbolic.Supernodes()) {
    for (std::int32_t j = 0; j < s.width; ++j) sum += std::pow(s.Height() - j, 2.0);
  }
  return sum;
}

// Z_RR Y, and the smaller products of a supernode.
double InverseOperations(const SymbolicFactor& symbolic) {
  double sum = 0.0;
  for (const Supernode& s : symbolic.Supernodes()) {
    const double w = s.width;
    const double r = s.rowCount;
    sum += 2.0 * r * r * w + 2.0 * r * w * w + w * w * w;
  }
  return sum;
}

StoredEquations Diagonal(const SymbolicFactor& symbolic) {
  StoredEquations matrix;
  matrix.Clear(symbolic);
  for (std::int32_t place = 0; place < symbolic.UnknownCount(); ++place) {
    matrix.Diagonal(place) = 1000.0;
  }
  matrix.GroupBySupernodes(symbolic);
  return matrix;
}

void Solver(benchmark::State& state) {
  const std::int32_t side = SideOf(state);
  const UnknownPattern pattern =
      PatternOf(testing::GridNetwork(side, side, testing::PointOrder::kShuffled).Plane());
  std::vector<double> elements;
  Meter meter(state);
  const ThreadTeam team;
  while (state.KeepRunning()) {
    meter.Start();
    const SymbolicFactor symbolic(pattern);
    meter.Count("analysis");
    const StoredEquations matrix = Diagonal(symbolic);
    elements.assign(static_cast<std::size_t>(symbolic.ElementCount()), 0.0);
    std::vector<double> x(static_cast<std::size_t>(symbolic.UnknownCount()), 1.0);

    const double start = WallSeconds();
    meter.Start();
    if (!FactorSparse(symbolic, matrix, elements)) state.SkipWithError("not factored");
    meter.Count("factor");
    const double factored = WallSeconds();
    SolveSparse(symbolic, elements, x);
    meter.Count("solution");
    const double solved = WallSeconds();
    InvertSelected(symbolic, elements);
    meter.Count("inverse");
    const double inverted = WallSeconds();

    const double factorWork = FactorOperations(symbolic) * 1e-9;
    const double inverseWork = InverseOperations(symbolic) * 1e-9;
    state.counters["factor GFlop"] += factorWork;
    state.counters["inverse GFlop"] += inverseWork;
    state.counters["factor GFlop/s"] += factorWork / (factored - start);
    state.counters["inverse GFlop/s"] += inverseWork / (inverted - solved);
  }
}
BENCHMARK(Solver)->Arg(1000)->MinTime(0.3)->Unit(benchmark::kMillisecond);
BENCHMARK(Solver)->Arg(10000)->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(Solver)->Arg(40000)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);

// The clock of the processor at work, from multiplications that wait for each other: three cycles
// each.
double GigaHertz() {
  constexpr int kCount = 100000000;
  std::uint64_t x = 3;
  const double start = WallSeconds();
  for (int i = 0; i < kCount; ++i) {
    x *= x;
    benchmark::DoNotOptimize(x);
  }
  return 3e-9 * kCount / (WallSeconds() - start);
}

// The kernel that factor and inverse stand on, with matrices that fill its blocks.
void Product(benchmark::State& state) {
  constexpr std::ptrdiff_t kSize = 768;
  const std::vector<double> a(kSize * kSize, 0.5);
  std::vector<double> c(kSize * kSize, 0.0);
  DenseProduct product;
  const MatrixView view = {a.data(), 1, kSize};
  double seconds = 0.0;
  while (state.KeepRunning()) {
    const double start = WallSeconds();
    product.Add({view, view, nullptr, 1.0, kSize, kSize, kSize}, c.data(), kSize,
                DenseProduct::Part::kWhole);
    benchmark::DoNotOptimize(c.data());
    seconds += WallSeconds() - start;
  }
  state.counters["GHz"] = GigaHertz();
  constexpr double kWork = 2e-9 * kSize * kSize * kSize;
  state.counters["GFlop/s"] = kWork * static_cast<double>(state.iterations()) / seconds;
}
BENCHMARK(Product)->MinTime(0.5)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace brenu::bench
