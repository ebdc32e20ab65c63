#pragma once

#include <string>
#include <vector>

#include "command.h"

namespace brenu::tool {

// Whether no report would overwrite the data or another report; says so otherwise.  Empty paths are
// left out.
bool AreDistinct(const FileOptions& options, const std::vector<std::string>& reports);

// The reports of the last computation.
Ending WriteResultFile(const AdjustmentContext& context, const std::string& path);
Ending WriteClosureFile(const AdjustmentContext& context, const std::string& path);

}  // namespace brenu::tool
