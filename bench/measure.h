// Time and memory of one job.
//
// Figures are compared within one run only.  Their unit P is the inversion of a packed matrix of
// 600 unknowns, measured right before and after the job, since the speed of a shared machine
// changes.  Times are those of the clock on the wall: several threads share the work.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>

namespace brenu::bench {

// Time on the wall since some beginning.
double WallSeconds();

// Adds the parts of a job to the counters of a benchmark, each in P: one for every named part, and
// their sum "P".  The counter "unit" tells the seconds of a P, and "MB" the most memory that the
// process held meanwhile beyond what it held before; missing where the system does not tell.
class Meter {
 public:
  explicit Meter(benchmark::State& state);
  ~Meter();
  Meter(const Meter&) = delete;
  Meter& operator=(const Meter&) = delete;

  // What follows belongs to the next part.
  void Start() { m_last = WallSeconds(); }
  // Ends a part.
  void Count(const char* part);

 private:
  benchmark::State& m_state;
  double m_unit;    // seconds, before the job
  double m_before;  // megabytes
  double m_last = 0.0;
  std::map<std::string, double> m_seconds;  // by part
};

}  // namespace brenu::bench
