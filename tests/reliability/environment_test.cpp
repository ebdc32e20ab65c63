// Results and files do not depend on the locale of the host, nor on what other threads do.
#include <gtest/gtest.h>

#include <clocale>
#include <locale>
#include <string>
#include <thread>
#include <vector>

#include "bench/grid_network.h"
#include "support/job.h"
#include "support/plane_example.h"
#include "support/temp_file.h"

namespace brenu::testing {
namespace {

// Everything that jobs write, as one text: a complete one, one of a network large enough for the
// sparse solver, and one that is read from a file.
std::string RunJobs() {
  const TempFile input("[PT]\nA,11,5,6,7.25\nB,00,1.5,,\n\n[OBS]\nA,B,359.5959,7.125,1.0625,\n");
  const TempFile saved, report, closures, largeReport, savedAgain;
  const PlaneExample job(11);
  const Job large, read;
  Enter(GridNetwork(4, 6, PointOrder::kShuffled).Plane(), large);
  const bool done =
      LeastSquareAdj(job) && ExportResultFile(job, report.Path()) && CalculateCloseError(job) &&
      ExportCloseErrorFile(job, closures.Path()) && SaveBrenuAdjustFile(job, saved.Path()) == 1 &&
      LeastSquareAdj(large) && ExportResultFile(large, largeReport.Path()) &&
      OpenBrenuAdjustFile(read, input.Path()) && SaveBrenuAdjustFile(read, savedAgain.Path()) == 1;
  if (!done) return "failed";
  std::string all;
  for (const TempFile* file : {&saved, &report, &closures, &largeReport, &savedAgain}) {
    all += file->Text();
  }
  return all;
}

TEST(Environment, ACommaAsDecimalSeparatorChangesNothing) {
  const std::string expected = RunJobs();
  ASSERT_NE(expected.find(",7.125000,1.062500,"), std::string::npos) << expected;
  const char* const german = "de_DE.UTF-8";
  if (std::setlocale(LC_ALL, german) == nullptr) GTEST_SKIP() << "no German locale here";
  ASSERT_EQ(std::string(std::localeconv()->decimal_point), ",");
  const std::locale before = std::locale::global(std::locale(german));
  EXPECT_EQ(RunJobs(), expected);
  std::locale::global(before);
  std::setlocale(LC_ALL, "C");
}

TEST(Environment, ContextsInThreadsDoNotMeet) {
  constexpr int kThreads = 100;
  const std::string expected = RunJobs();
  ASSERT_NE(expected, "failed");
  std::vector<std::string> results(kThreads);
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < kThreads; ++i) {
    threads.emplace_back([&, i] { results[i] = RunJobs(); });
  }
  for (std::thread& thread : threads) thread.join();
  for (const std::string& result : results) EXPECT_EQ(result, expected);
}

}  // namespace
}  // namespace brenu::testing
