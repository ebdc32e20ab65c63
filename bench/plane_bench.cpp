// Plane networks: whole jobs, data snooping, small networks with either normal matrix.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "bench/free_stations.h"
#include "bench/grid_network.h"
#include "core/parallel.h"
#include "job/adjustment_context.h"
#include "plane/plane_net.h"
#include "support/fill_net.h"
#include "whole_job.h"

namespace brenu::bench {
namespace {

using testing::GeneratedNetwork;
using testing::GridNetwork;
using testing::Job;
using testing::PointOrder;

void ReadPoint(AdjustmentContext* context, std::int32_t index) {
  PlaneResult result;
  GetPlaneResult(context, index, &result);
  benchmark::DoNotOptimize(result);
}

void ReadLine(AdjustmentContext* context, std::int32_t station, const char* target) {
  double a[4];
  std::int32_t relative = 0;
  GetDirAngleResult(context, station, target, &a[0], &a[1], &a[2]);
  GetLengthResult(context, station, target, &a[0], &a[1], &a[2]);
  GetAzAndLenPrecision(context, station, target, &a[0], &a[1], &a[2], &a[3], &relative);
  benchmark::DoNotOptimize(a);
}

void RunJobs(benchmark::State& state, const GeneratedNetwork& network) {
  MeasureJobs(state, network, {{"approximate", ApproxCalc}, {"adjust", LeastSquareAdj}}, ReadPoint,
              ReadLine);
}

void PlaneShuffled(benchmark::State& state) {
  const std::int32_t side = SideOf(state);
  RunJobs(state, GridNetwork(side, side, PointOrder::kShuffled).Plane());
}
BENCHMARK(PlaneShuffled)->Arg(100)->Arg(1000)->MinTime(0.3)->Unit(benchmark::kMillisecond);
BENCHMARK(PlaneShuffled)->Arg(10000)->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(PlaneShuffled)->Arg(40000)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);

// A square or, when that would have more than 40 rows, a corridor: in this order approximate
// coordinates are carried from row to row, each time a little worse, and beyond some hundred rows
// the adjustment does not settle any more.
void PlaneByRows(benchmark::State& state) {
  const std::int32_t rows = std::min(SideOf(state), 40);
  const auto columns = static_cast<std::int32_t>(state.range(0)) / rows;
  RunJobs(state, GridNetwork(rows, columns, PointOrder::kByRows).Plane());
}
BENCHMARK(PlaneByRows)->Arg(100)->Arg(1000)->MinTime(0.3)->Unit(benchmark::kMillisecond);
BENCHMARK(PlaneByRows)->Arg(10000)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);

// The same on one thread.
void PlaneOneThread(benchmark::State& state) {
  SetThreadCount(1);
  PlaneShuffled(state);
  SetThreadCount(0);
}
BENCHMARK(PlaneOneThread)->Arg(10000)->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(PlaneOneThread)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);

// Runs on demand only: minutes, and several gigabytes.
void OnDemandPlaneMillion(benchmark::State& state) { PlaneShuffled(state); }
BENCHMARK(OnDemandPlaneMillion)->Arg(1000000)->Iterations(1)->Unit(benchmark::kMillisecond);

// By the rules of textbooks: approximate coordinates, and the adjustment that begins with them.
void PlaneFreeStations(benchmark::State& state) {
  const auto net = testing::MakeNet<PlaneNet>(
      testing::FreeStations(static_cast<std::int32_t>(state.range(0))).Make());
  Meter meter(state);
  while (state.KeepRunning()) {
    meter.Start();
    PlaneAdjustment approximate(net, RuleSet::kTextbook);
    bool ok = approximate.ApproximateAsTextbook().ok;
    meter.Count("approximate");
    PlaneAdjustment whole(net, RuleSet::kTextbook);
    ok = whole.AdjustAsTextbook().ok && ok;
    meter.Count("approximate and adjust");
    if (!ok) state.SkipWithError("the network was not adjusted");
  }
}
BENCHMARK(PlaneFreeStations)->Arg(1000)->MinTime(0.3)->Unit(benchmark::kMillisecond);
BENCHMARK(PlaneFreeStations)->Arg(10000)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);

// One gross error for 500 points, evenly spread: 20 for 10 000.
std::size_t PlantBlunders(GeneratedNetwork& network) {
  constexpr double kBlunder = 0.00007;  // 0.7", in directions of 0.025"
  const std::size_t count = network.points.size() / 500;
  const std::size_t distance = network.lines.size() / count;
  for (std::size_t k = 0; k < count; ++k) {
    network.lines[k * distance + distance / 2].obs.direction += kBlunder;
  }
  return count;
}

std::size_t CountRemoved(const GeneratedNetwork& network, const PlaneAdjustment& net) {
  std::size_t count = 0;
  for (const auto& line : network.lines) {
    const char* station = network.points[static_cast<std::size_t>(line.station)].name;
    const auto result =
        net.ResultOfDirection(station, network.points[static_cast<std::size_t>(line.target)].name);
    if (result && result->removed) ++count;
  }
  return count;
}

void PlaneSnooping(benchmark::State& state) {
  constexpr double kAlpha = 1e-7;  // among so many observations chance must not find any
  const std::int32_t side = SideOf(state);
  GeneratedNetwork network = GridNetwork(side, side, PointOrder::kShuffled).Plane();
  const std::size_t planted = PlantBlunders(network);
  Meter meter(state);
  while (state.KeepRunning()) {
    const Job job;
    Enter(network, job);
    meter.Start();
    const bool ok = DataSnooping(job, kPlane, kAlpha, kAlpha) == 1;
    meter.Count("snooping");
    AdjustmentContext* const context = job;
    if (!ok || CountRemoved(network, context->plane.results) != planted) {
      state.SkipWithError("not the planted observations were taken out");
    }
  }
}
BENCHMARK(PlaneSnooping)->Arg(1000)->Arg(10000)->Iterations(1)->Unit(benchmark::kMillisecond);

void PlaneSnoopingTextbook(benchmark::State& state) {
  const std::int32_t side = SideOf(state);
  GeneratedNetwork network = GridNetwork(side, side, PointOrder::kShuffled).Plane();
  const std::size_t planted = PlantBlunders(network);
  const auto net = testing::MakeNet<PlaneNet>(network);
  Meter meter(state);
  while (state.KeepRunning()) {
    meter.Start();
    PlaneAdjustment adjustment(net, RuleSet::kTextbook);
    const bool ok = adjustment.SnoopAsTextbook(1e-7).ok;
    meter.Count("snooping");
    if (!ok || adjustment.AllTakenOut().size() != planted) {
      state.SkipWithError("not the planted observations were taken out");
    }
  }
}
BENCHMARK(PlaneSnoopingTextbook)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

// Approximate values, adjustment and precision of 50 points, with the limit of the packed matrix
// as it is and with the packed matrix always.
void AdjustSmall(benchmark::State& state, std::int32_t mostPackedUnknowns) {
  const GeneratedNetwork network = GridNetwork(5, 10, PointOrder::kShuffled).Plane();
  Meter meter(state);
  while (state.KeepRunning()) {
    meter.Start();
    PlaneAdjustment net(testing::MakeNet<PlaneNet>(network), mostPackedUnknowns);
    if (!net.Adjust().ok) state.SkipWithError("the network was not adjusted");
    meter.Count("adjust");
  }
}
BENCHMARK_CAPTURE(AdjustSmall, AsItIs, kMostPackedUnknowns)->MinTime(0.5);
BENCHMARK_CAPTURE(AdjustSmall, Packed, 1000000)->MinTime(0.5);

}  // namespace
}  // namespace brenu::bench
