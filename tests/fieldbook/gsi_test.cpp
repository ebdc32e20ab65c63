#include "fieldbook/imported.h"

namespace brenu::testing {
namespace {

// A at X 200, Y 100; B due east at 100 m and C at 60 degrees from the zenith and 200 m, in both
// faces, the second back to front: C at 200.000 and 400.002 - 200 gon, B at 100 and 300 - 200.
const char* const kStation =
    "110001+0000000A 84..10+00100000 85..10+00200000 86..10+00010000 88..10+00001500 \n";
const char* const kRound =
    "110002+0000000B 21.322+10000000 22.322+10000000 31..00+00100000 87..10+00001500 \n"
    "110003+0000000C 21.322+20000000 22.323+06000000 31..00+00200000 51....+0000+000\n"
    "110004+0000000C 21.322+40000200 22.323+30000000 31..00+00200000\n"
    "110005+0000000B 21.322+30000000 22.322+30000000 31..00+00100000";

TEST(Gsi, FacesAreAveraged) {
  const Imported job = Import({std::string(kStation) + kRound});
  EXPECT_EQ(job.points, "A,00,200.000000,100.000000,10.000000\nB,00,,,\nC,00,,,");
  // 200.001 gon are 180 degrees 00' 03.24"; 200 sin 60.
  EXPECT_EQ(job.observations, "A,B,90.000000,100.000000,,\nA,C,180.000324,173.205081,,\n");
  EXPECT_EQ(job.findings, "");
}

// The second set 10 gon on: B at 110, C at 210.003; the mean difference is 10.0015 + (3 - 1) / 2 of
// a milligon: C is 200.001 in the first set.  A third pointing at B counts for its distance only.
TEST(Gsi, SetsAreTurnedOntoTheFirst) {
  const Imported job =
      Import({std::string(kStation) + kRound +
              "\r\n110006+0000000B 21.322+11000000 22.322+10000000 31..00+00100000\r\r\n"
              "110007+0000000C 21.322+21000300 22.323+06000000 31..00+00200000\r"
              "110008+0000000B 21.322+10500000 22.322+10000000 31..00+00100006\r"});
  // Turn (10 + 10.002) / 2 = 10.001: B 99.999, C 199.999 + .003 - .001 -> means 99.9995, 200.0015.
  EXPECT_EQ(job.observations, "A,B,89.595838,100.002000,,\nA,C,180.000486,173.205081,,\n");
}

// The later setup has D in a circle 100 gon on; the third has nothing in common.
TEST(Gsi, SetupsOnAStationAreJoined) {
  const std::string later =
      "\n110001+0000000A 84..10+00100000 85..10+00200000\n"
      "110002+0000000B 21.322+20000000 22.322+10000000 31..00+00100004\n"
      "110003+0000000D 21.322+30000000 22.322+10000000 31..00+00050000\n"
      "110001+0000000A 84..10+00100000 85..10+00200000\n"
      "110002+0000000E 21.322+00000000 22.322+10000000 31..00+00070000\n";
  const Imported job = Import({std::string(kStation) + kRound + later});
  EXPECT_EQ(job.observations,
            "A,B,90.000000,100.002000,,\nA,C,180.000324,173.205081,,\nA,D,180.000000,50.000000,,\n"
            "A,E,,70.000000,,\n");
  EXPECT_THAT(job.findings, ::testing::HasSubstr("setup-without-common-target@9 A"));
}

TEST(Gsi, WordsUnitsAndTraps) {
  const std::vector<std::vector<std::string>> rows = {
      // Code 21 with station and height; DDDMMSSs; feet; 1/10 mm.
      {"410001+00000021 42....+00000A07 43....+00001502\n"
       "110002+0000P012 21.324+01234567 22.324+09000000 31..01+00100000\n"
       "110003+00000000 21.324+01234568 22.324+09000000 31..06+00100000\n",
       "A07,0,12.345680,10.000000,,\nA07,P012,12.345670,30.480000,,\n", ""},
      // Mils; feet and metres with more digits.
      {"110001+0000000A 84..10+00000000 85..10+00100000\n"
       "110002+0000000B 21.325+16000000 22.325+16000000 31..07+00100000\n"
       "110003+0000000C 21.325+32000000 22.325+16000000 31..08+00100000\n",
       "A,B,90.000000,3.048000,,\nA,C,180.000000,1.000000,,\n", ""},
      // The station by word 16; a distance of 0; the stored horizontal distance; one by dashes.
      {"*110001+000000000000000B 16....+000000000000000A 21.322+0000000010000000 "
       "22.322+0000000010000000 31..00+0000000000000000 32..00+0000000000012000\n"
       "*110002+000000000000000C 16....+000000000000000A 21.322+0000000020000000 "
       "22.322+-------------- 31..00+0000000000000000\n",
       "A,B,90.000000,12.000000,,\nA,C,180.000000,,,\n", "word-not-read@2"},
      // Sights before a station, the station itself, deleted blocks, words of no use here.
      {"110001+0000000B 21.322+10000000\n110002+0000000A 84..10+00000000 85..10+00000000\n"
       "110009+0000000A 21.322+10000000\n110010+0000000B 21.322+10000000 99..10+00000001\n"
       "x\n110011+0000000C 22.322+10000000\n120001+00000000\n",
       "A,B,90.000000,,,\n", "blocks-missing@3; sight-of-station@3 A; sight-without-setup@1 B; "},
      // The same coordinates under two stations are no control; a free station names its sights.
      {"110001+0000000B 21.322+00000000 31..00+00010000 22.322+10000000\n"
       "110002+0000000A 84..40+00005000 85..40+00005000 88..10+00001500\n"
       "110003+0000000C 21.322+10000000\n110004+0000000B 21.322+39000000\n",
       "A,B,0.000000,10.000000,,\nA,C,90.000000,,,\n", ""}};
  for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(Import({rows[i][0]}).observations, rows[i][1]);
  const std::string findings = Import({rows[3][0]}).findings;
  for (const char* code :
       {"blocks-missing@3", "sight-of-station@3 A", "sight-without-setup@1 B", "word-not-used@4 99",
        "line-not-of-format@5", "sight-without-values@6 C", "record-not-used@7"}) {
    EXPECT_THAT(findings, ::testing::HasSubstr(code));
  }
  // Behind the free station the circle is another: B at 390 gon is B at 0, C 110.
  EXPECT_EQ(Import({rows[4][0]}).observations, "A,B,0.000000,10.000000,,\nA,C,99.000000,,,\n");
}

// 89.99995 degrees are 89 59' 59.82".
TEST(Gsi, WhatCannotBeUsedIsTold) {
  const Imported job = Import(
      {std::string(kStation) + "110002+0000000B 21.323+08999995 22.323+09000000 31..00-00100000\n" +
       "110003+0000000C 21.323+00000000 31..00+00100000\n110004+0000000B 21.323+10000000\n"});
  EXPECT_EQ(job.observations, "A,B,89.595982,,,\nA,C,0.000000,,,\n");
  EXPECT_EQ(job.findings,
            "value-not-read@2 distance; slope-without-zenith@3 A C; direction-alone-in-set@4 A");
}

TEST(Gsi, StationCoordinatesFromMemoryAreNoControl) {
  const Imported job =
      Import({"110001+0000000A 84..10+00100000 85..10+00200000\n"
              "110002+0000000B 21.322+10000000\n"
              "110003+0000000B 84..10+00100000 85..10+00200000\n"
              "110004+0000000A 21.322+10000000\n"});
  EXPECT_EQ(job.points, "A,00,,,\nB,00,,,");
  EXPECT_THAT(job.findings, ::testing::HasSubstr("station-coordinates-from-memory@3 B"));
}

std::string Reading(const char* point, const char* word, const char* reading,
                    const char* distance = "02000000") {
  return std::string("110002+") + point + " 32...8+" + distance + ' ' + word + ".08" + reading +
         '\n';
}

// G to 1 to F by BFFB: 1.5 - 1.2 and 1.4 - 1.1, lengths 40 m each; back again in one setup by BF,
// with an intermediate sight to Z and an inverted staff; a check of the level.
TEST(Gsi, LevelLines) {
  const std::string there =
      "410001+?......2\n110002+0000000G 83..58+00500000\n" +
      Reading("0000000G", "331", "+00150010") + Reading("00000001", "332", "+00120000") +
      Reading("00000001", "336", "+00120000") + Reading("0000000G", "335", "+00149990") +
      "110003+00000001 573..8-00009539 574..8+04059411 83..08+00026105\n";
  const std::string on =
      Reading("00000001", "331", "+00140000") + Reading("0000000F", "332", "+00110000") +
      Reading("0000000F", "336", "+00110000") + Reading("00000001", "335", "+00140000");
  const std::string back = "410001+?......1\n" + Reading("0000000F", "331", "-00100000") +
                           Reading("0000000Z", "333", "+00050000", "01000000") +
                           Reading("0000000G", "332", "-00040000") + "410001+?.....10\n" +
                           Reading("0000000G", "331", "+00100000");
  const Imported job = Import({there + on + back});
  EXPECT_EQ(job.points, "G,01,,,5.000000\nF,00,,,\nZ,00,,,");
  EXPECT_EQ(job.observations,
            "F,G,,40.000000,-0.600000,\nF,Z,,30.000000,-1.500000,\nG,F,,80.000000,0.600000,\n");
  EXPECT_EQ(job.findings, "level-method-not-read@16 10; record-not-used@17 a reading of a check");
  // The second setup measured again, and a second run: mean height, half the mean length.
  const Imported again = Import({there + Reading("00000001", "331", "+00130000") +
                                 Reading("0000000X", "332", "+00110000") + on + there + on});
  EXPECT_EQ(again.observations, "G,F,,40.000000,0.600000,\n");
  EXPECT_EQ(again.findings, "level-setup-incomplete@8 1");
  // The last setup again, to another height: 1.4 - 1.3.
  const Imported last =
      Import({there + on + Reading("00000001", "331", "+00140000") +
              Reading("0000000F", "332", "+00130000") + Reading("0000000F", "336", "+00130000") +
              Reading("00000001", "335", "+00140000")});
  EXPECT_EQ(last.observations, "G,F,,80.000000,0.400000,\n");
  EXPECT_EQ(last.findings, "level-setup-repeated@8 1");
  const std::string single =
      Reading("0000000G", "331", "+00100000") + Reading("0000000F", "332", "+00090000");
  const Imported once =
      Import({"410001+?......1\n" + single + Reading("0000000G", "331", "+00100200") +
              Reading("0000000F", "332", "+00090000")});
  EXPECT_EQ(once.observations, "G,F,,40.000000,0.102000,\n");
  EXPECT_EQ(once.findings, "level-setup-repeated@2 G");
  // Cut off in front.
  EXPECT_EQ(Import({on}).observations, "1,F,,40.000000,0.300000,\n");
  const Imported twice = Import({there + there + on});
  EXPECT_EQ(
      twice.observations,
      "1,F,,40.000000,0.300000,\nG,1,,20.000000,0.300000,\n");  // where a line ended, 1 is a point
  EXPECT_EQ(
      Import({"410001+?......1\n" + Reading("0000000G", "331", "+00100000") +
              Reading("00000001", "332", "+00100000") + Reading("00000001", "331", "+00100000") +
              Reading("0000000G", "332", "+00100000")})
          .findings,
      "level-line-to-itself@4 G; nothing-imported");
}

// Two lines with a turning point 1 each, at different places; Z is read from that of the first.
TEST(Gsi, IntermediateSightsFromTurningPoints) {
  const Imported job =
      Import({"410001+?......1\n" + Reading("0000000G", "331", "+00100000") +
              Reading("00000001", "332", "+00090000") + Reading("00000001", "331", "+00150000") +
              Reading("0000000Z", "333", "+00050000") + Reading("0000000H", "332", "+00120000") +
              "410001+?......1\n" + Reading("0000000H", "331", "+00120000") +
              Reading("00000001", "332", "+00100000") + Reading("00000001", "331", "+00100000") +
              Reading("0000000G", "332", "+00160000")});
  EXPECT_EQ(job.observations,
            "1,Z,,40.000000,1.000000,\nG,1,,40.000000,0.100000,\nG,H,,80.000000,0.400000,\n"
            "H,G,,80.000000,-0.400000,\n");
}

}  // namespace
}  // namespace brenu::testing
