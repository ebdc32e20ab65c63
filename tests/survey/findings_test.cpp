// What each cause of failure and each doubt is reported as: one row each.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include "brenu/brenu.hpp"
#include "support/job.h"
#include "support/network_text.h"
#include "support/temp_file.h"

namespace brenu::testing {
namespace {

// All findings in the form "!code@line name,name =value", errors with the mark.  Their sentences
// must be complete.
std::string Told(AdjustmentContext* job) {
  std::ostringstream all;
  for (const Finding& f : FindingsOf(job)) {
    all << (all.tellp() > 0 ? "; " : "") << (f.severity == BRENU_ERROR ? "!" : "") << f.id;
    if (f.line != 0) all << '@' << f.line;
    for (const std::string& name : f.names) all << (&name == f.names.data() ? ' ' : ',') << name;
    for (const double value : f.values) all << " =" << value;
    EXPECT_GT(f.sentence.size(), 20U);
    EXPECT_EQ(f.sentence.find_first_of("{}?"), std::string::npos) << f.sentence;
  }
  return all.str();
}

// All angles are just within what is written: 60 seconds come from rounding, -1 stands for none.
const std::string kPlane =
    "[PARAM]\nMO:2.5\nMS:0.005\nMR:0\n\n[PT]\nA,10,1000,1000,\nB,10,1000,1200,\nP,00,,,\n\n"
    "[OBS]\nA,B,10.5960,,,\nA,P,+11.00,100.004,,\nB,P,-1,100.004 ,,\n";
const std::string kStations = "[PARA]\nMO:2\n[STATION]\nA,01,,,100\nP,0\n[OBSER]\nA,P,12.5,10,1\n";
const char* const kProjectHeaders = "[PARAM], [PT], [OBS]";

struct TextRow {
  std::string text, told;
};
const std::vector<TextRow> kTexts = {
    {kLevelling, ""},
    {kPlane, ""},
    {kStations, ""},
    // What is no such file.
    {"", "!file-empty"},
    {"\n \t\n", "!file-empty"},
    {std::string("PK\3\4\0\0abc", 9), "!file-binary"},
    {"\xFF\xFE[\n", "!file-utf16"},
    {std::string("[\0P\0T\0]\0", 8), "!file-utf16"},
    {"A,01,,,100\n", "!file-of-other-kind"},
    {"x\n[Pt]\nA,01\n",
     std::string("!header-unknown@2 ") + kProjectHeaders + "; [PARA], [STATION], [OBSER]"},
    // Forgiven.
    {"\xEF\xBB\xBF" + kLevelling, ""},
    {"[PARA]\r\n[STATION]\r\nA,01,,,1\r\n[OBSER]\r\n", ""},
    {With(kLevelling, "4\n\n[PT]", "4\n[PT]"), ""},
    // Lines that cannot be read.
    {"[PT]\nA,01,,,1\nB,00,,\n", "!point-fields@3"},
    {"[STATION]\nA\n", "!station-fields@2"},
    {kLevelling + "A,B\n", "!observation-fields@13"},
    {kStations + "A,P,0,1,\n", "!short-observation-fields@8"},
    {"[PARA]\nMO\n", "!parameter-form@2"},
    {"[PT]\nA,11,1000,5,1000,5,50,5\n", "!decimal-commas@2"},
    {"[STATION]\nA,11,1000,5,1000,5,50,5\n", "decimal-commas@2"},
    {"[PT]\n" + std::string(128, 'n') + ",00,,,\n", "!name-too-long@2"},
    {"[PT]\n" + std::string(1 << 20, 'n') + ",00,,,\n", "!line-too-long@2"},
    {"[PT]\nA,01,,,1\nA,00,,,\n", "!name-taken@3 A"},
    {kLevelling + "Q,P,,10,1,\n", "!station-unknown@13 Q"},
    {kLevelling + "A,Q,,10,1,\n", "!target-unknown@13 Q"},
    {kLevelling + "A,A,,10,1,\n", "!target-is-station@13 A"},
    {kLevelling + "A,P,,10,1,\n", "!pair-taken@13 A,P"},
    // Doubts.
    {"[param]\nMO:1\n\n" + kLevelling, std::string("header-unknown@1 ") + kProjectHeaders},
    {With(kLevelling, "[OBS]", "[OBSER]"), std::string("header-unknown@10 ") + kProjectHeaders},
    {kLevelling + "\nB,A,,,1,\nX\n", "lines-skipped@14 =1"},
    {With(kLevelling, "MO:2", "M0:2"),
     "parameter-unknown@2 MO, MS, MR, Lvl1, Lvl2, Lvl1Limit, Lvl2Limit, Limit, format"},
    {With(kLevelling, "MO:2", "MO:"), "parameter-without-value@2 MO"},
    {With(kLevelling, "MO:2", "MO:2,5"), "not-a-number@2 parameter =2"},
    {With(kLevelling, "1000", "1000m"), "not-a-number@11 distance =1000"},
    {With(kLevelling, "0.504", "O.504"), "not-a-number@11 height difference =0"},
    {With(kPlane, "10.5960", "10.5961"), "not-an-angle@12 direction =10.5961"},
    {With(kPlane, "10.5960", "361"), "not-an-angle@12 direction =361"},
    {With(kStations, "12.5", "12.75"), "not-an-angle@7 direction =12.75"},
    {With(kLevelling, "B,01", "B,02"), "point-type-unknown@7 =2"},
    {With(kLevelling, ",,,100", ",100,,"), "known-value-missing@6 A"},
    {With(kLevelling, "0.504", "0"), "height-difference-zero@11 A,P =0"},
    {With(kLevelling, "1000", "0"), "distance-zero@11 A,P =0"},
    // Ten are enough.
    {"[PT]\nA,x,x,x,x\nB,x,x,x,x\nC,x,x,x,x\n",
     "not-a-number@2 type =0; not-a-number@2 X =0; not-a-number@2 Y =0; not-a-number@2 H =0; "
     "not-a-number@3 type =0; not-a-number@3 X =0; not-a-number@3 Y =0; not-a-number@3 H =0; "
     "not-a-number@4 type =0; not-a-number@4 X =0; more-doubts =2"}};

TEST(Findings, OfReading) {
  for (const auto& [text, told] : kTexts) {
    SCOPED_TRACE(text.substr(0, 200));
    const Job memory;
    const std::int32_t kind = brenu_read_memory(memory, text.data(), text.size());
    EXPECT_EQ(Told(memory), told);
    EXPECT_EQ(kind == BRENU_NO_FILE, told.find('!') != std::string::npos);
    const TempFile input(text);
    const Job file;
    EXPECT_EQ(brenu_read_file(file, input.Path()), kind);
    EXPECT_EQ(Told(file), told);
    EXPECT_EQ(GetPointCount(file), GetPointCount(memory));
  }
}

// Traverses without orientation: two sides of 100 m at a right angle between A and B.
const std::string kUnoriented =
    "[PARAM]\nformat:1\n\n[PT]\nA,10,1000,1000,\nB,10,1000,1141.44136,\nU,00,,,\n\n"
    "[OBS]\nU,A,30,100,,\nU,B,120,100,,\n";
// Distances only: P 100 m north of the line A - B.
const std::string kDistances =
    "[PARAM]\nMS:0.005\nMR:0\nformat:3\n\n[PT]\nA,10,1000,1000,\nB,10,1000,1200,\nP,00,,,\n\n"
    "[OBS]\nA,P,,141.42136,,\nP,B,,141.42136,,\n";
// Heights and plane; a bench mark alone has no coordinates.
const std::string kBoth =
    "[PARAM]\nMS:0.005\nMR:0\n\n[PT]\nA,11,1000,1000,50\nB,11,1000,1200,51\nP,00,,,\nR,01,,,52\n\n"
    "[OBS]\nA,B,0,,,\nA,P,10,100,1,\nP,R,,300,1,\n";

Job Read(const std::string& text) {
  Job job;
  EXPECT_NE(brenu_read_memory(job, text.data(), text.size()), BRENU_NO_FILE) << text;
  return job;
}

const std::vector<TextRow> kData = {
    {kLevelling, ""},
    {kPlane, ""},
    {With(kLevelling, ",100\n", ",inf\n"), "!coordinate-not-finite A"},
    {With(kLevelling, "1000", "inf"), "!observation-not-finite A,P"},
    {With(kLevelling, "1000", "-10"), "!distance-negative A,P"},
    {With(kPlane, "MS:0.005", "MS:0"), "!distance-error-not-positive A,P"},
    {With(kPlane, "MO:2.5", "MO:0"), "!direction-error-not-positive"},
    {With(kPlane, "MS:0.005\nMR:0", "MS:5\nMR:5"), "distance-errors-large =100.004 =505.02"},
    {With(kLevelling, "1000", ""), "line-length-missing A,P =0"},
    {With(kLevelling, "0.504,", "0,004"), "azimuth-without-plane A,P"},
    {With(kLevelling, "Lvl1:4", "format:7"), "format-unknown =7"},
    {With(kDistances, "A,10", "A,11"), "format-leaves-heights =3"},
    {With(kDistances, "A,P,,", "A,P,10,"), "format-counts-directions"},
    {With(With(kLevelling, "1000", "1.1"), "1000", "1.3") + "A,B,,1.2,1,\n",
     "line-lengths-in-kilometres =1.2"},
    {kPlane + "B,A,,20,,\n", "distance-out-of-proportion B,A =20 =200 =0"},
    {With(kPlane, "P,00", "C,10,1100,1100,\nD,10,9000,1100,\nP,00"),
     "control-far-away D,X =7900 =100"}};

struct Row {
  std::string text;
  bool (*call)(AdjustmentContext*);
  std::string told;
};
const std::vector<Row> kComputations = {
    {"[PT]\n", LeastSquareAdj, "!no-points"},
    {"[PT]\nA,00,,,100\n", LeastSquareAdj, "!no-control"},
    {"[PT]\nA,01,,,100\nB,00,,,\n", ApproxCalc, "!no-observations"},
    {"[PT]\nA,01,,,100\nB,00,,,\n\n[OBS]\nA,B,,,1,\n", LeastSquareAdj, "!nothing-levelled"},
    {With(kLevelling, "P,00", "C,00,,,\nP,00"), LeastSquareAdj, "!heights-unreached C"},
    {With(kPlane, "P,00", "C,00,,,\nP,00"), ApproxCalc, "!coordinates-unreached C"},
    {kBoth, LeastSquareAdj, "!coordinates-unreached R =1"},
    {With(kBoth, "100,1,\nP,R", "100,,\nB,R"), LeastSquareAdj, "!heights-unreached P =1"},
    {With(kDistances, "format:3", "format:0"), LeastSquareAdj, "!distances-without-directions"},
    {With(With(kLevelling, "1000", "1e320"), "1000", "1e320"), LeastSquareAdj, "!heights-singular"},
    {With(kPlane, "MS:0.005", "MS:1e12"), LeastSquareAdj, "!plane-singular"},
    {With(With(kLevelling, ",100\n", ",1.7e308\n"), "0.504", "1.7e308"), LeastSquareAdj,
     "!heights-not-finite"},
    {With(kPlane, "100.004", "1.7e308"), LeastSquareAdj, "!coordinates-not-finite"},
    {With(kPlane, "B,10,1000,1200", "B,10,1000,1000"), LeastSquareAdj, "!line-without-length A,B"},
    {With(kLevelling, "0.504", "1e300"), LeastSquareAdj, "!height-residuals-too-large"},
    // Zero north, and the reading to P a second more than its azimuth: reduced to -1" or 359 59 59.
    {"[PARAM]\nMS:0.005\nMR:0\n\n[PT]\nA,10,1000,1000,\nB,10,1200,1000,\nP,00,,,\n\n"
     "[OBS]\nA,B,0,,,\nA,P,90.0001,100,,\nB,A,0,,,\nB,P,333.2606,223.607,,\n",
     LeastSquareAdj, "!direction-turned A,P"},
    {kLevelling, NonDirectionAdj, "!format-is-not =1"},
    {With(kLevelling, "Lvl1:4", "format:1"), NonDirectionAdj, "!format-needs-plane"},
    {With(kUnoriented, "U,B,120", "U,B,"), NonDirectionAdj, "!no-traverse"},
    {With(kUnoriented, "U,00", "V,00,,,\nU,00"), NonDirectionAdj, "!points-off-traverses V"},
    {"[PT]\nA,01,,,10\nN,00,,,\n\n[OBS]\nA,N,,400,1,\n", CalculateCloseError, "no-closures"},
    {"[PT]\nA,11,1000,1000,50\nB,10,1000,1200,\n\n[OBS]\nA,B,0,200,1,\n", CalculateCloseError,
     "!no-closures"},
    // Trilateration.
    {kLevelling, JudgeTrilateration, "!format-is-not =3"},
    {kLevelling, InitializeDataTrilateration, "!format-needs-plane"},
    {kDistances, LeastSquareAdj, "!not-prepared"}};

TEST(Findings, OfData) {
  for (const auto& [text, told] : kData) {
    const Job job = Read(text);
    EXPECT_EQ(brenu_check_data(job), told.find('!') == std::string::npos) << text;
    EXPECT_EQ(Told(job), told) << text;
  }
}

TEST(Findings, OfComputations) {
  for (const auto& [text, call, told] : kComputations) {
    const Job job = Read(text);
    call(job);
    EXPECT_EQ(Told(job), told) << text;
  }
}

// What is told after a call; its result says less.
template <typename Result>
std::string After(const Result&, AdjustmentContext* job) {
  return Told(job);
}

TEST(Findings, OfTheStore) {
  const Job job = Read(kLevelling);
  const ObsData obs = Distance(1);
  EXPECT_EQ(After(AddPoint(job, -2, MakePoint("N")), job), "!index-negative =-2");
  EXPECT_EQ(After(AddPoint(job, 2, MakePoint("N")), job), "!index-taken =2");
  EXPECT_EQ(After(AddPoint(job, 9, MakePoint("P")), job), "!name-taken P");
  EXPECT_EQ(After(SetPoint(job, 9, MakePoint("N")), job), "!index-unknown =9");
  EXPECT_EQ(After(DeletePoint(job, 9), job), "!index-unknown =9");
  EXPECT_EQ(After(AddObsData(job, 9, "A", obs), job), "!index-unknown =9");
  EXPECT_EQ(After(AddObsData(job, 0, "Q", obs), job), "!target-unknown Q");
  EXPECT_EQ(After(AddObsData(job, 0, "A", obs), job), "!target-is-station A");
  EXPECT_EQ(After(AddObsData(job, 0, "P", obs), job), "!pair-taken A,P");
  EXPECT_EQ(After(AddObsData(job, 0, nullptr, obs), job), "!null-argument");
  EXPECT_EQ(After(SetObsData(job, 0, "B", obs), job), "!pair-unknown B");
  EXPECT_EQ(After(DeleteObsData(job, 0, "B"), job), "!pair-unknown B");
  EXPECT_EQ(After(SetPoint(job, 1, MakePoint("A", 1)), job), "!name-is-station A");
  EXPECT_EQ(After(LeastSquareAdj(job), job), "!name-without-point B,P");
  const Job plane = Read(kPlane);
  EXPECT_EQ(After(SetPoint(plane, 1, MakePoint("A", 10, 1, 1)), plane), "!name-is-station A");
  EXPECT_EQ(After(brenu_check_data(plane), plane), "");  // the distance B - P has lost an end
}

// Two targets at once, where -1 may be a success and 1 a refusal.
TEST(Findings, OfReconciledReadings) {
  const Job job = Read(kPlane);
  const ObsData obs = Direction(10.596);
  EXPECT_EQ(AddObsData2(job, 0, "B", "Q", obs, obs, 1), 1);
  EXPECT_EQ(Told(job), "!target-unknown Q");
  EXPECT_EQ(AddObsData2(job, 1, "P", "Q", obs, obs, 1), -1);
  EXPECT_EQ(Told(job), "!no-reference-direction P,Q");
  EXPECT_EQ(DeleteObsData(job, 0, "P"), 0);
  EXPECT_EQ(AddObsData2(job, 0, "B", "P", obs, obs, 1), -1);
  EXPECT_EQ(Told(job), "");
}

TEST(Findings, OfFiles) {
  const std::string folder = ::testing::TempDir();
  const Job job;
  EXPECT_EQ(After(brenu_read_file(job, (folder + "none").c_str()), job), "!file-missing");
  EXPECT_EQ(After(brenu_read_file(job, folder.c_str()), job), "!file-is-folder");
  const TempFile levelling(kLevelling), stations(kStations), report;
#ifdef __linux__
  const std::string below = levelling.Path() + std::string("/x");
  EXPECT_EQ(After(brenu_read_file(job, below.c_str()), job), "!file-not-opened");
#endif
  EXPECT_EQ(After(LoadKorvelAdjustFile(job, levelling.Path()), job), "!file-is-project");
  EXPECT_EQ(After(OpenBrenuAdjustFile(job, stations.Path()), job), "file-is-station");
  EXPECT_EQ(After(brenu_read_file(job, levelling.Path()), job), "");
  EXPECT_EQ(After(brenu_read_file(job, levelling.Path()), job), "!index-taken@6 =0");

  const std::string unwritten = "!file-not-written " + folder;
  EXPECT_EQ(After(ExportCloseErrorFile(job, folder.c_str()), job), "!no-closures");
  EXPECT_EQ(After(CalculateCloseError(job), job), "");
  EXPECT_EQ(After(ExportCloseErrorFile(job, folder.c_str()), job), unwritten);
  EXPECT_EQ(After(SaveBrenuAdjustFile(job, folder.c_str()), job), unwritten);
  EXPECT_EQ(After(ExportResultFile(job, folder.c_str()), job), unwritten);
  EXPECT_EQ(After(LeastSquareAdj(job), job), "");
  EXPECT_EQ(After(AddObsData(job, 0, "B", Levelled(1000, 1)), job), "");
  std::string path = report.Path();
  std::replace(path.begin(), path.end(), '\\', '/');
  EXPECT_EQ(After(ExportResultFile(job, path.c_str()), job), "!report-stops-short " + path);
}

TEST(Findings, OfSnooping) {
  Job job = Read(kLevelling);
  EXPECT_EQ(After(DataSnooping(job, 3, 0.01, 0.01), job), "!kind-is-not-network-type =3 =1");
  // One distance can be checked, and any residual is above this critical value: with one of the
  // three taken out, the rest is taken for wrong as well.
  job = Read(
      "[PARAM]\nMO:2\nMS:0.005\nMR:0\n\n[PT]\nA,10,1000,1000,\nB,10,1000,1500,\nP,00,,,\nQ,00,,,"
      "\n\n[OBS]\nA,B,287.53209,,,\nA,P,243.25571,1095.5693,,\nA,Q,203.52134,691.6186,,\n"
      "Q,P,,714.3444,,\n");
  EXPECT_EQ(After(DataSnooping(job, 2, 0.999, 0.999), job), "!snooping-undetermined");
}

TEST(Findings, OfTrilateration) {
  const auto place = [](AdjustmentContext* job, double radius) {
    std::uint32_t left = 0;
    EXPECT_TRUE(CalcTrilaterationpPoint(job, 0, {"A", 1000, 1000, radius},
                                        {"B", 1000, 1200, radius}, "P", &left));
    return left;
  };
  const Job job = Read(kDistances + "A,B,,1e200,,\n");
  EXPECT_EQ(After(JudgeTrilateration(job), job), "");
  EXPECT_EQ(After(TrilaterationDirection(job), job), "!point-not-placed P");
  EXPECT_EQ(After(place(job, 50), job), "!no-place P");
  EXPECT_EQ(After(place(job, 150), job), "");
  EXPECT_EQ(After(TrilaterationDirection(job), job), "");
  EXPECT_EQ(After(LeastSquareAdj(job), job), "!plane-residuals-too-large");
  const Job levelling = Read(kLevelling);
  EXPECT_EQ(After(place(levelling, 150), levelling), "!format-needs-plane");
}

}  // namespace
}  // namespace brenu::testing
