#pragma once

#include <string>

#include "core/finding.h"
#include "io/file_path.h"

namespace brenu {

// Reads all bytes of a file, unchanged.
Outcome ReadWholeFile(const FilePath& path, std::string& text);

}  // namespace brenu
