// Field books from files into jobs.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "fieldbook/import.h"

namespace brenu {

struct FieldFiles {
  std::vector<std::string> books;  // paths, UTF-8 on Windows
  std::string control;             // path of known points; empty for none
};

// What there is to say about a file; about the survey as a whole where the name is empty.
struct FileFindings {
  std::string file;
  Findings findings;
};

// Known points from a project file or a station and observation file, else from what FieldImport
// knows.
Outcome AddControlText(std::string_view text, FieldImport& import);

// Reads control and field books and fills the jobs, as FieldImport does.  False when a file cannot
// be read or is no field book: the last findings say so then.
bool ImportFiles(const FieldFiles& files, bool withLog, FieldImport& import, ImportedJob& job,
                 ImportedJob& heights, std::vector<FileFindings>& found);

}  // namespace brenu
