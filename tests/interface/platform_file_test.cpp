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

std::string BytesOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// How often the text holds a piece.
std::size_t Count(const std::string& text, const std::string& piece) {
  std::size_t count = 0;
  for (std::size_t at = text.find(piece); at != std::string::npos; at = text.find(piece, at + 1)) {
    ++count;
  }
  return count;
}

// Every line ends as the platform ends lines, and no other line feed or carriage return is there.
void ExpectPlatformLines(const std::string& bytes) {
  EXPECT_NE(bytes, "");
  EXPECT_EQ(Count(bytes, kLineEnd), Count(bytes, "\n"));
  EXPECT_EQ(Count(bytes, "\r"), std::string(kLineEnd) == "\n" ? 0U : Count(bytes, "\n"));
}

void FillLevelling(Job& job) {
  job.Add("A", 1, 0, 0, 100);
  job.Add("P");
  job.Add("B", 1, 0, 0, 101);
  AddObsData(job, 0, "P", Levelled(1000, 0.504));
  AddObsData(job, 1, "B", Levelled(1000, 0.5));
}

TEST(PlatformFile, WrittenLinesReadBackTheSame) {
  Job job;
  FillLevelling(job);
  const TempFile first;
  const TempFile second;
  ASSERT_EQ(SaveBrenuAdjustFile(job, first.Path()), 1);
  ExpectPlatformLines(BytesOf(first.Path()));

  const Job again;
  ASSERT_TRUE(OpenBrenuAdjustFile(again, first.Path()));
  EXPECT_EQ(GetPointCount(again), 3U);
  EXPECT_EQ(again.NameAt(2), "B");  // no carriage return in a name or a number
  ObsData observation{};
  ASSERT_EQ(GetObsData(again, 1, "B", &observation), 1);
  EXPECT_EQ(Bytes(observation), Bytes(Levelled(1000, 0.5)));
  ASSERT_EQ(SaveBrenuAdjustFile(again, second.Path()), 1);
  EXPECT_EQ(BytesOf(first.Path()), BytesOf(second.Path()));
}

TEST(PlatformFile, ReportsHaveTheLinesOfThePlatform) {
  Job job;
  FillLevelling(job);
  ASSERT_TRUE(LeastSquareAdj(job));
  ASSERT_TRUE(CalculateCloseError(job));
  const TempFile results;
  const TempFile closures;
  ASSERT_TRUE(ExportResultFile(job, results.Path()));
  ASSERT_TRUE(ExportCloseErrorFile(job, closures.Path()));
  ExpectPlatformLines(BytesOf(results.Path()));
  ExpectPlatformLines(BytesOf(closures.Path()));
}

// The host's bytes are the name, whatever they mean: what the library writes, the C library opens.
TEST(PlatformFile, PathsAreNotTranslated) {
  Job job;
  FillLevelling(job);
  const std::string path = ::testing::TempDir() + "caf\xC3\xA9 PlatformFile.txt";
  ASSERT_EQ(SaveBrenuAdjustFile(job, path.c_str()), 1);
  std::FILE* const file = std::fopen(path.c_str(), "r");
  EXPECT_NE(file, nullptr);
  if (file != nullptr) std::fclose(file);
  EXPECT_TRUE(OpenBrenuAdjustFile(Job(), path.c_str()));
  std::remove(path.c_str());
}

}  // namespace
}  // namespace brenu::testing
