#pragma once

#include <vector>

#include "core/network_layout.h"

namespace brenu {

// By sight: whether it is the only connection between two parts of the network, so that no loop
// runs through it (Tarjan, A note on finding the bridges of a graph).
std::vector<char> FindBridges(const NetworkLayout& net);

}  // namespace brenu
