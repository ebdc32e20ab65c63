// Reports and summaries of the examples against those kept under tests/expected, which
// scripts/update-expected writes anew when a change is intended.
#include <regex>

#include "tool/program.h"

namespace brenu::testing {
namespace {

namespace fs = std::filesystem;

class Example : public ProgramTest {};

TEST_F(Example, ReportsAreAsKept) {
  int compared = 0;
  for (const auto& entry : fs::directory_iterator(BRENU_EXPECTED)) {
    const fs::path& kept = entry.path();
    const std::string kind = kept.extension().string().substr(1);
    const std::string network = BRENU_EXAMPLES "/" + kept.stem().string() + ".txt";
    const std::string report = Folder() + '/' + kept.filename().string();
    // The prescribed reports by the rules they are prescribed with.
    const std::string option =
        kind == "summary" ? "" : " --classic --" + kind + " \"" + report + '"';
    const Outcome run = Execute("adjust --no-verdict --summary" + option + " \"" + network + '"');
    EXPECT_EQ(run.status, 0) << run.err;
    // The command that helps on names the file.
    const std::string made =
        kind == "summary" ? std::regex_replace(run.out, std::regex(BRENU_EXAMPLES "/"), "examples/")
                          : Read(report);
    EXPECT_TRUE(made == Read(kept)) << kept << " differs; the program wrote:\n" << made;
    ++compared;
  }
  EXPECT_GT(compared, 10);
}

TEST_F(Example, SnoopingFindsThePlantedBlundersAndNoOthers) {
  const Outcome run = Execute("adjust --snoop 0.001 --summary \"" BRENU_EXAMPLES "/blunders.txt\"");
  const std::string table = run.out.substr(run.out.find("Taken out"));
  EXPECT_THAT(table, ::testing::MatchesRegex("Taken out by data snooping: 2\n"
                                             "  No\\. .*\n"
                                             "    1  direction  T10   T05 .* 40\\...\n"
                                             "    2  distance   T05   T09 .* 7.\\...\n"));
}

}  // namespace
}  // namespace brenu::testing
