// Files as the platform has them: the ends of their lines, the bytes of their names.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

#include "support/job.h"
#include "support/line_end.h"
#include "support/temp_file.h"

namespace brenu::testing {
namespace {

// Every line ends as the platform ends lines, and no other carriage return is there.
void ExpectPlatformLines(const TempFile& file) {
  std::ifstream bytes(file.Path(), std::ios::binary);
  EXPECT_EQ(file.Text().find('\r'), std::string::npos);
  std::string expected;
  for (const char c : file.Text()) expected += c == '\n' ? kLineEnd : std::string(1, c);
  EXPECT_NE(expected, "");
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(bytes), {}), expected);
}

struct LevelJob : Job {
  LevelJob() {
    AddPoints({{"A", 1, 0, 0, 100}, {"P"}, {"B", 1, 0, 0, 101}});
    ObserveAll({{"A", "P", Levelled(1000, 0.504)}, {"P", "B", Levelled(1000, 0.5)}});
  }
};

TEST(PlatformFile, LinesEndAsOnThePlatform) {
  const LevelJob job;
  ASSERT_TRUE(LeastSquareAdj(job));
  ASSERT_TRUE(CalculateCloseError(job));
  const TempFile project;
  const TempFile results;
  const TempFile closures;
  ASSERT_EQ(SaveBrenuAdjustFile(job, project.Path()), 1);
  ASSERT_TRUE(ExportResultFile(job, results.Path()));
  ASSERT_TRUE(ExportCloseErrorFile(job, closures.Path()));
  for (const TempFile* file : {&project, &results, &closures}) ExpectPlatformLines(*file);

  const Job again;
  ASSERT_TRUE(OpenBrenuAdjustFile(again, project.Path()));
  EXPECT_EQ(again.NameAt(2), "B");  // no carriage return in a name or a number
  EXPECT_EQ(Bytes(Stored(again, "P", "B")), Bytes(Levelled(1000, 0.5)));
}

// The host's bytes are the name, whatever they mean: what the library writes, the C library opens.
TEST(PlatformFile, PathsAreNotTranslated) {
  const std::string path = ::testing::TempDir() + "caf\xC3\xA9 PlatformFile.txt";
  ASSERT_EQ(SaveBrenuAdjustFile(LevelJob(), path.c_str()), 1);
  std::FILE* const file = std::fopen(path.c_str(), "r");
  EXPECT_NE(file, nullptr);
  if (file != nullptr) std::fclose(file);
  EXPECT_TRUE(OpenBrenuAdjustFile(Job(), path.c_str()));
  std::remove(path.c_str());
}

}  // namespace
}  // namespace brenu::testing
