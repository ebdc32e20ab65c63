// Reading and reducing a field book.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <string>

#include "core/angles.h"
#include "fieldbook/import.h"
#include "measure.h"

namespace brenu::bench {
namespace {

// Field books in GSI-16 of a traverse to the east with legs of 100 m: from every station its
// neighbours and three points beside the line, in two faces.  Angles in gon, instrument and targets
// at one height.
class TraverseBook {
 public:
  explicit TraverseBook(std::size_t lines) {
    for (int station = 1; m_lines < lines; ++station) {
      constexpr double kBeside[][2] = {{10, 40}, {-30, 25}, {0, -55}};
      Begin(station);
      Word("84..16", 100e4 * station);
      Word("85..16", 0.0);
      Word("88..16", 15000.0);
      m_text += '\n';
      for (const bool second : {false, true}) {
        Sight(station - 1, -100.0, 0.0, second);
        Sight(station + 1, 100.0, 0.0, second);
        int name = 1000000 + 3 * station;
        for (const auto& [along, across] : kBeside) Sight(name++, along, across, second);
      }
    }
  }

  const std::string& Text() const { return m_text; }
  std::size_t Lines() const { return m_lines; }

 private:
  void Begin(int name) {
    char text[32];
    std::snprintf(text, sizeof text, "*11%04zu+%016d ", ++m_lines % 10000, name);
    m_text += text;
  }
  void Word(const char* index, double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%s+%016.0f ", index, std::fabs(value));
    m_text += text;
  }
  void Sight(int name, double east, double north, bool second) {
    constexpr double kGon = 200.0 / kPi * 1e5;
    Begin(name);
    Word("21.322",
         std::fmod(PositiveAngle(std::atan2(east, north)) * kGon + (second ? 2e7 : 0), 4e7));
    Word("22.322", second ? 3e7 : 1e7);
    Word("31..06", std::hypot(east, north) * 1e4);
    Word("87..16", 15000.0);
    m_text += '\n';
  }

  std::size_t m_lines = 0;
  std::string m_text;
};

void Import(benchmark::State& state) {
  const TraverseBook book(static_cast<std::size_t>(state.range(0)));
  Meter meter(state);
  while (state.KeepRunning()) {
    meter.Start();
    const ImportOptions options;
    FieldImport import(options);
    const bool ok = import.AddBook("traverse.gsi", book.Text(), true).ok;
    meter.Count("read");
    ImportedJob job;
    ImportedJob heights;
    Findings findings;
    import.Finish(job, heights, findings);
    meter.Count("reduce");
    // Four new points for eleven lines.
    if (!ok || job.store.Points().size() < book.Lines() / 3)
      state.SkipWithError("the field book was not read");
  }
}
BENCHMARK(Import)->Arg(1000)->MinTime(0.3)->Unit(benchmark::kMillisecond);
BENCHMARK(Import)->Arg(10000)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace brenu::bench
