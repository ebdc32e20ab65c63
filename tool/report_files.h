#pragma once

#include <optional>
#include <string>
#include <vector>

#include "brenu/brenu.h"
#include "fault.h"

namespace brenu::tool {

// A sentence when two of the paths lead to the same file, which one would overwrite; empty paths
// are left out.
std::optional<std::string> FindSharedFile(const std::vector<std::string>& paths);

// The reports of the last computation.
std::optional<Fault> WriteResultFile(AdjustmentContext& context, const std::string& path);
std::optional<Fault> WriteClosureFile(AdjustmentContext& context, const std::string& path);

}  // namespace brenu::tool
