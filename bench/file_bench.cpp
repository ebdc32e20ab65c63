// Reading, saving and the result report of a plane network.
#include <benchmark/benchmark.h>

#include "bench/grid_network.h"
#include "whole_job.h"

namespace brenu::bench {
namespace {

void Files(benchmark::State& state) {
  const std::int32_t side = SideOf(state);
  const TempPath file;
  const TempPath copy;
  const TempPath report;
  Save(testing::GridNetwork(side, side, testing::PointOrder::kShuffled).Plane(), file);
  Meter meter(state);
  while (state.KeepRunning()) {
    const testing::Job job;
    meter.Start();
    bool ok = OpenBrenuAdjustFile(job, file.c_str());
    meter.Count("open");
    ok = SaveBrenuAdjustFile(job, copy.c_str()) == 1 && ok;
    meter.Count("save");
    ok = LeastSquareAdj(job) && ok;
    meter.Start();
    ok = ExportResultFile(job, report.c_str()) && ok;
    meter.Count("report");
    if (!ok) state.SkipWithError("a file was not read or written");
  }
}
BENCHMARK(Files)->Arg(100)->Arg(1000)->MinTime(0.3)->Unit(benchmark::kMillisecond);
BENCHMARK(Files)->Arg(10000)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace brenu::bench
