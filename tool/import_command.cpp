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

void SayGrouped(const std::string& file, const Findings& findings, Language language) {
  for (const Sentence& sentence : GroupedSentences(findings, language)) {
    SayText(About(file, language), sentence.severity, sentence.text);
  }
}

bool WriteText(const std::string& path, const std::string& text, Language language) {
  if (ReplaceFile(Utf8Path(path.c_str()), text) == Replaced::kDone) return true;
  Say(About(path, language), {Error(BRENU_FILE_NOT_WRITTEN, {path})});
  return false;
}

namespace {

std::string JobSummary(const std::string& path, const ImportedJob& job, Language language) {
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
  std::string text = Printable(path);
  std::string separator = ": ";
  const auto append = [&](std::size_t count, const Words& one, const char* several) {
    if (count == 0) return;
    text += separator + Counted(count, language, one, several);
    separator = ", ";
  };
  append(job.store.Points().size(), {"point", "个点"}, "points");
  append(directions, {"direction", "个方向"}, "directions");
  append(distances, {"distance", "条边长"}, "distances");
  append(heights, {"height difference", "个高差"}, "height differences");
  return text + '\n';
}

bool WriteJobs(const FieldImportOptions& options, const FieldImport& import, const ImportedJob& job,
               const ImportedJob& heights) {
  const std::string project = ProjectText(job.param, job.store);
  const bool hasHeights = !heights.store.Points().empty();
  if (options.project.empty()) {
    std::fputs(project.c_str(), stdout);
    if (hasHeights) {
      const Words needed = {"the heights need -o to be written", "高差需用 -o 指定输出文件"};
      SayText(About(options.files.books.front(), options.language), Severity::kWarning,
              needed.In(options.language));
    }
    return true;
  }
  std::string summary;
  for (const ImportedBook& book : import.Books()) {
    summary += BookSummary(book, import.Names(), options.language);
  }
  if (!WriteText(options.project, project, options.language)) return false;
  summary += JobSummary(options.project, job, options.language);
  if (hasHeights) {
    const std::string path = HeightsPath(options.project);
    const std::string text = ProjectText(heights.param, heights.store);
    if (!WriteText(path, text, options.language)) return false;
    summary += JobSummary(path, heights, options.language);
  }
  std::fputs(summary.c_str(), stdout);
  return true;
}

}  // namespace

ExitStatus RunImport(const FieldImportOptions& options) {
  std::vector<std::string> paths(options.files.books.begin() + 1, options.files.books.end());
  paths.insert(paths.end(), {options.project, options.log});
  if (!options.project.empty()) paths.push_back(HeightsPath(options.project));
  const std::string& first = options.files.books.front();
  if (!AreDistinct(About(first, options.language), paths)) return kFileOrUsage;
  Progress progress(options.language);
  progress.Enter({"reading field books", "读取观测手簿"});
  FieldImport import(options.import);
  ImportedJob job;
  ImportedJob heights;
  std::vector<FileFindings> found;
  const bool isDone = ImportFiles(options.files, !options.log.empty(), import, job, heights, found);
  progress.Stop();
  for (const FileFindings& about : found) {
    SayGrouped(about.file.empty() ? first : about.file, about.findings, options.language);
  }
  if (!isDone) return kFileOrUsage;
  if (!options.log.empty()) {
    const std::string log = ImportLog(import, options.language);
    if (!WriteText(options.log, log, options.language)) return kFileOrUsage;
  }
  return WriteJobs(options, import, job, heights) ? kDone : kFileOrUsage;
}

}  // namespace brenu::tool
