#include "measure.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <fstream>
#include <string>
#include <vector>

#include "core/packed_matrix.h"

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace brenu::bench {

namespace {

double MeasureUnit() {
  constexpr std::size_t kOrder = 600;
  double best = 1e9;
  for (int repeat = 0; repeat < 5; ++repeat) {
    std::vector<double> matrix(PackedSize(kOrder), 1.0);
    for (std::size_t i = 0; i < kOrder; ++i) matrix[PackedIndex(i, i)] = 1000.0;
    const double start = WallSeconds();
    benchmark::DoNotOptimize(InvertPacked(matrix, kOrder));
    best = std::min(best, WallSeconds() - start);
  }
  return best;
}

// A figure of the process in megabytes, -1 where the system has none.
double ProcessMemory(const std::string& key) {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    double kilobytes = 0.0;
    if (word == key && status >> kilobytes) return kilobytes / 1000.0;
  }
  return -1.0;
}

// Gives freed memory back and forgets the peak so far.
void ForgetPeak() {
#ifdef __GLIBC__
  malloc_trim(0);
#endif
  std::ofstream("/proc/self/clear_refs") << "5";
}

}  // namespace

double WallSeconds() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration<double>(now).count();
}

Meter::Meter(benchmark::State& state) : m_state(state), m_unit(MeasureUnit()) {
  ForgetPeak();
  m_before = ProcessMemory("VmRSS:");
}

Meter::~Meter() {
  const double peak = ProcessMemory("VmHWM:");
  const double unit = (m_unit + MeasureUnit()) / 2.0;
  for (const auto& [part, seconds] : m_seconds) m_state.counters[part] = seconds / unit;
  for (auto& [name, counter] : m_state.counters) counter.flags = benchmark::Counter::kAvgIterations;
  m_state.counters["unit"] = unit;
  if (m_before >= 0.0) m_state.counters["MB"] = peak - m_before;
}

void Meter::Count(const char* part) {
  const double now = WallSeconds();
  m_seconds[part] += now - m_last;
  m_seconds["P"] += now - m_last;
  m_last = now;
}

}  // namespace brenu::bench
