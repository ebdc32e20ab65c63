#pragma once

#include <string>
#include <vector>

#include "command.h"

namespace brenu::tool {

// Whether no two of the paths lead to the same file, which one would overwrite; says so otherwise.
// Empty paths are left out.
bool AreDistinct(const std::vector<std::string>& paths);

// The reports of the last computation.
Ending WriteResultFile(const AdjustmentContext& context, const std::string& path);
Ending WriteClosureFile(const AdjustmentContext& context, const std::string& path);

}  // namespace brenu::tool
