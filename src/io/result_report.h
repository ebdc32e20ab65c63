#pragma once

#include "api/adjustment_context.h"

namespace brenu {

// Writes the results of the last computations as a text report, labels in code page 936.  A row
// whose result cannot be had ends the report before it.  False then, and when the file cannot be
// opened.
bool WriteResultReport(const AdjustmentContext& context, const char* path);

}  // namespace brenu
