// The host program: the command line.  Each command has a file of its own.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <string>

#include "adjust_command.h"

namespace {

using brenu::tool::ExitStatus;

const char* const kStatusHelp =
    "Exit status: 0 done, 1 the network cannot be computed, 2 the file or the command line is at "
    "fault.";

ExitStatus Run(int argc, char** argv) {
  CLI::App app("Adjusts survey control networks by least squares.", "brenu");
  app.set_version_flag("--version", "brenu " BRENU_VERSION);
  app.allow_windows_style_options(false);  // a path may begin with a slash there too
  app.require_subcommand(1);
  app.footer(kStatusHelp);

  std::string file;
  CLI::App* adjust = app.add_subcommand(
      "adjust",
      "Adjusts the network of a file and prints a summary and the adjusted points with their "
      "precision.");
  adjust
      ->add_option("FILE", file,
                   "project file ([PARAM], [PT], [OBS]) or station and observation file ([PARA], "
                   "[STATION], [OBSER]); told apart by the first of these lines")
      ->required();
  adjust->footer(
      std::string("Lengths are metres, angles dd.mmss (30.15205 is 30 degrees 15' 20.5\").  MO is "
                  "in arc-seconds, MS in metres, MR a ratio: 5 mm + 5 ppm is MS:0.005, "
                  "MR:0.000005.\n") +
      kStatusHelp);

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& end) {  // also how help and version come out
    return app.exit(end) == 0 ? brenu::tool::kDone : brenu::tool::kFileOrUsage;
  }
  return brenu::tool::RunAdjust(file);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Run(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "brenu: there is not enough memory, or: %s\n", error.what());
    return brenu::tool::kComputationFailed;
  }
}
