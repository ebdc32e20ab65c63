#include "import_command.h"

#include <cstdio>

#include "io/project_file.h"
#include "report_files.h"
#include "review/import_text.h"
#include "review/text.h"

namespace brenu::tool {

std::string HeightsPath(const std::string& path) {
  const std::size_t name = path.find_last_of("/\\");
  const std::size_t dot = path.rfind('.');
  const bool hasEnding = dot != path.npos && dot > 0 && (name == path.npos || dot > name + 1);
  const std::size_t end = hasEnding ? dot : path.size();
  return path.substr(0, end) + "-heights" + path.substr(end);
}

void SayGrouped(const std::string& file, const Findings& findings) {
  const FileOptions about = About(file);
  for (const Sentence& sentence : GroupedSentences(findings, about.language)) {
    SayText(about, sentence.severity, sentence.text);
  }
}

bool WriteText(const std::string& path, const std::string& text) {
  if (ReplaceFile(Utf8Path(path.c_str()), text) == Replaced::kDone) return true;
  Say(About(path), {Error(BRENU_FILE_NOT_WRITTEN, {path})});
  return false;
}

namespace {

std::string JobSummary(const std::string& path, const ImportedJob& job) {
  std::size_t directions = 0;
  std::size_t distances = 0;
  std::size_t heights = 0;
  for (const auto& [station, targets] : job.store.Observations()) {
    for (const auto& [target, obs] : targets) {
      directions += HasDirection(obs) ? 1 : 0;
      heights += IsLevelled(obs) ? 1 : 0;
      distances += HasDistance(obs) && !IsLevelled(obs) ? 1 : 0;
    }
  }
  const auto count = [](std::size_t number, const char* what) {
    return number == 0 ? "" : ", " + std::to_string(number) + ' ' + what;
  };
  return Printable(path) + ": " + std::to_string(job.store.Points().size()) + " points" +
         count(directions, "directions") + count(distances, "distances") +
         count(heights, "height differences") + '\n';
}

bool WriteJobs(const FieldImportOptions& options, const FieldImport& import, const ImportedJob& job,
               const ImportedJob& heights) {
  const std::string project = ProjectText(job.param, job.store);
  const bool hasHeights = !heights.store.Points().empty();
  if (options.project.empty()) {
    std::fputs(project.c_str(), stdout);
    if (hasHeights) {
      SayText(About(options.files.books.front()), Severity::kWarning,
              "the heights need -o to be written");
    }
    return true;
  }
  std::string summary;
  for (const ImportedBook& book : import.Books()) summary += BookSummary(book, import.Names());
  if (!WriteText(options.project, project)) return false;
  summary += JobSummary(options.project, job);
  if (hasHeights) {
    const std::string path = HeightsPath(options.project);
    if (!WriteText(path, ProjectText(heights.param, heights.store))) return false;
    summary += JobSummary(path, heights);
  }
  std::fputs(summary.c_str(), stdout);
  return true;
}

}  // namespace

ExitStatus RunImport(const FieldImportOptions& options) {
  std::vector<std::string> paths(options.files.books.begin() + 1, options.files.books.end());
  paths.insert(paths.end(), {options.project, options.log});
  if (!options.project.empty()) paths.push_back(HeightsPath(options.project));
  if (!AreDistinct(About(options.files.books.front()), paths)) return kFileOrUsage;
  Progress progress(LanguageOfEnvironment());
  progress.Enter({"reading field books", "读取观测手簿"});
  FieldImport import(options.import);
  ImportedJob job;
  ImportedJob heights;
  std::vector<FileFindings> found;
  const bool isDone = ImportFiles(options.files, !options.log.empty(), import, job, heights, found);
  progress.Stop();
  for (const FileFindings& about : found) {
    const std::string& file = about.file.empty() ? options.files.books.front() : about.file;
    SayGrouped(file, about.findings);
  }
  if (!isDone) return kFileOrUsage;
  if (!options.log.empty() && !WriteText(options.log, ImportLog(import))) return kFileOrUsage;
  return WriteJobs(options, import, job, heights) ? kDone : kFileOrUsage;
}

}  // namespace brenu::tool
