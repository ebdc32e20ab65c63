#pragma once

#include <optional>
#include <string>
#include <vector>

#include "brenu/brenu.h"
#include "fault.h"

namespace brenu::tool {

// Reads a project file or a station and observation file, told apart by their section headers, into
// a fresh context.  Adds to `warnings` what was read but looks like a slip, a sentence each.
std::optional<Fault> LoadFile(AdjustmentContext* context, const std::string& path,
                              std::vector<std::string>& warnings);

}  // namespace brenu::tool
