#include "fieldbook/imported.h"

namespace brenu::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

std::string Circle(const char* id, const char* target, const char* hz, const char* v,
                   const char* edm, const char* face, const char* more = "") {
  return std::string("<PointRecord ID='x'><Name>") + target +
         "</Name><Classification>Normal</Classification>" + more + "<Circle><HorizontalCircle>" +
         hz + "</HorizontalCircle><VerticalCircle>" + v + "</VerticalCircle><EDMDistance>" + edm +
         "</EDMDistance><Face>" + face + "</Face></Circle><StationID>" + id +
         "</StationID><TargetID>T</TargetID></PointRecord>\n";
}
std::string Keyed(const char* name, const char* north, const char* kind) {
  return std::string("<PointRecord><Name>") + name +
         "</Name><Method>Coordinates</Method><SurveyMethod>KeyedIn</SurveyMethod><Classification>" +
         kind + "</Classification><Grid><North>" + north +
         "</North><East>20</East><Elevation/></Grid></PointRecord>\n";
}

// The distance 100 lacks 10 ppm and -0.030: 99.971; the sight under S1 stands behind the station
// S2.
TEST(JobXml, RecordsAreJoinedByTheirIds) {
  const std::string book =
      "<?xml version='1.0'?>\n<JOBFile><FieldBook>\n"
      "<AtmosphereRecord ID='R'><PPM>10</PPM><ApplyPPMToRawDistances>true"
      "</ApplyPPMToRawDistances></AtmosphereRecord>\n"
      "<StationRecord ID='S1'><StationName>A</StationName><TheodoliteHeight>1.5</TheodoliteHeight>"
      "<AtmosphereID>R</AtmosphereID></StationRecord>\n"
      "<TargetRecord ID='T'><PrismConstant>-0.03</PrismConstant><TargetHeight/></TargetRecord>\n"
      "<StationRecord ID='S2'><StationName>B</StationName></StationRecord>\n" +
      Keyed("A", "10", "Control") + Keyed("A", "11", "Normal") + Keyed("B", "12", "Averaged") +
      Circle("S1", "B", "45", "90", "100", "Face1") +
      Circle("S1", "B", "225.002", "270", "", "FaceNull") +
      Circle("S2", "A", "5", "90", "100", "Face1") +
      Circle("S2", "C", "5", "90", "100", "Face1", "<Deleted>true</Deleted>") +
      Circle("S9", "C", "5", "90", "100", "Face1") +
      "<PointRecord><Name>B</Name><Method>MeanTurnedAngle</Method><MTA/></PointRecord>\n"
      "<StrangeRecord/>\n";
  const Imported job = Import({book + "</FieldBook><Reductions/></JOBFile>"});
  EXPECT_EQ(job.points, "A,10,10.000000,20.000000,\nB,00,,,");
  EXPECT_EQ(job.observations, "A,B,45.000360,99.971000,,\nB,A,5.000000,99.970000,,\n");
  EXPECT_EQ(job.findings,
            "control-conflict@8 A; record-is-result@9 coordinates Averaged; sight-deleted@13 C; "
            "sight-without-setup@14 C; record-is-result@15 MeanTurnedAngle; "
            "record-not-used@16 StrangeRecord; record-is-result@17 Reductions");
  // Broken off: what stands before is used.
  const Imported cut = Import({book});
  EXPECT_EQ(cut.observations, job.observations);
  EXPECT_THAT(cut.findings, HasSubstr("field-book-damaged"));
  const std::string head = book.substr(0, book.find("<Circle>"));
  EXPECT_THAT(Import({head}).findings, Not(HasSubstr("satellites")));
  const std::string whole = book + "</FieldBook></JOBFile>\n";
  EXPECT_THAT(Import({whole + "\n<JOBFile/>\n"}).findings,
              HasSubstr("record-not-used@19 what stands behind the XML"));
  EXPECT_THAT(Import({"<JOBFile><FieldBook><PointRecord><Name>G</Name></PointRecord></FieldBook>"
                      "</JOBFile>"})
                  .findings,
              HasSubstr("field-book-satellites"));
}

std::string Gkf(const std::string& network, const std::string& inside) {
  return "<gama-local><network " + network + "><parameters sigma-apr=' 5 '/>" +
         "<points-observations direction-stdev='10' distance-stdev='5 3 1'>" + inside +
         "</points-observations></network></gama-local>";
}

TEST(GamaXml, AxesAnglesAndClusters) {
  const std::string plane =
      "<point id=' A ' x='10' y='20' fix='XY'/><point id='B' adj='XY'/>"
      "<obs from='A'><direction to='B' val=' 100 '/><s-distance to='B' val='100'/>"
      "<z-angle to='B' val='60-00-00'/><distance to='C' val='7' from='B'/>"
      "<azimuth to='C' val='90-00-00'/><angle bs='B' fs='C' val='1'/></obs>";
  const Imported left = Import({Gkf("axes-xy='sw'", plane)});
  EXPECT_EQ(left.points, "A,10,10.000000,20.000000,\nB,00,,,\nC,00,,,");
  EXPECT_EQ(left.observations, "A,B,90.000000,86.602540,,\nA,C,,,,270.000000\nB,C,,7.000000,,\n");
  EXPECT_EQ(left.findings, "constraint-not-kept@1 B; cannot-be-kept@1 angle");
  EXPECT_NEAR(left.job.param.MO, 3.24, 1e-12);
  EXPECT_NEAR(left.job.param.MR, 3e-6, 1e-18);
  const Imported right = Import({Gkf("axes-xy='en' angles='right-handed'", plane)});
  EXPECT_EQ(right.points, "A,10,20.000000,10.000000,\nB,00,,,\nC,00,,,");
  EXPECT_THAT(right.observations, HasSubstr("A,B,270.000000,86.602540,,\nA,C,,,,90.000000"));
}

// (10 / 5)^2 km from the standard error, (5 / 5)^2 km from a variance of 25.
TEST(GamaXml, HeightDifferences) {
  const std::string heights =
      "<point id='A' z='3' fix='z'/><height-differences><dh from='A' to='B' val='1' dist='2'/>"
      "<dh from='A' to='C' val='0' stdev='10'/></height-differences>"
      "<height-differences><dh from='B' to='C' val='2' stdev='9'/>"
      "<cov-mat dim='1' band='0'> 25 </cov-mat></height-differences>";
  const Imported job = Import({Gkf("", heights)});
  EXPECT_EQ(job.points, "A,01,,,3.000000\nB,00,,,\nC,00,,,");
  EXPECT_EQ(job.observations,
            "A,B,,2000.000000,1.000000,\nA,C,,4000.000000,0.000001,\n"
            "B,C,,1000.000000,2.000000,\n");
  // Beside distances the lengths of the lines make a job of their own.
  const Imported both =
      Import({Gkf("", heights + "<obs from='A'><distance to='B' val='7'/></obs>")});
  EXPECT_EQ(both.observations, "A,B,,7.000000,,\n");
  EXPECT_EQ(both.heights, job.observations);
}

}  // namespace
}  // namespace brenu::testing
