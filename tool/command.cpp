#include "command.h"

#include <algorithm>
#include <cstdio>
#include <map>

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

// Of many of a kind the first ones tell what is the matter.
void Say(const std::string& path, const Findings& findings) {
  constexpr int kMostOfAKind = 10;
  std::map<Code, int> said;
  for (const Finding& finding : findings) {
    if (++said[finding.code] > kMostOfAKind) continue;
    const char* const kind = finding.severity == Severity::kWarning ? "warning: "
                             : finding.severity == Severity::kNote  ? "note: "
                                                                    : "";
    Say(path, kind + SentenceOf(finding));
  }
  for (const auto& [code, count] : said) {
    if (count <= kMostOfAKind) continue;
    const auto example = std::find_if(findings.begin(), findings.end(),
                                      [code](const Finding& f) { return f.code == code; });
    Say(path,
        "and " + std::to_string(count - kMostOfAKind) + " more like this: " + SentenceOf(*example));
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
  const Ending ending = work(context, found, progress, text);
  progress.Stop();
  const bool printed = Print(text);
  Say(options.file, ending.findings);
  if (printed) return ending.status;
  Say(options.file, "the results cannot be written to the standard output; make room for them");
  return kFileOrUsage;
}

}  // namespace brenu::tool
