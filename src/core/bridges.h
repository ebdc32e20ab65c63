#pragma once

#include "core/route_graph.h"

namespace brenu {

// By line: whether it is the only connection between two parts of the graph, so that no loop runs
// through it (Tarjan, A note on finding the bridges of a graph).
Table<LineNo, char> FindBridges(const RouteGraph& graph);

}  // namespace brenu
