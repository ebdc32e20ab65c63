#pragma once

#include "io/file_path.h"
#include "io/line_reader.h"
#include "job/adjustment_context.h"

namespace brenu {

// Reads a project file or a station and observation file, told apart by content, into a fresh
// context.
Outcome Load(AdjustmentContext& context, LineReader& file);

}  // namespace brenu
