// A generated network as a project file, as a host would have it.
#pragma once

#include <unistd.h>

#include <filesystem>
#include <string>

#include "bench/grid_network.h"

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

}  // namespace brenu::bench
