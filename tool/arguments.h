#pragma once

#include <string>
#include <vector>

namespace brenu::tool {

#ifdef _WIN32
#define BRENU_MAIN wmain
using SystemChar = wchar_t;
#else
#define BRENU_MAIN main
using SystemChar = char;
#endif

// The command line without the name of the program, in UTF-8 whatever the system.
std::vector<std::string> Arguments(int argc, SystemChar** argv);

}  // namespace brenu::tool
