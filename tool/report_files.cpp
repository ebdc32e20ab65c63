#include "report_files.h"

#include <set>

#include "io/closure_report.h"
#include "io/result_report.h"
#include "review/text.h"

namespace brenu::tool {

bool AreDistinct(const std::vector<std::string>& paths) {
  std::set<FilePath> seen;
  for (const std::string& path : paths) {
    if (path.empty()) continue;
    std::error_code error;
    const FilePath given = Utf8Path(path.c_str());
    const FilePath whole = std::filesystem::weakly_canonical(given, error);
    if (seen.insert(error ? given : whole).second) continue;
    Say(paths.front(), "the report " + Printable(path) +
                           " would overwrite the data or the other report; give each a file of its "
                           "own");
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
