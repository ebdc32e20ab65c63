// Whole jobs over generated networks: from the project file, as a host would have it, to the last
// getter.
#pragma once

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cmath>
#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <string>

#include "bench/grid_network.h"
#include "measure.h"

namespace brenu::bench {

// A file in the folder for temporary ones, removed at the end.
class TempPath {
 public:
  TempPath()
      : m_path(std::filesystem::temp_directory_path() /
               ("brenu-bench-" + std::to_string(getpid()) + "-" + std::to_string(++s_count))) {}
  ~TempPath() {
    std::error_code ignored;
    std::filesystem::remove(m_path, ignored);
  }
  TempPath(const TempPath&) = delete;
  TempPath& operator=(const TempPath&) = delete;

  const char* c_str() const { return m_path.c_str(); }

 private:
  static inline int s_count = 0;
  std::filesystem::path m_path;
};

inline void Save(const testing::GeneratedNetwork& network, const TempPath& path) {
  const testing::Job job;
  Enter(network, job);
  SaveBrenuAdjustFile(job, path.c_str());
}

// The side of a square grid of about that many points.
inline std::int32_t SideOf(benchmark::State& state) {
  return static_cast<std::int32_t>(std::lround(std::sqrt(static_cast<double>(state.range(0)))));
}

// A part of a job after the file is open, by the name of its counter.
struct Stage {
  const char* name;
  bool (*run)(AdjustmentContext*);
};

// Opens the network, runs the stages and reads all results, those of a point by readPoint(job,
// index) and those of a line by readLine(job, station, target).
template <typename ReadPoint, typename ReadLine>
void MeasureJobs(benchmark::State& state, const testing::GeneratedNetwork& network,
                 std::initializer_list<Stage> stages, ReadPoint readPoint, ReadLine readLine) {
  const TempPath file;
  Save(network, file);
  Meter meter(state);
  while (state.KeepRunning()) {
    meter.Start();
    const testing::Job job;
    bool ok = OpenBrenuAdjustFile(job, file.c_str());
    meter.Count("open");
    for (const Stage& stage : stages) {
      ok = ok && stage.run(job);
      meter.Count(stage.name);
    }
    const auto count = static_cast<std::int32_t>(network.points.size());
    for (std::int32_t i = 0; i < count; ++i) readPoint(job, i);
    for (const auto& line : network.lines) {
      readLine(job, line.station, network.points[static_cast<std::size_t>(line.target)].name);
    }
    meter.Count("results");
    if (!ok) state.SkipWithError("the network was not adjusted");
  }
}

}  // namespace brenu::bench
