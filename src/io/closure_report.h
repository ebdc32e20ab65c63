#pragma once

#include <vector>

#include "core/records.h"
#include "io/replace_file.h"

namespace brenu {

// The closure-error report: six lines a record, labels in code page 936, all fields of every
// record whatever its kind.
Replaced WriteClosureReport(const std::vector<CloseError>& records, const FilePath& path);

}  // namespace brenu
