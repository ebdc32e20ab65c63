#pragma once

namespace brenu {

// The style sheet and the script of the report page (report/page), part of the library.
extern const char* const kPageStyle;
extern const char* const kPageScript;

}  // namespace brenu
