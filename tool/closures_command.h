#pragma once

#include <string>

#include "fault.h"

namespace brenu::tool {

// brenu closures FILE: prints the closure errors of levelling lines and loops and of traverses with
// their limits; the status is kComputationFailed when one is beyond its limit.
ExitStatus RunClosures(const std::string& path);

}  // namespace brenu::tool
