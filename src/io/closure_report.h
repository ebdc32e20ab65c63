#pragma once

#include <vector>

#include "core/records.h"
#include "io/file_path.h"

namespace brenu {

// The closure-error report: six lines a record, labels in code page 936, all fields of every
// record whatever its kind.  False for an empty list (no file is then made) and when the file
// cannot be opened.
bool WriteClosureReport(const std::vector<CloseError>& records, const FilePath& path);

}  // namespace brenu
