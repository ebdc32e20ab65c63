// Time of whole jobs: entering the network, approximate values, adjustment, every result once.
//
// Figures are compared within one run only.  Their unit, the counter "P", is the inversion of a
// packed matrix of 600 unknowns, measured in the same run.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <vector>

#include "core/packed_matrix.h"
#include "grid_network.h"
#include "level/level_net.h"
#include "plane/plane_net.h"

namespace brenu::testing {
namespace {

double Seconds() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration<double>(now).count();
}

double MeasureUnit() {
  constexpr std::size_t kOrder = 600;
  double best = 1e9;
  for (int repeat = 0; repeat < 5; ++repeat) {
    std::vector<double> matrix(PackedSize(kOrder), 1.0);
    for (std::size_t i = 0; i < kOrder; ++i) matrix[PackedIndex(i, i)] = 1000.0;
    const double start = Seconds();
    benchmark::DoNotOptimize(InvertPacked(matrix, kOrder));
    best = std::min(best, Seconds() - start);
  }
  return best;
}

// The seconds that P stands for.
double Unit() {
  static const double unit = MeasureUnit();
  return unit;
}

// The shares of a job in P.
class Stopwatch {
 public:
  explicit Stopwatch(benchmark::State& state) : m_state(state) {}
  void Start() { m_last = Seconds(); }
  void Count(const char* name) {
    const double now = Seconds();
    m_state.counters[name] += (now - m_last) / Unit();
    m_state.counters["P"] += (now - m_last) / Unit();
    m_last = now;
  }
  ~Stopwatch() {
    for (auto& [name, counter] : m_state.counters) {
      counter.flags = benchmark::Counter::kAvgIterations;
    }
  }

 private:
  benchmark::State& m_state;
  double m_last = 0.0;
};

const char* TargetName(const GeneratedNetwork& network, const GeneratedNetwork::Line& line) {
  return network.points[static_cast<std::size_t>(line.target)].name;
}

void ReadPlaneResults(const GeneratedNetwork& network, const Job& job) {
  for (std::size_t i = 0; i < network.points.size(); ++i) {
    PlaneResult result;
    GetPlaneResult(job, static_cast<std::int32_t>(i), &result);
    benchmark::DoNotOptimize(result);
  }
  for (const auto& line : network.lines) {
    const char* target = TargetName(network, line);
    double a[4];
    std::int32_t relative = 0;
    GetDirAngleResult(job, line.station, target, &a[0], &a[1], &a[2]);
    GetLengthResult(job, line.station, target, &a[0], &a[1], &a[2]);
    GetAzAndLenPrecision(job, line.station, target, &a[0], &a[1], &a[2], &a[3], &relative);
    benchmark::DoNotOptimize(a);
  }
}

void ReadLevellingResults(const GeneratedNetwork& network, const Job& job) {
  for (std::size_t i = 0; i < network.points.size(); ++i) {
    VerticalResult result;
    GetVerticalResult(job, static_cast<std::int32_t>(i), &result);
    benchmark::DoNotOptimize(result);
  }
  for (const auto& line : network.lines) {
    double a[4];
    GetHeightObsResult(job, line.station, TargetName(network, line), &a[0], &a[1], &a[2], &a[3]);
    benchmark::DoNotOptimize(a);
  }
}

void RunJobs(benchmark::State& state, const GeneratedNetwork& network,
             void (*readResults)(const GeneratedNetwork&, const Job&)) {
  Stopwatch stopwatch(state);
  while (state.KeepRunning()) {
    stopwatch.Start();
    const Job job;
    Enter(network, job);
    stopwatch.Count("enter");
    bool ok = ApproxCalc(job);
    stopwatch.Count("approximate");
    ok = ok && LeastSquareAdj(job);
    stopwatch.Count("adjust");
    readResults(network, job);
    stopwatch.Count("results");
    if (!ok) state.SkipWithError("the network was not adjusted");
  }
}

void PlaneGrid(benchmark::State& state) {
  const auto rows = static_cast<std::int32_t>(state.range(0));
  const auto columns = static_cast<std::int32_t>(state.range(1));
  RunJobs(state, GridNetwork(rows, columns, PointOrder::kShuffled).Plane(), ReadPlaneResults);
}
BENCHMARK(PlaneGrid)
    ->ArgNames({"rows", "columns"})
    ->Args({5, 10})
    ->Args({32, 32})
    ->Args({100, 100})
    ->Args({200, 200})
    ->Args({316, 316})
    ->Unit(benchmark::kMillisecond);

// A long corridor.
void PlaneStrip(benchmark::State& state) {
  const auto rows = static_cast<std::int32_t>(state.range(0));
  RunJobs(state, GridNetwork(rows, 10, PointOrder::kShuffled).Plane(), ReadPlaneResults);
}
BENCHMARK(PlaneStrip)->ArgName("rows")->Arg(1000)->Unit(benchmark::kMillisecond);

void LevellingGrid(benchmark::State& state) {
  const auto side = static_cast<std::int32_t>(state.range(0));
  RunJobs(state, GridNetwork(side, side, PointOrder::kShuffled).Levelling(), ReadLevellingResults);
}
BENCHMARK(LevellingGrid)->ArgName("side")->Arg(100)->Arg(316)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace brenu::testing

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
