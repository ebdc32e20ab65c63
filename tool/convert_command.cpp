#include "convert_command.h"

#include <CLI/CLI.hpp>
#include <utility>

#include "fieldbook/book_format.h"
#include "import_command.h"
#include "io/gkf_file.h"
#include "io/project_file.h"
#include "io/station_file.h"
#include "io/whole_file.h"
#include "language_option.h"
#include "report_files.h"
#include "review/field_import.h"
#include "review/load.h"

namespace brenu::tool {

namespace {

enum class Format { kProject, kStation, kGkf };

// A gama-local file is read like a field book, which leaves its means and weights alone.
bool ReadJob(const std::string& path, Language language, ImportedJob& job, ImportedJob& heights,
             Format& format) {
  std::string text;
  Outcome read = ReadWholeFile(Utf8Path(path.c_str()), text);
  if (read.ok && FormatOfBook(text) == BookFormat::kGkf) {
    const ImportOptions options;
    FieldImport import(options);
    std::vector<FileFindings> found;
    const bool isRead = ImportFiles({{path}, {}}, false, import, job, heights, found);
    for (const FileFindings& about : found) SayGrouped(path, about.findings, language);
    format = Format::kGkf;
    return isRead;
  }
  if (read.ok) {
    AdjustmentContext context;
    LineReader reader{std::string_view(text)};
    ReadResult result = Load(context, reader);
    format = result.kind == FileKind::kStation ? Format::kStation : Format::kProject;
    job = {context.param, std::move(context.store)};
    read = std::move(result.outcome);
  }
  Say(About(path, language), read.findings);
  return read.ok;
}

Format Wanted(const ConvertOptions& options, Format in) {
  if (!options.to.empty()) {
    return options.to == "gkf"       ? Format::kGkf
           : options.to == "station" ? Format::kStation
                                     : Format::kProject;
  }
  if (options.out.ends_with(".gkf") || options.out.ends_with(".xml")) return Format::kGkf;
  return in == Format::kProject ? Format::kStation : Format::kProject;
}

bool WriteJob(const ConvertOptions& options, const std::string& path, Format format,
              const ImportedJob& job) {
  Findings left;
  if (format == Format::kGkf) {
    left.push_back(Note(BRENU_CANNOT_BE_KEPT, {"what a job says of grades and limits"}));
  }
  const std::string text = format == Format::kGkf ? GkfText(job.param, job.store)
                           : format == Format::kStation
                               ? StationFileText(job.param, job.store, left)
                               : ProjectText(job.param, job.store);
  SayGrouped(options.in, left, options.language);
  return WriteText(path, text, options.language);
}

}  // namespace

ExitStatus RunConvert(const ConvertOptions& options) {
  if (!AreDistinct(About(options.in, options.language), {options.out})) return kFileOrUsage;
  ImportedJob job;
  ImportedJob heights;
  Format in = Format::kProject;
  if (!ReadJob(options.in, options.language, job, heights, in)) return kFileOrUsage;
  const Format format = Wanted(options, in);
  if (!WriteJob(options, options.out, format, job)) return kFileOrUsage;
  if (heights.store.Points().empty()) return kDone;
  return WriteJob(options, HeightsPath(options.out), format, heights) ? kDone : kFileOrUsage;
}

CLI::App& AddConvert(CLI::App& app, ConvertOptions& options) {
  CLI::App& command = *app.add_subcommand(
      "convert",
      "Converts between project file, station and observation file and gama-local XML (.gkf).  IN "
      "is recognised by content.  OUT becomes gama-local XML when it ends in .gkf or .xml, else a "
      "station and observation file of a project file, and a project file of the others.");
  command.add_option("IN", options.in, "the file to convert")->type_name("")->required();
  command.add_option("OUT", options.out, "the file to write")->type_name("")->required();
  command.add_option("--to", options.to, "the format of OUT: project, station or gkf")
      ->check(CLI::IsMember({"project", "station", "gkf"}))
      ->type_name("FORMAT");
  AddLanguage(command, options.language);
  command.footer(
      "What the other format cannot keep is told of.  Heights that share no lines with the plane "
      "go to a second file with -heights in its name.\n"
      "Exit status: 0 done, 2 a file or the command line is at fault.");
  return command;
}

}  // namespace brenu::tool
