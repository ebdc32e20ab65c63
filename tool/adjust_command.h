#pragma once

#include <string>

#include "fault.h"

namespace brenu::tool {

// brenu adjust FILE: prints a summary and the adjusted points on the standard output; warnings and
// what went wrong, one sentence each, on the standard error.
ExitStatus RunAdjust(const std::string& path);

}  // namespace brenu::tool
