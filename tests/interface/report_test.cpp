#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/job.h"
#include "support/plane_example.h"
#include "support/report_text.h"

namespace brenu::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

const std::string kRule = std::string(105, '-') + "\n";

// A section of the result report as it has to look.
std::string Table(const std::string& keyword, const std::string& header, const std::string& rows) {
  return keyword + "\n" + kRule + header + "\n" + kRule + rows + kRule + "\n";
}

const std::string kApproximateHeader = "        Name          X(m)          Y(m)          H(m)";
const std::string kPointHeader = kApproximateHeader + "          Attr";
const std::string kVerticalHeader = "        Name          H(m)       V(mm)      Mh(mm)";
const std::string kHeightHeader =
    "        From            To     dh(m)    Weight     V(mm)    Vdh(m)   Mdh(mm)";
const std::string kPlaneHeader =
    "        Name          X(m)          Y(m)  Mx(mm)  My(mm)  Mp(mm)   E(mm)   F(mm)      T(dms)";
const std::string kAngleHeader =
    "        From            To    Value(dms)  M(s)    V(s)   Result(dms)";
const std::string kLengthHeader =
    "        From            To    Value(m)   M(mm)   V(mm)   Result(m)";
const std::string kPrecisionHeader =
    "        From            To       AZ(dms)   Ma(s)        S(m)  Ms(mm)      S/Ms";

// GBK: height network, standard error per kilometre, plane network, standard error of unit weight
// before and after the adjustment.
const std::string kLevelNet = "[\xb8\xdf\xb3\xcc\xcd\xf8]";
const std::string kPerKilometre = "\xc3\xbf\xb9\xab\xc0\xef\xd6\xd0\xce\xf3\xb2\xee\xa3\xba";
const std::string kPlaneNet = "[\xc6\xbd\xc3\xe6\xcd\xf8]";
const std::string kApriori =
    "\xd1\xe9\xc7\xb0\xb5\xa5\xce\xbb\xc8\xa8\xd6\xd0\xce\xf3\xb2\xee\xa3\xba";
const std::string kPosterior =
    "\xd1\xe9\xba\xf3\xb5\xa5\xce\xbb\xc8\xa8\xd6\xd0\xce\xf3\xb2\xee\xa3\xba";

TEST(ClosureReport, SixLinesForALine) {
  Job job;
  EXPECT_FALSE(Export(ExportCloseErrorFile, job).complete);  // an empty list
  job.AddPoints({{"A", 1, 0, 0, 10.0}, {"B", 1, 0, 0, 11.5}, {"N"}});
  job.ObserveAll({{"A", "N", Levelled(400, 1.0)}, {"B", "N", Levelled(500, -0.51)}});
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
void AddTwoLines(Job& job, double second) {
  job.AddPoints({{"P"}, {"A", 1, 0, 0, 100.0}});
  job.ObserveAll({{"A", "P", Levelled(1000, 5.0)}, {"P", "A", Levelled(1000, -second)}});
}

// The mean of both is 105.001 m with the residuals +1 mm, [pvv] = 2 mm^2 over one new height, so
// sigma0 = 1.414 mm and with Q = 1/2 the standard error of P is 1 mm.
TEST(ResultReport, LevellingNetwork) {
  Job job;
  AddTwoLines(job, 5.002);
  ASSERT_TRUE(LeastSquareAdj(job));
  const ReportText report = Export(ExportResultFile, job);
  EXPECT_TRUE(report.complete);
  EXPECT_EQ(
      report.text,
      Table("[APPROXIMATE]", kApproximateHeader,
            "           P        0.0000        0.0000      105.0000\n"
            "           A        0.0000        0.0000      100.0000\n") +
          Table("[VERTICAL]", kVerticalHeader,
                "           P      105.0010        1.00        1.00\n"
                "           A      100.0000        0.00        0.00\n") +
          Table("[HEIGHT]", kHeightHeader,
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
  const struct {
    double correction;  // metres: half of what the second observation adds
    const char* cell;
  } cases[] = {{0.000004, "      0.00"},
               {-0.000004, "      0.00"},
               {0.00001, "      0.01"},
               {-0.00001, "     -0.01"}};
  for (const auto& c : cases) {
    Job job;
    AddTwoLines(job, 5.0 + 2.0 * c.correction);
    ASSERT_TRUE(LeastSquareAdj(job));
    const std::string text = Export(ExportResultFile, job).text;
    EXPECT_THAT(Section(text, "[VERTICAL]"),
                HasSubstr(std::string("           P      105.0000  ") + c.cell + "  "));
  }
}

// A residual of zero may come out a hair below it.
std::string WithoutNegativeZero(std::string text) {
  for (std::size_t at = 0; (at = text.find("-0.00 ", at)) != std::string::npos;) text[at] = ' ';
  return text;
}

// From A, B lies north and C south; the circle there reads 10 deg 00' 00" and 190 deg 00' 06", so
// the residuals are +3" and -3", and P, read at 100 deg 00' 03", lies due east.  Its approximate
// place, from B and the first distance, is 3" farther south: 1000 - 500 sin 3".  The distances
// 500.000 m and 500.002 m have the residuals +1 mm and -1 mm.
//
// [pvv] = 18 / 2.5^2 + 2 and r = 5 - 3 = 2, so m0 = sqrt(2.44) = 1.562.  The azimuth of P has the
// cofactor 2.5^2 (1 + 1/2): 3.062", across the line 7.422 mm; the length has 1/2 mm^2.  Times m0:
// 4.78", 11.59 mm, 1.10 mm, and 1:452679.  One pass is enough, so the ellipse still stands across
// the approximate line, at an azimuth of 3".
TEST(ResultReport, PlaneNetwork) {
  Job job;
  SetAdjParam(job, Errors(2.5, 0.001));
  job.Add("P");  // control points have the lower numbers in the network, not in the store
  job.AddPoints({{"C", 10, 500, 1000}, {"B", 10, 2000, 1000}, {"A", 10, 1000, 1000, 7.5}});
  job.ObserveAll({{"A", "B", Direction(10.0)},
                  {"A", "C", Direction(190.0006)},
                  {"A", "P", Direction(100.0003, 500.0)},
                  {"P", "A", Distance(500.002)}});
  ASSERT_TRUE(LeastSquareAdj(job));
  const ReportText report = Export(ExportResultFile, job);
  EXPECT_TRUE(report.complete);
  const std::string zeros = "    0.00    0.00    0.00    0.00    0.00    0.000000\n";
  EXPECT_EQ(
      WithoutNegativeZero(report.text),
      Table("[APPROXIMATE]", kApproximateHeader,
            "           P      999.9927     1500.0000        0.0000\n"
            "           C      500.0000     1000.0000        0.0000\n"
            "           B     2000.0000     1000.0000        0.0000\n"
            "           A     1000.0000     1000.0000        7.5000\n") +
          Table("[PLANE]", kPlaneHeader,
                "           P     1000.0000     1500.0010   11.59    1.10   11.65   11.59"
                "    1.10    0.000300\n"
                "           C      500.0000     1000.0000" +
                    zeros + "           B     2000.0000     1000.0000" + zeros +
                    "           A     1000.0000     1000.0000" + zeros) +
          Table("[DIRANGLE]", kAngleHeader,
                "           A             B     10.000000   2.5    3.00     10.000300\n"
                "           A             C    190.000600   2.5   -3.00    190.000300\n"
                "           A             P    100.000300   2.5    0.00    100.000300\n") +
          Table("[LENGTH]", kLengthHeader,
                "           A             P    500.0000    1.00    1.00    500.0010\n"
                "           P             A    500.0020    1.00   -1.00    500.0010\n") +
          Table(
              "[PRECISION]", kPrecisionHeader,
              "           A             P     90.000000    4.78    500.0010    1.10    452679\n"
              "           P             A    270.000000    4.78    500.0010    1.10    452679\n") +
          Table("[STARTPOINT]", kPointHeader,
                "           P        0.0000        0.0000        0.0000             0\n"
                "           C      500.0000     1000.0000        0.0000            10\n"
                "           B     2000.0000     1000.0000        0.0000            10\n"
                "           A     1000.0000     1000.0000        7.5000            10\n") +
          Table("[CONTROLPOINT]", kPointHeader,
                "           P     1000.0000     1500.0010        0.0000             0\n"
                "           C      500.0000     1000.0000        0.0000            10\n"
                "           B     2000.0000     1000.0000        0.0000            10\n"
                "           A     1000.0000     1000.0000        7.5000            10\n") +
          kPlaneNet + "\n" + kApriori + "2.50(s)      " + kPosterior + "1.56(s)\n");
}

// The new points come first in the store; each row must show its own point in both networks.
TEST(ResultReport, CombinedNetwork) {
  Job job;
  PlaneExample::Fill(job);
  PlaneExample::AddHeights(job);
  job.Change("A", "B", {1000.0, 130.0, 5.0, 90.0});
  ASSERT_TRUE(LeastSquareAdj(job));
  const ReportText report = Export(ExportResultFile, job);
  EXPECT_TRUE(report.complete);
  for (const char* keyword : {"[APPROXIMATE]", "[CONTROLPOINT]"}) {
    const std::string section = Section(report.text, keyword);
    for (const PlaneExample::Point& p : PlaneExample::kPoints) {
      const std::size_t at = section.find("\n           " + std::string(p.name) + " ");
      ASSERT_NE(at, std::string::npos);
      const auto cell = [&](std::size_t k) { return std::stod(section.substr(at + 1 + 14 * k)); };
      EXPECT_TRUE(Near({cell(1), cell(2), cell(3)}, {p.x, p.y, p.h}, 0.02)) << keyword << p.name;
    }
  }
  EXPECT_THAT(Section(report.text, "[AZIMUTH]"),
              StartsWith("[AZIMUTH]\n" + kRule + kAngleHeader + "\n" + kRule +
                         "           A             B     90.000000   2.5 "));
  EXPECT_THAT(report.text, HasSubstr("\n\n" + kLevelNet + "\n"));
  EXPECT_THAT(report.text.substr(report.text.find(kLevelNet)),
              HasSubstr("(mm)\n\n" + kPlaneNet + "\n"));
}

TEST(ResultReport, RemarksGrossErrors) {
  Job job;
  AddTwoLines(job, 5.0);
  job.Add("B", 1, 0, 0, 104.0);
  job.Observe("B", "P", Levelled(1000, 1.05));  // 50 mm too much
  ASSERT_EQ(DataSnooping(job, 1, 0.001, 0.001), 1);
  const std::string heights = Section(Export(ExportResultFile, job).text, "[HEIGHT]");
  // The others agree exactly.
  EXPECT_THAT(heights,
              HasSubstr("           B             P    1.0500    0.0000    -50.00    1.0000"
                        "      0.00  gross error\n"));
  EXPECT_EQ(heights.find("gross error"), heights.rfind("gross error"));
  // An adjustment forgets what was taken out, and a negative weight is not one of zero.
  for (const double length : {1000.0, -1000.0}) {
    job.Change("B", "P", Levelled(length, 1.05));
    ASSERT_TRUE(LeastSquareAdj(job));
    EXPECT_THAT(Export(ExportResultFile, job).text, Not(HasSubstr("gross error")));
  }
}

// What the store gained after the computation has no results.
TEST(ResultReport, StopsBeforeARowWithoutResult) {
  Job job;
  AddTwoLines(job, 5.002);
  DeleteObsData(job, job.Index("P"), "A");
  ASSERT_TRUE(LeastSquareAdj(job));
  const ReportText whole = Export(ExportResultFile, job);
  EXPECT_TRUE(whole.complete);
  EXPECT_FALSE(ExportResultFile(job, (::testing::TempDir() + "none/such.txt").c_str()));
  EXPECT_FALSE(ExportResultFile(job, nullptr));
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
