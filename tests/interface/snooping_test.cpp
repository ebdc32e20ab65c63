#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <vector>

#include "support/job.h"
#include "support/plane_example.h"
#include "support/report_text.h"

namespace brenu::testing {
namespace {

using Names = std::vector<std::string>;

double Height(const Job& job, const std::string& name) {
  VerticalResult result{};
  EXPECT_TRUE(GetVerticalResult(job, job.Index(name), &result));
  return result.height;
}

struct HeightObs {
  double residual, adjusted, sigma, weight;
};
HeightObs ResultOf(const Job& job, const std::string& station, const std::string& target) {
  HeightObs r{};
  EXPECT_TRUE(GetHeightObsResult(job, job.Index(station), target.c_str(), &r.residual, &r.adjusted,
                                 &r.sigma, &r.weight));
  return r;
}

// "From To" of the rows that a section of the result report remarks as gross errors.
Names GrossErrors(const Job& job, const std::string& keyword) {
  Names found;
  std::istringstream rows(Section(Export(ExportResultFile, job).text, keyword));
  for (std::string row; std::getline(rows, row);) {
    if (row.find("gross error") == std::string::npos) continue;
    std::istringstream cells(row);
    std::string line;
    std::string to;
    cells >> line >> to;
    found.push_back(line.append(" ").append(to));
  }
  return found;
}

// Bench marks A (10 m) and B (20 m), each observed to P and back over 1 km: three observations put
// P at 15.000, 15.001 and 15.002 m, the one from P to B at 14.950 m.
void AddFourLines(Job& job) {
  job.Add("A", 1, 0, 0, 10.0);
  job.Add("B", 1, 0, 0, 20.0);
  job.Add("P");
  job.Observe("A", "P", Levelled(1000, 5.000));
  job.Observe("P", "A", Levelled(1000, -5.001));
  job.Observe("B", "P", Levelled(1000, -4.998));
  job.Observe("P", "B", Levelled(1000, 5.050));
}

TEST(LevelSnooping, TakesTheBlunderOut) {
  Job job;
  AddFourLines(job);
  // In the first round P is at 14.98825 m and w = 38.25 mm / sqrt(1 - 1/4) = 44; in the second w is
  // 1 mm / sqrt(1 - 1/3) = 1.2 at most.
  ASSERT_EQ(DataSnooping(job, 1, 0.001, 0.001), 1);
  EXPECT_NEAR(Height(job, "P"), 15.001, 1e-9);
  EXPECT_EQ(ResultOf(job, "P", "B").weight, 0.0);
  EXPECT_NEAR(ResultOf(job, "P", "B").residual, -0.051, 1e-9);  // 20 - 15.001 - 5.050
  EXPECT_EQ(GrossErrors(job, "[HEIGHT]"), Names{"P B"});
  // [pvv] = 1 + 0 + 1 mm^2 over one new height (the redundancy would be 2), and Q = 1/3.
  VerticalResult p{};
  ASSERT_TRUE(GetVerticalResult(job, job.Index("P"), &p));
  EXPECT_NEAR(p.sigma, 0.001 * std::sqrt(2.0 / 3.0), 1e-9);
}

// Bench marks A, B and the new points C (102 m), D (103.5 m), observed within 1 mm.
void AddLevelNet(Job& job) {
  job.Add("C");
  job.Add("D");
  job.Add("A", 1, 0, 0, 100.0);
  job.Add("B", 1, 0, 0, 105.0);
  job.Observe("A", "C", Levelled(800, 2.0004));
  job.Observe("A", "D", Levelled(1200, 3.4993));
  job.Observe("B", "C", Levelled(700, -3.0002));
  job.Observe("D", "B", Levelled(1500, 1.5008));
  job.Observe("C", "D", Levelled(900, 1.4995));
  job.Observe("D", "C", Levelled(1100, -1.5003));
}

TEST(LevelSnooping, GivesTheAdjustmentWithoutTheBlunder) {
  Job snooped;
  AddLevelNet(snooped);
  SetObsData(snooped, snooped.Index("B"), "C", Levelled(700, -3.0502));
  ASSERT_EQ(DataSnooping(snooped, 1, 0.001, 0.001), 1);
  EXPECT_EQ(GrossErrors(snooped, "[HEIGHT]"), Names{"B C"});

  Job without;
  AddLevelNet(without);
  DeleteObsData(without, without.Index("B"), "C");
  ASSERT_TRUE(LeastSquareAdj(without));
  for (const char* name : {"C", "D"}) {
    EXPECT_NEAR(Height(snooped, name), Height(without, name), 1e-10);
  }
  for (const char* target : {"C", "D"}) {
    const HeightObs a = ResultOf(snooped, "A", target);
    const HeightObs b = ResultOf(without, "A", target);
    EXPECT_NEAR(a.residual, b.residual, 1e-10);
    EXPECT_NEAR(a.sigma, b.sigma, 1e-10);
    EXPECT_EQ(a.weight, b.weight);
  }
}

TEST(LevelSnooping, WithoutBlunderIsTheAdjustment) {
  Job snooped;
  Job adjusted;
  AddLevelNet(snooped);
  AddLevelNet(adjusted);
  ASSERT_EQ(DataSnooping(snooped, 1, 0.001, 0.001), 1);
  ASSERT_TRUE(LeastSquareAdj(adjusted));
  EXPECT_EQ(Export(ExportResultFile, snooped).text, Export(ExportResultFile, adjusted).text);
}

// 62.5 mm between the two observations of P, all numbers exact in binary: both have w = 44.
TEST(LevelSnooping, OfEqualTestValuesTheFirstInWalkOrderGoes) {
  Job job;
  job.Add("P");
  job.Add("B", 1, 0, 0, 20.0);
  job.Add("A", 1, 0, 0, 10.0);
  job.Observe("B", "P", Levelled(1000, -4.9375));
  job.Observe("A", "P", Levelled(1000, 5.0));
  ASSERT_EQ(DataSnooping(job, 1, 0.001, 0.001), 1);
  EXPECT_EQ(ResultOf(job, "A", "P").weight, 0.0);
  EXPECT_EQ(ResultOf(job, "B", "P").weight, 1.0);
  EXPECT_NEAR(Height(job, "P"), 15.0625, 1e-12);
}

TEST(PlaneSnooping, TakesTheBlundersOut) {
  Job job;
  PlaneExample::Fill(job);
  PlaneExample::PlantBlunders(job);
  ASSERT_EQ(DataSnooping(job, 2, 0.001, 0.001), 1);
  EXPECT_EQ(GrossErrors(job, "[DIRANGLE]"), Names{"B Q"});
  EXPECT_EQ(GrossErrors(job, "[LENGTH]"), Names{"C P"});
  for (const PlaneExample::Point& point : PlaneExample::kPoints) {
    PlaneResult result{};
    ASSERT_TRUE(GetPlaneResult(job, job.Index(point.name), &result));
    EXPECT_NEAR(result.x, point.x, 0.003) << point.name;
    EXPECT_NEAR(result.y, point.y, 0.003) << point.name;
  }
  // What was taken out keeps a residual, here about the negative of the blunder.
  double residual = 0.0;
  double ignored = 0.0;
  ASSERT_TRUE(GetLengthResult(job, job.Index("C"), "P", &residual, &ignored, &ignored));
  EXPECT_NEAR(residual, -PlaneExample::kDistanceBlunder, 0.005);
  ASSERT_TRUE(GetDirAngleResult(job, job.Index("B"), "Q", &residual, &ignored, &ignored));
  EXPECT_NEAR(residual, -PlaneExample::kDirectionBlunder, 3.0);
}

// The example has 20 directions and 10 distances, 5 orientations and 2 new points.  Without the two
// blunders its redundancy is 28 - 9 = 19, but snooping counts each of them twice: 30 - 9 - 4 = 17.
TEST(PlaneSnooping, CountsRemovedObservationsTwice) {
  Job snooped;
  PlaneExample::Fill(snooped);
  PlaneExample::PlantBlunders(snooped);
  ASSERT_EQ(DataSnooping(snooped, 2, 0.001, 0.001), 1);
  Job without;
  PlaneExample::Fill(without);
  PlaneExample::DeleteBlunders(without);
  ASSERT_TRUE(LeastSquareAdj(without));
  for (const char* name : {"P", "Q"}) {
    PlaneResult a{};
    PlaneResult b{};
    ASSERT_TRUE(GetPlaneResult(snooped, snooped.Index(name), &a));
    ASSERT_TRUE(GetPlaneResult(without, without.Index(name), &b));
    EXPECT_NEAR(a.x, b.x, 1e-6);
    EXPECT_NEAR(a.y, b.y, 1e-6);
    EXPECT_NEAR(a.mx / b.mx, std::sqrt(19.0 / 17.0), 1e-3);
    EXPECT_NEAR(a.my / b.my, std::sqrt(19.0 / 17.0), 1e-3);
  }
}

// A round of directions to three control points, the first 9" off: the residuals are 6", -3", -3",
// one direction has the cofactor MO^2 / 3, and so the largest test value is 6 / (2.5 sqrt(2/3)) =
// 2.939.  The critical values are 2.878 for 0.004 and 2.968 for 0.003.
TEST(PlaneSnooping, ComparesTheStandardisedResidual) {
  Job job;
  job.Add("A", 10, 1000, 1000);
  job.Add("B", 10, 2000, 1000);
  job.Add("C", 10, 1000, 2000);
  job.Add("D", 10, 500, 1000);
  job.Observe("A", "B", Direction(39.5954));
  job.Observe("A", "C", Direction(130.0003));
  job.Observe("A", "D", Direction(220.0003));
  ASSERT_EQ(DataSnooping(job, 2, 0.001, 0.003), 1);
  EXPECT_EQ(GrossErrors(job, "[DIRANGLE]"), Names{});
  ASSERT_EQ(DataSnooping(job, 2, 0.001, 0.004), 1);
  EXPECT_EQ(GrossErrors(job, "[DIRANGLE]"), Names{"A B"});
}

TEST(PlaneSnooping, WithoutBlunderIsTheAdjustment) {
  Job snooped;
  Job adjusted;
  PlaneExample::Fill(snooped);
  PlaneExample::Fill(adjusted);
  ASSERT_EQ(DataSnooping(snooped, 2, 0.001, 0.001), 1);
  ASSERT_TRUE(LeastSquareAdj(adjusted));  // one pass: the approximate values are good to 10 mm
  EXPECT_EQ(Export(ExportResultFile, snooped).text, Export(ExportResultFile, adjusted).text);
}

TEST(CombinedSnooping, CleansBothNetworks) {
  Job job;
  PlaneExample::Fill(job);
  PlaneExample::AddHeights(job);
  PlaneExample::PlantBlunders(job);
  ObsData spoiled = PlaneExample::Get(job, "A", "P");
  spoiled.heightDiff += 0.05;
  PlaneExample::Set(job, "A", "P", spoiled);
  ASSERT_EQ(DataSnooping(job, 3, 0.001, 0.001), 1);
  EXPECT_EQ(GrossErrors(job, "[HEIGHT]"), Names{"A P"});
  EXPECT_EQ(GrossErrors(job, "[DIRANGLE]"), Names{"B Q"});
  EXPECT_EQ(GrossErrors(job, "[LENGTH]"), Names{"C P"});
}

TEST(CombinedSnooping, NeedsBothNetworks) {
  Job noHeightOfQ;
  PlaneExample::Fill(noHeightOfQ);
  PlaneExample::AddHeights(noHeightOfQ, "Q");
  EXPECT_EQ(DataSnooping(noHeightOfQ, 3, 0.001, 0.001), 0);

  Job noPlaceOfR;
  PlaneExample::Fill(noPlaceOfR);
  PlaneExample::AddHeights(noPlaceOfR);
  noPlaceOfR.Add("R");
  noPlaceOfR.Observe("A", "R", Levelled(300, 1.0));
  EXPECT_EQ(DataSnooping(noPlaceOfR, 3, 0.001, 0.001), 0);
}

// Above 1 the critical value is negative, and nothing but the number of observations ends the
// rounds; whether the last of them can still be solved is left open.
TEST(Snooping, EndsWhenEveryObservationFails) {
  Job level;
  AddLevelNet(level);
  DataSnooping(level, 1, 1.5, 1.5);
  Job plane;
  PlaneExample::Fill(plane);
  DataSnooping(plane, 2, 1.5, 1.5);
}

TEST(Snooping, KindMustBeTheNetworkType) {
  Job level;
  AddLevelNet(level);
  Job plane;
  PlaneExample::Fill(plane);
  Job both;
  PlaneExample::Fill(both);
  PlaneExample::AddHeights(both);
  const Job none;
  for (const std::uint32_t kind : {0u, 1u, 2u, 3u, 4u}) {
    EXPECT_EQ(DataSnooping(none, kind, 0.001, 0.001), 0);
    EXPECT_EQ(DataSnooping(level, kind, 0.001, 0.001), kind == 1 ? 1 : 0);
    EXPECT_EQ(DataSnooping(plane, kind, 0.001, 0.001), kind == 2 ? 1 : 0);
    EXPECT_EQ(DataSnooping(both, kind, 0.001, 0.001), kind == 3 ? 1 : 0);
  }
  EXPECT_EQ(DataSnooping(nullptr, 1, 0.001, 0.001), 0);
}

}  // namespace
}  // namespace brenu::testing
