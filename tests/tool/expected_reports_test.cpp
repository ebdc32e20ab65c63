// The reports of every example against those kept under tests/expected, which
// scripts/update-expected writes anew when a change is intended.
#include <gmock/gmock.h>

#include <set>

#include "tool/program.h"

namespace brenu::testing {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;

class Example : public ProgramTest {
 protected:
  // The lines of the report that data snooping marks.
  std::vector<std::string> GrossErrors(const std::string& report) const {
    std::vector<std::string> lines;
    std::ifstream file(report);
    for (std::string line; std::getline(file, line);) {
      if (line.ends_with("  gross error")) lines.push_back(line.substr(0, 26));
    }
    return lines;
  }
};

TEST_F(Example, ReportsAreAsExpected) {
  std::set<fs::path> compared;
  for (const auto& entry : fs::directory_iterator(BRENU_EXAMPLES)) {
    const fs::path network = entry.path();
    if (network.extension() != ".txt" || network.filename() == "CMakeLists.txt") continue;
    for (const std::string report : {"result", "closures"}) {
      const fs::path kept = fs::path(BRENU_EXPECTED) / network.filename().replace_extension(report);
      const fs::path made = fs::path(Folder()) / kept.filename();
      Execute("adjust --summary --" + report + " \"" + made.string() + "\" \"" + network.string() +
              '"');
      EXPECT_EQ(fs::exists(made), fs::exists(kept)) << kept;
      EXPECT_TRUE(Read(made) == Read(kept)) << kept << " differs; the program wrote:\n"
                                            << Read(made);
      compared.insert(kept.filename());
    }
  }
  for (const auto& entry : fs::directory_iterator(BRENU_EXPECTED)) {
    EXPECT_EQ(compared.count(entry.path().filename()), 1U) << entry << " has no example";
  }
}

TEST_F(Example, SnoopingFindsThePlantedBlundersAndNoOthers) {
  const std::string blunders = "\"" BRENU_EXAMPLES "/blunders.txt\"";
  const std::string report = Folder() + "/report.txt";
  const Outcome run =
      Execute("adjust --snoop 0.001 --summary --result \"" + report + "\" " + blunders);
  EXPECT_EQ(run.status, 0) << run.err;
  const std::string table = run.out.substr(run.out.find("Taken out"));
  EXPECT_THAT(table, ::testing::MatchesRegex("Taken out by data snooping: 2\n"
                                             "  Station  Target  Kind +Residual\n"
                                             "  T05      T09     distance +-..\\..*  mm\n"
                                             "  T10      T05     direction +-..\\..*  \"\n"));
  EXPECT_THAT(GrossErrors(report),
              ElementsAre("         T10           T05", "         T05           T09"));
}

}  // namespace
}  // namespace brenu::testing
