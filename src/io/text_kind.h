#pragma once

#include <string_view>

#include "core/finding.h"

namespace brenu {

// What text is by its beginning when it has no header of a format that can be read:
// BRENU_FILE_EMPTY, _UTF16, _BINARY or _OF_OTHER_KIND.
Code KindOfText(std::string_view head);

}  // namespace brenu
