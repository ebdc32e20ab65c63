// Formats by content, the steps that are wanted, control, and what is wrong with a file as a whole.
#include "fieldbook/book_format.h"
#include "fieldbook/imported.h"

namespace brenu::testing {
namespace {

using ::testing::HasSubstr;

TEST(FieldBook, FormatByContent) {
  const std::vector<std::pair<std::string, BookFormat>> rows = {
      {"\xEF\xBB\xBF\n \n*11....+0000000000000001 21.322+0000000000000001", BookFormat::kGsi16},
      {std::string("\0\0\x02", 3) + "410001+?......1", BookFormat::kGsi8},
      {"00NMSDR33V04", BookFormat::kSdr},
      {"For_M5|Adr", BookFormat::kM5},
      {"<?xml version='1.0'?><!-- <x> --><JOBFile/>", BookFormat::kJobXml},
      {"<!DOCTYPE gama-xml><gama-xml>", BookFormat::kGkf},
      {"<html>", BookFormat::kUnknown},
      {"[PARAM]", BookFormat::kUnknown},
      {"11 is no GSI", BookFormat::kUnknown}};
  for (const auto& [text, format] : rows) EXPECT_EQ(FormatOfBook(text), format) << text;
  EXPECT_EQ(Import({"ST,A,1\nSS,B,2\n"}).findings, "field-book-comma-list");
  EXPECT_EQ(Import({"what?"}).findings, "field-book-unknown");
  EXPECT_EQ(Import({"410001+00000001\n"}).findings, "nothing-imported");
}

// 1000 m at 60 degrees from the zenith, instrument 1.5 and target 1.7 m high.
const std::string kSight =
    "110001+0000000A 84..10+00100000 85..10+00200000 86..10+00010000 88..10+00001500\n"
    "110002+0000000B 21.322+10000000 22.323+06000000 31..00+01000000 87..10+00001700\n";

double DistanceWith(const ReductionOptions& steps) {
  ImportOptions options;
  options.reduction = steps;
  const Imported job = Import({kSight}, options);
  return std::as_const(job.job.store).FindObs(0, "B")->distance;
}

TEST(Reduction, StepsThatAreAskedFor) {
  const double horizontal = 866.0254038;
  ReductionOptions steps;
  EXPECT_NEAR(DistanceWith(steps), horizontal, 1e-6);
  steps.refraction = 0.13;  // - 0.935 1000^2 sin 120 / (2 6371000) = -0.0635483
  EXPECT_NEAR(DistanceWith(steps), horizontal - 0.0635483, 1e-6);
  steps = {};
  steps.constant = 20.0;
  steps.scale = 30.0;  // 1000.05 sin 60
  EXPECT_NEAR(DistanceWith(steps), 1000.05 * 0.8660254038, 1e-6);
  steps = {};
  steps.ellipsoid = EllipsoidReduction{637.1};  // 1 - 1e-4 + 1e-8
  EXPECT_NEAR(DistanceWith(steps), horizontal * 0.99990001, 1e-6);
  steps = {};
  steps.plane = PlaneReduction{0.9996, 63710.0};  // y^2 / (2 R^2) = 5e-5, y^4 / (24 R^4) = 4e-10
  EXPECT_NEAR(DistanceWith(steps), horizontal * (0.9996 + 5e-5 + 4.1667e-10), 1e-6);
  steps = {};
  // The air of docs/reductions.md, 0.053449786 m for 2000 m.
  steps.air = AirCorrection{{950.0, 25.0, 10.0}, {1013.25, 15.0, 0.0}, 0.85};
  EXPECT_NEAR(DistanceWith(steps), (1000.0 + 0.026724893) * 0.8660254038, 1e-6);
}

// 1000 cos 60 + 1.5 - 1.7; weight by (1000 m 5" )^2 + 2 mm^2 in km for 1 mm: 587.61 + 2 km.
TEST(Reduction, TrigonometricHeights) {
  ImportOptions options;
  options.reduction.trigonometricHeights = true;
  const Imported job = Import({kSight}, options);
  EXPECT_THAT(job.heights, HasSubstr(",499.800000,"));
  EXPECT_THAT(job.heights, HasSubstr("A,B,,589610."));
  EXPECT_THAT(job.findings, HasSubstr("heights-apart"));
  const std::string without =
      "110001+0000000A 84..10+00100000 85..10+00200000\n"
      "110002+0000000B 22.323+06000000 31..00+01000000\n";
  EXPECT_THAT(Import({without}, options).findings, HasSubstr("heights-of-instrument-missing A B"));
}

TEST(Reduction, StepsThatAreSwitchedOff) {
  const std::string sets =
      "110001+0000000A 84..10+00100000 85..10+00200000\n"
      "110002+0000000B 21.322+10000000 22.322+10000000 31..00+00100000\n"
      "110003+0000000B 21.322+30000200 22.322+30000000 31..00+00100002\n"
      "110004+0000000B 21.322+10000000 22.322+10000000 31..00+00100011\n";
  ImportOptions options;
  options.reduction.averageFaces = false;
  EXPECT_EQ(Import({sets}, options).observations, "A,B,90.000000,100.005500,,\n");
  options.reduction = {};
  options.reduction.averageSets = false;
  EXPECT_EQ(Import({sets}, options).observations, "A,B,90.000324,100.001000,,\n");
}

TEST(Reduction, GrossErrorsAreNamed) {
  std::string text = "110001+0000000A 84..10+00100000 85..10+00200000\n";
  for (int set = 0; set < 6; ++set) {
    for (const char* target : {"B", "C", "D"}) {
      const bool isWrong = set == 3 && *target == 'C';
      text += std::string("110002+0000000") + target + " 21.322+1000" +
              (isWrong ? "1000" : "0000") + " 22.322+10000000 31..00+00" +
              (isWrong ? "100050" : "100000") + "\n";
    }
  }
  const Imported job = Import({text});
  EXPECT_THAT(job.findings, HasSubstr("set-out-of-spread@12 A C"));
  EXPECT_THAT(job.findings, HasSubstr("distance-out-of-spread@12 A C"));
  EXPECT_THAT(Import({"110001+0000000A 84..10+00100000 85..10+00200000\n"
                      "110002+0000000B 21.322+10000000 22.322+10000000\n"
                      "110003+0000000B 21.322+30100000 22.322+30000000\n"})
                  .findings,
              HasSubstr("faces-differ@2 A B"));
}

TEST(Control, ListsAndConflicts) {
  const Imported job =
      Import({kSight}, {}, "name;X;Y;H\nB;1;2\nA,10,200,101\n# no\nC,00,1,2,\nA,200,100\n");
  EXPECT_EQ(job.points, "B,10,1.000000,2.000000,\nA,10,200.000000,101.000000,10.000000");
  EXPECT_EQ(job.findings, "control-conflict@6 A");
  EXPECT_THAT(Import({kSight}, {}, "A,1,2,3\nB,1\n").findings, HasSubstr("control-fields@2"));
  // A height of its own for B; nobody asks for C.
  EXPECT_EQ(Import({kSight}, {}, "[PT]\nA,10,200,100,\nB,11,300,400,5\nC,00,1,2,3\n").points,
            "A,10,200.000000,100.000000,10.000000\nB,10,300.000000,400.000000,5.000000");
  const Imported listed =
      Import({kSight}, {}, "110001+0000000B 81..10+00100000 82..10+00200000 83..10+00010000\n");
  EXPECT_THAT(listed.points, HasSubstr("B,10,200.000000,100.000000,10.000000"));
  // Coordinates of stations count in the control only.
  EXPECT_THAT(Import({kSight}).points, HasSubstr("A,00,200.000000,100.000000,10.000000"));
  EXPECT_THAT(Import({kSight}, {}, kSight).points,
              HasSubstr("A,10,200.000000,100.000000,10.000000"));
}

TEST(FieldBook, NamesThatDoNotFitStayDifferent) {
  const Imported job = Import(
      {"110001+00000A_B 84..10+00100000 85..10+00200000\n110002+00000A,B 21.322+10000000\n"});
  EXPECT_EQ(job.observations, "A_B,A_B_2,90.000000,,,\n");
  EXPECT_EQ(job.findings, "name-changed A,B A_B_2");
}

}  // namespace
}  // namespace brenu::testing
