// The station and observation file, a simpler input format.  docs/files.md has the format.
#pragma once

#include "api/adjustment_context.h"
#include "io/read_outcome.h"

namespace brenu {

// Enters what the file holds into the context, as ReadProjectFile does.  A file that begins as a
// project file is refused.
ReadOutcome ReadStationFile(AdjustmentContext& context, const char* path);

}  // namespace brenu
