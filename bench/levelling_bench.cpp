// Levelling networks: whole jobs with closure errors.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstddef>

#include "bench/grid_network.h"
#include "measure.h"
#include "network_file.h"

namespace brenu::bench {
namespace {

using testing::GeneratedNetwork;
using testing::GridNetwork;
using testing::Job;
using testing::PointOrder;

void ReadClosures(const Job& job) {
  for (std::int32_t i = 0; i < GetCloseErrorCount(job); ++i) {
    CloseError record;
    GetCloseError(job, i, &record);
    benchmark::DoNotOptimize(record);
  }
}

void ReadResults(const GeneratedNetwork& network, const Job& job) {
  for (std::size_t i = 0; i < network.points.size(); ++i) {
    VerticalResult result;
    GetVerticalResult(job, static_cast<std::int32_t>(i), &result);
    benchmark::DoNotOptimize(result);
  }
  for (const auto& line : network.lines) {
    const char* target = network.points[static_cast<std::size_t>(line.target)].name;
    double a[4];
    GetHeightObsResult(job, line.station, target, &a[0], &a[1], &a[2], &a[3]);
    benchmark::DoNotOptimize(a);
  }
}

void RunJobs(benchmark::State& state, PointOrder order) {
  const std::int32_t side = SideOf(state);
  const GeneratedNetwork network = GridNetwork(side, side, order).Levelling();
  const TempPath file;
  Save(network, file);
  Meter meter(state);
  while (state.KeepRunning()) {
    meter.Start();
    const Job job;
    bool ok = OpenBrenuAdjustFile(job, file.c_str());
    meter.Count("open");
    ok = ok && CalculateCloseError(job);
    ReadClosures(job);
    meter.Count("closures");
    ok = ok && LeastSquareAdj(job);
    meter.Count("adjust");
    ReadResults(network, job);
    meter.Count("results");
    if (!ok) state.SkipWithError("the network was not adjusted");
  }
}

void LevellingShuffled(benchmark::State& state) { RunJobs(state, PointOrder::kShuffled); }
BENCHMARK(LevellingShuffled)->Arg(100)->Arg(1000)->MinTime(0.3)->Unit(benchmark::kMillisecond);
BENCHMARK(LevellingShuffled)->Arg(10000)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);

void LevellingByRows(benchmark::State& state) { RunJobs(state, PointOrder::kByRows); }
BENCHMARK(LevellingByRows)->Arg(10000)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace brenu::bench
