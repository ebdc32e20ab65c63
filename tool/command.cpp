#include "command.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string_view>

#include "review/data_check.h"
#include "review/load.h"
#include "review/sentence.h"
#include "review/text.h"

namespace brenu::tool {

namespace {

// Reading and the checks of the data.
Findings Prepare(AdjustmentContext& context, const FileOptions& options, Progress& progress) {
  progress.Enter({"reading", "读取"});
  LineReader file(Utf8Path(options.file.c_str()));
  Outcome read = Load(context, file).outcome;
  if (!read.ok) return std::move(read.findings);
  progress.Enter({"checking the data", "检查数据"});
  for (Finding& finding : CheckData(context)) read.findings.push_back(std::move(finding));
  return std::move(read.findings);
}

constexpr Words kSeverities[] = {{"note: ", "注意："}, {"warning: ", "警告："}, {"", ""}};

}  // namespace

Language LanguageOfEnvironment() {
  for (const char* const name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* const value = std::getenv(name);
    if (value == nullptr || *value == '\0') continue;
    return std::string_view(value).starts_with("zh") ? Language::kChinese : Language::kEnglish;
  }
  return Language::kEnglish;
}

void SayText(const FileOptions& options, Severity severity, const std::string& text) {
  std::fprintf(stderr, "%sbrenu: %s: %s%s\n", LineStart(), Printable(options.file).c_str(),
               kSeverities[static_cast<int>(severity)].In(options.language), text.c_str());
}

void SayWords(const FileOptions& options, const Words& sentence) {
  SayText(options, Severity::kError, sentence.In(options.language));
}

// Of many of a kind the first ones tell what is the matter.
void Say(const FileOptions& options, const Findings& findings) {
  const Language language = options.language;
  constexpr int kMostOfAKind = 10;
  std::map<Code, int> said;
  for (const Finding& finding : findings) {
    if (++said[finding.code] > kMostOfAKind) continue;
    SayText(options, finding.severity, SentenceOf(finding, language));
  }
  for (const auto& [code, count] : said) {
    if (count <= kMostOfAKind) continue;
    const auto example = std::find_if(findings.begin(), findings.end(),
                                      [code](const Finding& f) { return f.code == code; });
    SayText(options, Severity::kError,
            Words{"and ", "另有 "}.In(language) + std::to_string(count - kMostOfAKind) +
                Words{" more like this: ", " 个同类提示，例如："}.In(language) +
                SentenceOf(*example, language));
  }
}

bool Print(const FileOptions& options, const TextSource& text) {
  bool isPrinted = true;
  text([&](std::string_view piece) {
    isPrinted = isPrinted && std::fwrite(piece.data(), 1, piece.size(), stdout) == piece.size();
  });
  if (isPrinted && std::fflush(stdout) == 0) return true;
  SayWords(options, {"the results cannot be written to the standard output; make room for them",
                     "结果无法写到标准输出；请腾出空间"});
  return false;
}

ExitStatus RunOnFile(const FileOptions& options, const Work& work) {
  AdjustmentContext context;
  Progress progress(options.language);
  const Findings found = Prepare(context, options, progress);
  Say(options, found);
  if (Has(found, options.strict ? Severity::kWarning : Severity::kError)) {
    progress.Stop();
    return kFileOrUsage;
  }
  std::string text;
  const Ending ending = work(context, found, progress, text);
  progress.Stop();
  const bool isPrinted = Print(options, [&](const TextSink& sink) { sink(text); });
  Say(options, ending.findings);
  return isPrinted ? ending.status : kFileOrUsage;
}

}  // namespace brenu::tool
