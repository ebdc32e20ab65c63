// The project file: parameters, points and observations as text.  docs/files.md has the format.
#pragma once

#include "api/adjustment_context.h"
#include "io/read_outcome.h"

namespace brenu {

// Enters what the file holds into the context; points get the indices 0, 1, 2... of their lines.
// What stands before a line at fault stays entered.
ReadOutcome ReadProjectFile(AdjustmentContext& context, const char* path);

// False when the file cannot be opened.
bool WriteProjectFile(const AdjustmentContext& context, const char* path);

}  // namespace brenu
