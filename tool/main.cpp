// The host program: the command line.  Each command has a file of its own.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "adjust_command.h"
#include "arguments.h"
#include "check_command.h"
#include "closures_command.h"
#include "convert_command.h"
#include "core/parallel.h"
#include "import_command.h"
#include "language_option.h"
#include "reduce_command.h"
#include "review/text.h"

namespace {

using brenu::tool::AdjustOptions;
using brenu::tool::CheckOptions;
using brenu::tool::ClosureOptions;
using brenu::tool::ExitStatus;

const char* const kStatusHelp =
    "Exit status: 0 done, 1 the network or a part of it cannot be computed or a closure error is "
    "beyond its limit, 2 a file or the command line is at fault.";

const char* const kUnitsHelp =
    "Lengths are metres, angles dd.mmss (30.15205 is 30 degrees 15' 20.5\").  MO is in "
    "arc-seconds, MS in metres, MR a ratio: 5 mm + 5 ppm is MS:0.005, MR:0.000005.\n";

void AddFile(CLI::App& command, brenu::tool::FileOptions& options) {
  command
      .add_option("FILE", options.file,
                  "project file ([PARAM], [PT], [OBS]) or station and observation file ([PARA], "
                  "[STATION], [OBSER]); told apart by the first of these lines")
      ->type_name("")
      ->required();
  command.add_flag("--strict", options.strict,
                   "treat a doubt about a value of the file as an error");
  brenu::tool::AddLanguage(command, options.language);
}

void AddOutputs(CLI::App& command, brenu::tool::OutputOptions& outputs) {
  const auto add = [&](const char* name, std::string& path, const char* help) {
    command.add_option(name, path, help)->type_name("OUT");
  };
  add("--html", outputs.html, "write the report page to this file");
  add("--json", outputs.json,
      "write the report for programs to this file, or with - to the standard output in place of "
      "the tables");
  add("--report", outputs.text, "write the report as text (UTF-8) to this file");
  add("--svg", outputs.svg, "write the sketch as a picture to this file");
  add("--dxf", outputs.dxf, "write the sketch as a drawing to this file");
  command.add_option("--csv", outputs.csvFolder, "write the tables of the report to this folder")
      ->type_name("DIR");
}

void AddRules(CLI::App& command, brenu::Rules& rules) {
  command.add_flag_callback(
      "--classic", [&rules] { rules.set = brenu::RuleSet::kClassic; },
      "compute by the classic rules, those of the library's 61 functions, instead of the rules of "
      "textbooks");
}

void AddThreads(CLI::App& command) {
  command
      .add_option_function<std::size_t>(
          "--threads", [](const std::size_t& count) { brenu::SetThreadCount(count); },
          "how many threads compute (all that the machine has); results do not depend on it")
      ->check(CLI::PositiveNumber)
      ->type_name("N");
}

CLI::App& AddAdjust(CLI::App& app, AdjustOptions& options) {
  CLI::App& adjust = *app.add_subcommand(
      "adjust",
      "Adjusts the network of a file and prints a summary and the adjusted points with their "
      "precision.  By its format: 0 directions, distances, azimuths and height differences; 1 "
      "traverses without orientation; 3 distances only.  Points that the observations do not "
      "determine are left out by name.");
  AddFile(adjust, options);
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
  adjust
      .add_option(
          "--between", options.pairs,
          "report the relative ellipse of these two points, too; observed pairs have theirs "
          "anyway; may be given several times")
      ->allow_extra_args(false)
      ->type_name("A B");
  adjust.add_flag("--summary", options.summaryOnly, "print no tables of points");
  AddOutputs(adjust, options.outputs);
  adjust.add_flag("--no-verdict", options.noVerdict,
                  "end with status 0 where the network is adjusted, passed or not");
  AddRules(adjust, options.rules);
  AddThreads(adjust);
  adjust
      .add_option_function<double>(
          "--level-sigma",
          [&options](const double& millimetres) {
            options.rules.levelSigma = millimetres / 1000.0;
          },
          "a-priori standard error of 1 km of levelling in mm (1.0)")
      ->check(CLI::PositiveNumber)
      ->type_name("MM");
  adjust.callback([&options] {
    if (options.alpha && !(*options.alpha > 0.0 && *options.alpha < 1.0)) {
      throw CLI::ValidationError("--snoop", "ALPHA lies between 0 and 1, such as 0.001");
    }
  });
  adjust.footer(std::string(kUnitsHelp) + kStatusHelp);
  return adjust;
}

void AddClosures(CLI::App& app, ClosureOptions& options) {
  CLI::App& closures = *app.add_subcommand(
      "closures",
      "Prints the closure errors of levelling lines and loops and of traverses with their limits; "
      "for format 1 the linear misclosures of the traverses.");
  AddFile(closures, options);
  AddRules(closures, options.rules);
  AddThreads(closures);
  closures.add_flag("--failed", options.failedOnly, "list only what is beyond its limit");
  closures.footer(std::string(kUnitsHelp) + kStatusHelp);
}

CLI::App& AddCheck(CLI::App& app, CheckOptions& options) {
  CLI::App& check = *app.add_subcommand(
      "check",
      "Says what can be said before an adjustment: doubts about the file, the type of the network, "
      "what is not determined, differences of what was observed in both ways, observed minus "
      "computed from approximate values by size, closures beyond their limits.");
  AddFile(check, options);
  check.footer(std::string(kUnitsHelp) + kStatusHelp);
  return check;
}

// A word in the place of the command that is none; says so.
bool HasWrongCommand(const CLI::App& app, const std::vector<std::string>& arguments) {
  if (arguments.empty() || arguments.front().starts_with('-')) return false;
  std::string known;
  for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
    if (command->get_name() == arguments.front()) return false;
    known += (known.empty() ? "" : ", ") + command->get_name();
  }
  std::fprintf(stderr, "brenu: there is no command %s; the commands are %s\n",
               brenu::Printable(arguments.front()).c_str(), known.c_str());
  return true;
}

ExitStatus Run(std::vector<std::string> arguments) {
  CLI::App app("Adjusts survey control networks by least squares.", "brenu");
  app.set_version_flag("--version", "brenu " BRENU_VERSION);
  app.allow_windows_style_options(false);  // a path may begin with a slash there too
  app.require_subcommand(1);
  app.footer(kStatusHelp);
  AdjustOptions adjustOptions;
  ClosureOptions closureOptions;
  CheckOptions checkOptions;
  const CLI::App& adjust = AddAdjust(app, adjustOptions);
  const CLI::App& check = AddCheck(app, checkOptions);
  AddClosures(app, closureOptions);
  brenu::tool::FieldImportOptions importOptions;
  brenu::tool::ReduceOptions reduceOptions;
  const CLI::App& reducing = brenu::tool::AddReduce(app, reduceOptions);
  brenu::tool::ConvertOptions convertOptions;
  const CLI::App& converting = brenu::tool::AddConvert(app, convertOptions);
  const CLI::App& importing = brenu::tool::AddImport(app, importOptions);
  if (HasWrongCommand(app, arguments)) return brenu::tool::kFileOrUsage;
  try {
    std::reverse(arguments.begin(), arguments.end());  // as the parser takes them
    app.parse(arguments);
  } catch (const CLI::ParseError& end) {  // also how help and version come out
    return app.exit(end) == 0 ? brenu::tool::kDone : brenu::tool::kFileOrUsage;
  }
  if (check.parsed()) return brenu::tool::RunCheck(checkOptions);
  if (reducing.parsed()) return brenu::tool::RunReduce(reduceOptions);
  if (converting.parsed()) return brenu::tool::RunConvert(convertOptions);
  if (importing.parsed()) return brenu::tool::RunImport(importOptions);
  return adjust.parsed() ? brenu::tool::RunAdjust(adjustOptions)
                         : brenu::tool::RunClosures(closureOptions);
}

}  // namespace

int BRENU_MAIN(int argc, brenu::tool::SystemChar** argv) {
  try {
    return Run(brenu::tool::Arguments(argc, argv));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "brenu: there is not enough memory, or: %s\n", error.what());
    return brenu::tool::kComputationFailed;
  }
}
