#include "report_files.h"

#include <filesystem>
#include <set>

#include "format.h"
#include "io/result_tables.h"

namespace brenu::tool {

namespace {

Fault CannotWrite(const char* report, const std::string& path) {
  return {kFileOrUsage, std::string("the ") + report + " cannot be written to " + Printable(path) +
                            "; name a file that you may write, in a folder that exists"};
}

}  // namespace

std::optional<std::string> FindSharedFile(const std::vector<std::string>& paths) {
  std::set<std::filesystem::path> seen;
  for (const std::string& path : paths) {
    if (path.empty()) continue;
    std::error_code error;
    const auto whole = std::filesystem::weakly_canonical(path, error);
    if (seen.insert(error ? std::filesystem::path(path) : whole).second) continue;
    return "the report " + Printable(path) + " would overwrite the data or the other report; " +
           "give each a file of its own";
  }
  return std::nullopt;
}

std::optional<Fault> WriteResultFile(AdjustmentContext& context, const std::string& path) {
  if (ExportResultFile(&context, path.c_str())) return std::nullopt;
  if (!MakeResultTables(context).failedIn) return CannotWrite("result report", path);
  return Fault{kComputationFailed,
               "the result report in " + Printable(path) +
                   " stops short at an observation or a point that took no part in the "
                   "computation; take out what this format does not use"};
}

std::optional<Fault> WriteClosureFile(AdjustmentContext& context, const std::string& path) {
  if (ExportCloseErrorFile(&context, path.c_str())) return std::nullopt;
  return CannotWrite("closure report", path);
}

}  // namespace brenu::tool
