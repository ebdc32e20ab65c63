#pragma once

#include "io/file_path.h"
#include "job/adjustment_context.h"

namespace brenu {

// Writes the results of the last computations as a text report, labels in code page 936.  A row
// whose result cannot be had ends the report before it.  Fails then, and when not all could be
// written.
Outcome WriteResultReport(const AdjustmentContext& context, const FilePath& path);

}  // namespace brenu
