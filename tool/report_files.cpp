#include "report_files.h"

#include <set>

#include "io/closure_report.h"
#include "io/result_report.h"

namespace brenu::tool {

bool AreDistinct(const FileOptions& options, const std::vector<std::string>& reports) {
  const auto wholePath = [](const std::string& path) {
    std::error_code error;
    FilePath given = Utf8Path(path.c_str());
    FilePath whole = std::filesystem::weakly_canonical(given, error);
    return error ? given : whole;
  };
  std::set<FilePath> seen = {wholePath(options.file)};
  for (const std::string& path : reports) {
    if (path.empty() || seen.insert(wholePath(path)).second) continue;
    Say(options, {Error(BRENU_FILE_WOULD_OVERWRITE, {path})});
    return false;
  }
  return true;
}

Ending WriteResultFile(const AdjustmentContext& context, const std::string& path) {
  Outcome written = WriteResultReport(context, Utf8Path(path.c_str()));
  if (written.ok) return {};
  Finding& cause = written.findings.front();
  cause.names = {path};
  const bool stopsShort = cause.code == BRENU_REPORT_STOPS_SHORT;
  return Ending::Of(std::move(written), stopsShort ? kComputationFailed : kFileOrUsage);
}

Ending WriteClosureFile(const AdjustmentContext& context, const std::string& path) {
  const Replaced written = WriteClosureReport(context.closeErrors, Utf8Path(path.c_str()));
  if (written == Replaced::kDone) return {};
  return {kFileOrUsage, {Error(BRENU_FILE_NOT_WRITTEN, {path})}};
}

}  // namespace brenu::tool
