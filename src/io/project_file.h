// The project file: parameters, points and observations as text.  docs/files.md has the format.
#pragma once

#include <string>

#include "io/replace_file.h"
#include "job/store.h"

namespace brenu {

std::string ProjectText(const AdjParam& param, const Store& store);
Replaced WriteProjectFile(const AdjParam& param, const Store& store, const FilePath& path);

}  // namespace brenu
