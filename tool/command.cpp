#include "command.h"

#include <cstdio>
#include <memory>
#include <vector>

#include "format.h"
#include "load.h"

namespace brenu::tool {

namespace {

struct CloseJob {
  void operator()(AdjustmentContext* context) const { EndAdjustment(context); }
};

bool Print(const std::string& text) {
  return std::fwrite(text.data(), 1, text.size(), stdout) == text.size() &&
         std::fflush(stdout) == 0;
}

}  // namespace

void Say(const std::string& path, const std::string& sentence) {
  std::fprintf(stderr, "%sbrenu: %s: %s\n", LineStart(), Printable(path).c_str(), sentence.c_str());
}

ExitStatus RunOnFile(const std::string& path, const Work& work) {
  const std::unique_ptr<AdjustmentContext, CloseJob> job(StartAdjustment());
  Progress progress;
  progress.Enter("reading");
  std::vector<std::string> warnings;
  std::optional<Fault> fault = LoadFile(job.get(), path, warnings);
  for (const std::string& warning : warnings) Say(path, "warning: " + warning);
  std::string text;
  if (!fault) fault = work(*job, progress, text);
  progress.Stop();
  if (!Print(text)) {
    fault = {kFileOrUsage,
             "the results cannot be written to the standard output; make room for them"};
  }
  if (!fault) return kDone;
  Say(path, fault->sentence);
  return fault->status;
}

}  // namespace brenu::tool
