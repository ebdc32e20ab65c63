// The station and observation file as text.  docs/files.md has the format.
#pragma once

#include <string>

#include "core/finding.h"
#include "job/store.h"

namespace brenu {

// In a plane network every line has a direction, so that pairs without one are left out; so are
// azimuths.  Both are told of in `left`.
std::string StationFileText(const AdjParam& param, const Store& store, Findings& left);

}  // namespace brenu
