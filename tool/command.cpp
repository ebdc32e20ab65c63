#include "command.h"

#include <cstdio>

#include "review/data_check.h"
#include "review/load.h"
#include "review/sentence.h"
#include "review/text.h"

namespace brenu::tool {

namespace {

bool Print(const std::string& text) {
  return std::fwrite(text.data(), 1, text.size(), stdout) == text.size() &&
         std::fflush(stdout) == 0;
}

// Reading and the checks of the data.
Findings Prepare(AdjustmentContext& context, const FileOptions& options, Progress& progress) {
  progress.Enter("reading");
  LineReader file(Utf8Path(options.file.c_str()));
  Outcome read = Load(context, file).outcome;
  if (!read.ok) return std::move(read.findings);
  progress.Enter("checking the data");
  for (Finding& finding : CheckData(context)) read.findings.push_back(std::move(finding));
  return std::move(read.findings);
}

}  // namespace

void Say(const std::string& path, const std::string& sentence) {
  std::fprintf(stderr, "%sbrenu: %s: %s\n", LineStart(), Printable(path).c_str(), sentence.c_str());
}

void Say(const std::string& path, const Findings& findings) {
  for (const Finding& finding : findings) {
    const char* const kind = finding.severity == Severity::kWarning ? "warning: "
                             : finding.severity == Severity::kNote  ? "note: "
                                                                    : "";
    Say(path, kind + SentenceOf(finding));
  }
}

ExitStatus RunOnFile(const FileOptions& options, const Work& work) {
  AdjustmentContext context;
  Progress progress;
  const Findings found = Prepare(context, options, progress);
  Say(options.file, found);
  if (Has(found, options.strict ? Severity::kWarning : Severity::kError)) {
    progress.Stop();
    return kFileOrUsage;
  }
  std::string text;
  const Ending ending = work(context, progress, text);
  progress.Stop();
  const bool printed = Print(text);
  Say(options.file, ending.findings);
  if (printed) return ending.status;
  Say(options.file, "the results cannot be written to the standard output; make room for them");
  return kFileOrUsage;
}

}  // namespace brenu::tool
