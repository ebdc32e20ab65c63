#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/job.h"
#include "support/report_text.h"

namespace brenu::testing {
namespace {

using ::testing::HasSubstr;

const std::string kRule = std::string(105, '-') + "\n";

// A section of the result report as it has to look.
std::string Table(const std::string& keyword, const std::string& header, const std::string& rows) {
  return keyword + "\n" + kRule + header + "\n" + kRule + rows + kRule + "\n";
}

const std::string kApproximateHeader = "        Name          X(m)          Y(m)          H(m)";
const std::string kPointHeader = kApproximateHeader + "          Attr";
// GBK: height network, standard error per kilometre.
const std::string kLevelNet = "[\xb8\xdf\xb3\xcc\xcd\xf8]";
const std::string kPerKilometre = "\xc3\xbf\xb9\xab\xc0\xef\xd6\xd0\xce\xf3\xb2\xee\xa3\xba";

TEST(ClosureReport, SixLinesForALine) {
  const Job job({{"A", 1, 0, 0, 10.0}, {"B", 1, 0, 0, 11.5}, {"N"}},
                {{"A", {{"N", Levelled(400, 1.0)}}}, {"B", {{"N", Levelled(500, -0.51)}}}});
  EXPECT_FALSE(Export(ExportCloseErrorFile, job).complete);  // an empty list
  ASSERT_TRUE(CalculateCloseError(job));
  const ReportText report = Export(ExportCloseErrorFile, job);
  EXPECT_TRUE(report.complete);
  // 11.5 - 10 - (1 + 0.51) m and 20 sqrt(0.9) mm.
  EXPECT_EQ(report.text,
            "\xc2\xb7\xcf\xdf\xa3\xba"
            "B - N - A\n"
            "\xb8\xdf\xb3\xcc\xb1\xd5\xba\xcf\xb2\xee\xa3\xba"
            "-10.000(mm)   \xcf\xde\xb2\xee\xa3\xba"
            "18.974(mm)\n"
            "\xbd\xc7\xb6\xc8\xb1\xd5\xba\xcf\xb2\xee\xa3\xba"
            "0.00(s)   \xcf\xde\xb2\xee\xa3\xba"
            "0.00(s)\n"
            "\xb1\xdf\xb3\xa4\xb1\xd5\xba\xcf\xb2\xee\xa3\xba"
            "0.0000(m)\n"
            "\xc2\xb7\xcf\xdf\xb3\xa4\xa3\xba"
            "900.0000(m)\xcf\xde\xb2\xee\xa3\xba"
            "0.0000(m)   \xcf\xe0\xb6\xd4\xbe\xab\xb6\xc8\xa3\xba"
            "1:0\n" +
                std::string(53, '-') + "\n");
  EXPECT_FALSE(ExportCloseErrorFile(job, (::testing::TempDir() + "none/such.txt").c_str()));
}

// P at 105.000 m and `second` metres above A's 100 m, over 1 km each.
struct TwoLines : Job {
  explicit TwoLines(double second)
      : Job({{"P"}, {"A", 1, 0, 0, 100.0}},
            {{"A", {{"P", Levelled(1000, 5.0)}}}, {"P", {{"A", Levelled(1000, -second)}}}}) {}
};

// The mean of both is 105.001 m with the residuals +1 mm, [pvv] = 2 mm^2 over one new height, so
// sigma0 = 1.414 mm and with Q = 1/2 the standard error of P is 1 mm.
TEST(ResultReport, LevellingNetwork) {
  TwoLines job(5.002);
  ASSERT_TRUE(LeastSquareAdj(job));
  const ReportText report = Export(ExportResultFile, job);
  EXPECT_TRUE(report.complete);
  EXPECT_EQ(
      report.text,
      Table("[APPROXIMATE]", kApproximateHeader,
            "           P        0.0000        0.0000      105.0000\n"
            "           A        0.0000        0.0000      100.0000\n") +
          Table("[VERTICAL]", "        Name          H(m)       V(mm)      Mh(mm)",
                "           P      105.0010        1.00        1.00\n"
                "           A      100.0000        0.00        0.00\n") +
          Table("[HEIGHT]",
                "        From            To     dh(m)    Weight     V(mm)    Vdh(m)   Mdh(mm)",
                "           A             P    5.0000    1.0000      1.00    5.0010      1.00\n"
                "           P             A   -5.0020    1.0000      1.00   -5.0010      1.00\n") +
          Table("[STARTPOINT]", kPointHeader,
                "           P        0.0000        0.0000        0.0000             0\n"
                "           A        0.0000        0.0000      100.0000             1\n") +
          Table("[CONTROLPOINT]", kPointHeader,
                "           P        0.0000        0.0000      105.0010             0\n"
                "           A        0.0000        0.0000      100.0000             1\n") +
          kLevelNet + "\n" + kPerKilometre + "1.414(mm)\n");
}

// A correction below 5e-6 m has no sign; anything above is printed as it is, in millimetres.
TEST(ResultReport, TinyHeightCorrections) {
  // In metres, half of what the second observation adds.
  const std::pair<double, std::string> cases[] = {
      {4e-6, "0.00"}, {-4e-6, "0.00"}, {1e-5, "0.01"}, {-1e-5, "-0.01"}};
  for (const auto& [correction, number] : cases) {
    const TwoLines job(5.0 + 2.0 * correction);
    ASSERT_TRUE(LeastSquareAdj(job));
    const std::string text = Export(ExportResultFile, job).text;
    EXPECT_THAT(
        Section(text, "[VERTICAL]"),
        HasSubstr("P      105.0000" + std::string(12 - number.size(), ' ') + number + "  "));
  }
}

// What the store gained after the computation has no results.
TEST(ResultReport, StopsBeforeARowWithoutResult) {
  TwoLines job(5.002);
  DeleteObsData(job, job.Index("P"), "A");
  ASSERT_TRUE(LeastSquareAdj(job));
  const ReportText whole = Export(ExportResultFile, job);
  EXPECT_TRUE(whole.complete);
  EXPECT_FALSE(ExportResultFile(job, (::testing::TempDir() + "none/such.txt").c_str()));
  const auto upTo = [&whole](const std::string& keyword, const std::string& row) {
    const std::size_t at = whole.text.find(row, whole.text.find(keyword));
    return whole.text.substr(0, whole.text.find('\n', at) + 1);
  };

  job.Observe("P", "A", Levelled(1000, -5.002));
  const ReportText withObservation = Export(ExportResultFile, job);
  EXPECT_FALSE(withObservation.complete);
  EXPECT_EQ(withObservation.text, upTo("[HEIGHT]", "           A             P"));

  job.Add("Z");
  const ReportText withPoint = Export(ExportResultFile, job);
  EXPECT_FALSE(withPoint.complete);
  EXPECT_EQ(withPoint.text, upTo("[APPROXIMATE]", "           A  "));
}

}  // namespace
}  // namespace brenu::testing
