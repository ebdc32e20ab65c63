// Runs the benchmarks; those on demand only when a filter on the command line lets them through.
#include <benchmark/benchmark.h>

#include <string>

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  const std::string filter = benchmark::GetBenchmarkFilter();
  benchmark::RunSpecifiedBenchmarks(filter.empty() ? "-^OnDemand" : filter);
  return 0;
}
