// The host program: the command line.  Each command has a file of its own.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <string>

#include "adjust_command.h"
#include "closures_command.h"

namespace {

using brenu::tool::ExitStatus;

using brenu::tool::AdjustOptions;

const char* const kStatusHelp =
    "Exit status: 0 done, 1 the network cannot be computed or a closure error is beyond its limit, "
    "2 a file or the command line is at fault.";

const char* const kUnitsHelp =
    "Lengths are metres, angles dd.mmss (30.15205 is 30 degrees 15' 20.5\").  MO is in "
    "arc-seconds, MS in metres, MR a ratio: 5 mm + 5 ppm is MS:0.005, MR:0.000005.\n";

void AddFile(CLI::App& command, std::string& file) {
  command
      .add_option("FILE", file,
                  "project file ([PARAM], [PT], [OBS]) or station and observation file ([PARA], "
                  "[STATION], [OBSER]); told apart by the first of these lines")
      ->type_name("")
      ->required();
}

CLI::App& AddAdjust(CLI::App& app, AdjustOptions& options) {
  CLI::App& adjust = *app.add_subcommand(
      "adjust",
      "Adjusts the network of a file and prints a summary and the adjusted points with their "
      "precision.  By its format: 0 directions, distances, azimuths and height differences; 1 "
      "traverses without orientation; 3 distances only, the points being placed by trilateration "
      "first.");
  AddFile(adjust, options.file);
  adjust
      .add_option("--result", options.resultFile,
                  "write the result report to this file (not for format 1)")
      ->type_name("OUT");
  adjust
      .add_option("--closures", options.closureFile,
                  "write the closure report to this file, if there are closure errors")
      ->type_name("OUT");
  adjust
      .add_option("--snoop", options.alpha,
                  "take gross errors out by data snooping with this level of significance between "
                  "0 and 1, such as 0.001, and list them (format 0)")
      ->type_name("ALPHA");
  adjust.add_flag("--summary", options.summaryOnly, "print no tables of points");
  adjust.callback([&options] {
    if (options.alpha && !(*options.alpha > 0.0 && *options.alpha < 1.0)) {
      throw CLI::ValidationError("--snoop", "ALPHA lies between 0 and 1, such as 0.001");
    }
  });
  adjust.footer(std::string(kUnitsHelp) + kStatusHelp);
  return adjust;
}

void AddClosures(CLI::App& app, std::string& file) {
  CLI::App& closures = *app.add_subcommand(
      "closures",
      "Prints the closure errors of levelling lines and loops and of traverses with their limits; "
      "for format 1 the linear misclosures of the traverses.");
  AddFile(closures, file);
  closures.footer(std::string(kUnitsHelp) + kStatusHelp);
}

ExitStatus Run(int argc, char** argv) {
  CLI::App app("Adjusts survey control networks by least squares.", "brenu");
  app.set_version_flag("--version", "brenu " BRENU_VERSION);
  app.allow_windows_style_options(false);  // a path may begin with a slash there too
  app.require_subcommand(1);
  app.footer(kStatusHelp);
  AdjustOptions options;
  std::string file;
  const CLI::App& adjust = AddAdjust(app, options);
  AddClosures(app, file);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& end) {  // also how help and version come out
    return app.exit(end) == 0 ? brenu::tool::kDone : brenu::tool::kFileOrUsage;
  }
  return adjust.parsed() ? brenu::tool::RunAdjust(options) : brenu::tool::RunClosures(file);
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
