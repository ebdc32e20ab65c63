#pragma once

#include <functional>
#include <optional>
#include <string>

#include "brenu/brenu.h"
#include "fault.h"
#include "progress.h"

namespace brenu::tool {

// What a command does with a file that has been read: appends to the text for the standard output.
// That is printed also when there is a fault.
using Work = std::function<std::optional<Fault>(AdjustmentContext& context, Progress& progress,
                                                std::string& text)>;

// Reads the file into a fresh context and does the work; warnings and the fault, one sentence each,
// go to the standard error.
ExitStatus RunOnFile(const std::string& path, const Work& work);

// One sentence about the file on the standard error.
void Say(const std::string& path, const std::string& sentence);

}  // namespace brenu::tool
