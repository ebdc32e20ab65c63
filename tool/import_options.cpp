// The command line of brenu import.
#include <CLI/CLI.hpp>

#include "import_command.h"
#include "language_option.h"

namespace brenu::tool {

namespace {

void AddSteps(CLI::App& command, ReductionOptions& steps) {
  const std::string group = "Steps that are on";
  const auto off = [&](const char* name, bool& step, const char* help) {
    command
        .add_flag_callback(
            name, [&step] { step = false; }, help)
        ->group(group);
  };
  off("--no-faces", steps.averageFaces,
      "do not average the faces: face 1 alone where there is one");
  off("--no-sets", steps.averageSets, "do not average the sets: the first alone");
  off("--no-joining", steps.joinSetups,
      "do not join setups on one station: the first alone of each");
  off("--no-centring", steps.centre, "take eccentric prisms as the points themselves");
}

void AddCorrections(CLI::App& command, ReductionOptions& steps) {
  const std::string group = "Further steps";
  const auto option = [&](const char* name,
                          const std::function<void(const std::vector<double>&)>& set, int values,
                          const char* type, const char* help) {
    command.add_option_function<std::vector<double>>(name, set, help)
        ->expected(values)
        ->delimiter(',')
        ->type_name(type)
        ->group(group);
  };
  command
      .add_flag("--trig-heights", steps.trigonometricHeights,
                "trigonometric height differences s cos z + ih - th, too; the lengths of their "
                "lines are (standard error / 1 mm)^2 km, so that they get their weight among "
                "levelled ones")
      ->group(group);
  option(
      "--refraction", [&steps](const auto& v) { steps.refraction = v[0]; }, 1, "K",
      "curvature of the Earth and refraction with this coefficient, usually 0.13");
  option(
      "--constant", [&steps](const auto& v) { steps.constant = v[0]; }, 1, "MM",
      "additive constant of distances");
  option(
      "--scale", [&steps](const auto& v) { steps.scale = v[0]; }, 1, "PPM",
      "scale correction of distances, mm/km");
  option(
      "--atmosphere",
      [&steps](const auto& v) {
        if (!steps.air) steps.air.emplace();
        steps.air->air = {v[0], v[1], v[2]};
        if (v.size() > 3) steps.air->wavelength = v[3];
      },
      4, "HPA,C,G,UM",
      "the air along the lines: pressure, temperature, water vapour in g/m3, wavelength in "
      "micrometres; --reference-air is what the instrument assumed");
  option(
      "--reference-air",
      [&steps](const auto& v) {
        if (!steps.air) steps.air.emplace();
        steps.air->assumed = {v[0], v[1], v[2]};
      },
      3, "HPA,C,G", "the air that the instrument assumed (1013.25,15,0)");
  option(
      "--ellipsoid", [&steps](const auto& v) { steps.ellipsoid = {v[0]}; }, 1, "H",
      "distances from this mean height above the ellipsoid down to it, metres");
  option(
      "--projection-scale",
      [&steps](const auto& v) {
        if (!steps.plane) steps.plane.emplace();
        steps.plane->scale = v[0];
      },
      1, "M", "distances into the plane by this scale factor, such as 0.9996");
  option(
      "--projection-y",
      [&steps](const auto& v) {
        if (!steps.plane) steps.plane.emplace();
        steps.plane->easting = v[0];
      },
      1, "Y", "distances into the Gauss projection at this distance from the central meridian");
}

}  // namespace

CLI::App& AddImport(CLI::App& app, FieldImportOptions& options) {
  CLI::App& command = *app.add_subcommand(
      "import",
      "Reads what instruments write (GSI-8, GSI-16, SDR, M5, JobXML, gama-local XML; recognised by "
      "content), averages faces and sets and writes a project file.  Every line that is not used "
      "is told of on the standard error.");
  command.add_option("FILE", options.files.books, "field books of one survey")
      ->type_name("")
      ->required();
  command
      .add_option("-o,--output", options.project,
                  "write the project to this file, and heights beside a plane survey to one "
                  "with -heights in its name; without it the project goes to the standard "
                  "output")
      ->type_name("PROJECT");
  command
      .add_option("--control", options.files.control,
                  "known points: lines name,X,Y,H or name,type,X,Y,H, a project file, or a "
                  "field book with entered coordinates")
      ->type_name("POINTS");
  command
      .add_option("--log", options.log,
                  "write what each line became, and each step of the reduction with raw value, "
                  "correction and result, to this file")
      ->type_name("LOG");
  command
      .add_option("--station-codes", options.import.reading.stationCodes,
                  "codes (word 41 of GSI) that begin a setup (2,21)")
      ->delimiter(',')
      ->allow_extra_args(false)
      ->type_name("CODES");
  AddLanguage(command, options.language);
  AddSteps(command, options.import.reduction);
  AddCorrections(command, options.import.reduction);
  command.footer(
      "Exit status: 0 done, also when lines are left out; 2 a file or the command line is at "
      "fault.");
  return command;
}

}  // namespace brenu::tool
