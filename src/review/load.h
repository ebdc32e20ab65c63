#pragma once

#include "io/read_file.h"
#include "job/adjustment_context.h"

namespace brenu {

// Reads a project file or a station and observation file, told apart by content, into a fresh
// context.
ReadResult Load(AdjustmentContext& context, LineReader& file);

}  // namespace brenu
