#include "review/field_import.h"

#include <utility>

#include "io/whole_file.h"
#include "review/load.h"

namespace brenu {

namespace {

Outcome AddControlFile(const std::string& path, FieldImport& import) {
  std::string text;
  Outcome outcome = ReadWholeFile(Utf8Path(path.c_str()), text);
  return outcome.ok ? AddControlText(text, import) : outcome;
}

}  // namespace

Outcome AddControlText(std::string_view text, FieldImport& import) {
  const bool hasSections = text.find("[PT]") != text.npos || text.find("[STATION]") != text.npos;
  if (!hasSections) return import.AddControl(text);
  AdjustmentContext context;
  LineReader reader(text);
  Outcome outcome = Load(context, reader).outcome;
  if (outcome.ok) import.AddControl(context.store);
  return outcome;
}

bool ImportFiles(const FieldFiles& files, bool withLog, FieldImport& import, ImportedJob& job,
                 ImportedJob& heights, std::vector<FileFindings>& found) {
  if (!files.control.empty()) {
    Outcome read = AddControlFile(files.control, import);
    found.push_back({files.control, std::move(read.findings)});
    if (!read.ok) return false;
  }
  for (const std::string& path : files.books) {
    std::string text;
    Outcome read = ReadWholeFile(Utf8Path(path.c_str()), text);
    if (read.ok) read = import.AddBook(path, text, withLog);
    if (!read.ok) {
      found.push_back({path, std::move(read.findings)});
      return false;
    }
    found.push_back({path, import.Books().back().book.findings});
  }
  FileFindings whole;
  import.Finish(job, heights, whole.findings);
  found.push_back(std::move(whole));
  return true;
}

}  // namespace brenu
