// Levelling networks: whole jobs with closure errors.
#include <benchmark/benchmark.h>

#include <cstdint>

#include "bench/grid_network.h"
#include "whole_job.h"

namespace brenu::bench {
namespace {

using testing::GridNetwork;
using testing::PointOrder;

void ReadPoint(AdjustmentContext* context, std::int32_t index) {
  VerticalResult result;
  GetVerticalResult(context, index, &result);
  benchmark::DoNotOptimize(result);
}

void ReadLine(AdjustmentContext* context, std::int32_t station, const char* target) {
  double a[4];
  GetHeightObsResult(context, station, target, &a[0], &a[1], &a[2], &a[3]);
  benchmark::DoNotOptimize(a);
}

bool CloseErrors(AdjustmentContext* context) {
  const bool found = CalculateCloseError(context);
  for (std::int32_t i = 0; i < GetCloseErrorCount(context); ++i) {
    CloseError record;
    GetCloseError(context, i, &record);
    benchmark::DoNotOptimize(record);
  }
  return found;
}

void RunJobs(benchmark::State& state, PointOrder order) {
  const std::int32_t side = SideOf(state);
  MeasureJobs(state, GridNetwork(side, side, order).Levelling(),
              {{"closures", CloseErrors}, {"adjust", LeastSquareAdj}}, ReadPoint, ReadLine);
}

void LevellingShuffled(benchmark::State& state) { RunJobs(state, PointOrder::kShuffled); }
BENCHMARK(LevellingShuffled)->Arg(100)->Arg(1000)->MinTime(0.3)->Unit(benchmark::kMillisecond);
BENCHMARK(LevellingShuffled)->Arg(10000)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);

void LevellingByRows(benchmark::State& state) { RunJobs(state, PointOrder::kByRows); }
BENCHMARK(LevellingByRows)->Arg(10000)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace brenu::bench
