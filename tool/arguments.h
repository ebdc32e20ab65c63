#pragma once

#include <string>
#include <vector>

namespace brenu::tool {

// The command line without the name of the program, in UTF-8 whatever the system.
std::vector<std::string> Arguments(int argc, char** argv);

}  // namespace brenu::tool
