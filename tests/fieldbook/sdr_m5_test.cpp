#include "fieldbook/imported.h"

namespace brenu::testing {
namespace {

using ::testing::HasSubstr;

// A field of 16 or another width, to the left.
std::string F(const std::string& text, std::size_t width = 16) {
  return text + std::string(width - std::min(width, text.size()), ' ');
}
std::string Sight(const char* origin, const char* station, const char* target, const char* slope,
                  const char* vertical, const char* circle, std::size_t name = 16,
                  std::size_t number = 16) {
  return std::string("09") + origin + F(station, name) + F(target, name) + F(slope, number) +
         F(vertical, number) + F(circle, number) + "\n";
}
std::string Header(const char* flags) {
  return "00NM" + F("SDR33 V04-04") + F("", 20) + flags + "\n";
}

TEST(Sdr, RecordsOfAStation) {
  const std::string text =
      Header("112121") + "10NMjob\n01NM" + F("", 46) + "1\n08KI" + F("A") + F("2000") + F("1000") +
      F("50") + "\n08TP" + F("B") + F("2100") + F("1000") + F("50") + "\n02TP" + F("A") +
      F("2000") + F("1000") + F("50") + F("1.5") + "\n07TP" + F("A") + F("B") + F("90") + F("10") +
      "\n03NM" + F("1.6") + "\n" + Sight("F1", "A", "B", "100", "90", "10") +
      Sight("F2", "A", "B", "100.002", "270", "190.0002") +
      Sight("MC", "A", "B", "100", "90", "90") + Sight("MD", "A", "C", "", "90", "20.5") + "13F1" +
      F("A") + F("B") + "\n12SC" + F("A") + "0010022\n" + Sight("F1", "A", "C", "30", "90", "77") +
      Sight("F1", "B", "A", "100.004", "60", "0") +
      "55XX\nhello\n\x03"
      "1234\n";
  const Imported job = Import({text});
  EXPECT_EQ(job.points, "A,10,1000.000000,2000.000000,50.000000\nB,00,,,\nC,00,,,");
  // 10.0001 degrees; 100.004 sin 60.
  EXPECT_EQ(job.observations,
            "A,B,10.000036,100.001000,,\nA,C,20.300000,,,\nB,A,0.000000,86.606004,,\n");
  EXPECT_THAT(job.findings, HasSubstr("sight-is-mean@11 B"));
  EXPECT_THAT(job.findings, HasSubstr("note-like-sight@13"));
  EXPECT_THAT(job.findings, HasSubstr("sight-of-bad-set@15 C"));
  EXPECT_THAT(job.findings, HasSubstr("record-not-used@17 55; line-not-of-format@18 SDR"));
}

// Gon, feet, north first, counter-clockwise, from the horizon; narrow fields; means alone.
TEST(Sdr, UnitsAndOtherLayouts) {
  const std::string units = Header("221112") + "01NM" + F("", 46) + "2\n08KI" + F("A") + F("100") +
                            F("200") + F("") + "\n02TP" + F("A") + "\n" +
                            Sight("F1", "A", "B", "100", "0", "100");
  const Imported feet = Import({units});
  EXPECT_EQ(feet.points, "A,10,30.480000,60.960000,\nB,00,,,");
  EXPECT_EQ(feet.observations, "A,B,270.000000,30.480000,,\n");
  const Imported survey = Import({"00NM" + F("SDR33") + F("", 20) + "121111\n13DU3\n" + "02TP" +
                                  F("A") + "\n" + Sight("MC", "A", "B", "3937", "90", "5")});
  EXPECT_EQ(survey.observations, "A,B,5.000000,1200.000000,,\n");
  const Imported narrow =
      Import({"00NM" + F("SDR20V03-05") + F("", 20) + "111111\n02TP" + F("A", 4) + "\n" +
              Sight("F1", "A", "B", "12.5", "90", "1.5", 4, 10)});
  EXPECT_EQ(narrow.observations, "A,B,1.300000,12.500000,,\n");
  // A number begins beside the flag; the mark of the face is not that of the zenith angle.
  const Imported marked = Import({Header("111111") + "01NM" + F("", 46) + "12.000\n02TP" + F("A") +
                                  "\n" + Sight("F2", "A", "B", "100", "60", "190")});
  EXPECT_EQ(marked.observations, "A,B,10.000000,86.602540,,\n");
}

std::string Line(const std::string& kind, const std::string& information,
                 const std::string& one = {}, const std::string& two = {},
                 const std::string& three = {}) {
  return "For M5|Adr 00001|" + F(kind, 4) + F(information, 27) + "|" + F(one, 22) + "|" +
         F(two, 22) + "|" + F(three, 22) + "| \n";
}
std::string Point(const std::string& code, const std::string& name) {
  return std::string(15 - code.size(), ' ') + code + std::string(12 - name.size(), ' ') + name;
}

// The orientation, 100.3000, stands behind the back sight: 359.4000 + 100.3000 - 360.
TEST(M5, Stationing) {
  const Imported job =
      Import({Line("TI", "UN STAT") +
              Line("PI1", Point("A", "7"), "", "Hz 359.4000 DMS", "V1 90.0000 DMS") +
              Line("PI1", Point("S", "5"), "Y 0.000 m", "X 0.000 m", "Z 0.000 m") +
              Line("TI", "", "", "Om 100.3000 DMS") + Line("TI", "POLAR") +
              Line("PI1", Point("", "5"), "SD 1.000 m", "Hz 1.0000 DMS", "V1 90.0000 DMS") +
              Line("TI", "EL STAT") + Line("PI1", Point("S", "5"), "ih 1.5 m") +
              Line("PI1", Point("", "8"), "SD 100.000 m", "Hz 50.0000 gon", "V3 -30.0000 deg") +
              Line("PI1", Point("", "8"), "Y 1.0 m", "X 2.0 m", "Z 3.0 m") +
              Line("PI1", Point("", "9"), "HD 0.000 m", "Hz 60.0000 DMX") + "END\n"});
  EXPECT_EQ(job.observations, "5,7,100.100000,,,\n5,8,45.000000,86.602540,,\n");
  EXPECT_EQ(job.findings,
            "sight-of-station@6 5; value-not-read@11 Hz; "
            "sight-without-values@11 9");
}

// The header puts the code into the columns 1 to 7 and the point into 8 to 19; an information of
// another width has the point last.
TEST(M5, OtherColumns) {
  const Imported job =
      Import({Line("TI", "START") + Line("TI", "", "", "21 1 7", "22 8 19") + Line("TI", "END") +
              Line("PI1", "S            12", "Y 1.000 m") + "no line\n" +
              Line("PI1", F("") + "13", "SD 100.000 m", "Hz 50.0000 gon", "V1 90.0000 DMS") +
              "For M5|Adr 00001|PI1 tree 14|HD 70.000 m|Hz 100.0000 gon|V1 90.0000 DMS| \n" +
              Line("XX", "")});
  EXPECT_EQ(job.observations, "12,13,45.000000,100.000000,,\n12,14,90.000000,70.000000,,\n");
  EXPECT_EQ(job.findings, "line-not-of-format@5 M5; record-not-used@8 XX");
}

// 3 m in front of a point at 100 m; 1 m right of one at 10 m: its direction is atan 0.1 = 5 degrees
// 42' 38.14" smaller, its distance the root of 101.
TEST(M5, EccentricPrisms) {
  const Imported job = Import(
      {Line("TI", "KN STAT") + Line("PI1", Point("S", "A"), "Y 5.0 m", "X 6.0 m") +
       Line("TI", "POLAR") + Line("PI1", Point("", "B"), "Tv 3.000 m") +
       Line("PI1", Point("", "B"), "HD 97.000 m", "Hz 190.0000 DMS", "V1 270.0000 DMS") +
       Line("PI1", Point("", "B"), "HD 97.000 m", "Hz 10.0000 DMS", "V1 90.0000 DMS") +
       Line("PI1", Point("", "C"), "Tr 1.000 m") +
       Line("PI1", Point("", "C"), "HD 10.000 m", "Hz 20.0000 DMS") + Line("PI1", Point("", "D"))});
  EXPECT_EQ(job.points, "A,10,6.000000,5.000000,\nB,00,,,\nC,00,,,");
  EXPECT_EQ(job.observations, "A,B,10.000000,100.000000,,\nA,C,14.172186,10.049876,,\n");
  EXPECT_EQ(job.findings, "sight-without-values@9 D");
}

std::string Staff(const std::string& point, const std::string& type, const std::string& reading) {
  return Line("KD1", F(point, 8), type + ' ' + reading + " m", "HD 20.000 m");
}

TEST(M5, LevelLines) {
  const Imported job = Import(
      {Line("TO", "Start-Line       BFFB     1") + Line("KD1", F("BM1", 8), "", "", "Z 10.000 m") +
       Staff("BM1", "Rb", "1.5") + Staff("", "Rf", "1.2") + Staff("", "Rf", "1.2") +
       Line("KD1", "BM1          #####", "Rb 9.9 m") + Staff("BM1", "Lr", "1.5") +
       Staff("", "Rb", "1.4") + Staff("BM2", "Rf", "1.1") + Staff("BM2", "Rf", "1.3") +
       Staff("", "Rb", "1.4") + Line("TO", "End-Line") +
       Line("KD1", F("BM2", 8), "Sh 0.5 m", "", "Z 10.500 m")});
  EXPECT_EQ(job.points, "BM1,01,,,10.000000\nBM2,00,,,");
  EXPECT_EQ(job.observations, "BM1,BM2,,80.000000,0.500000,\n");
  EXPECT_EQ(job.findings, "reading-struck-out@6");
}

}  // namespace
}  // namespace brenu::testing
