#pragma once

#include "core/bridges.h"
#include "core/route_search.h"

namespace brenu {

// Calls visit(line, search) for loops of the graph: each line that lies on no loop found before
// starts one, closed by the shortest way back from its far end.  The search then holds the routes
// from that far end; the loop is the line's near end, its predecessors up to the far end, and the
// line.  Of several lines between the same two nodes on the way back the lowest is the one that
// counts as used.
template <typename Visit>
void ForEachLoop(const RouteGraph& graph, Visit visit) {
  RouteSearch search(graph);
  // A bridge lies on no loop: it is passed over like a line on a loop found before.
  Table<LineNo, char> isMarked = FindBridges(graph);
  for (const LineNo k : graph.Lines()) {
    if (isMarked[k] != 0) continue;
    const RouteLine& line = graph.Line(k);
    search.Run(line.to, k, line.from);
    if (!search.IsReached(line.from)) continue;
    isMarked[k] = 1;
    for (Slot node = line.from; node != line.to; node = search.Predecessor(node)) {
      isMarked[graph.FirstLineBetween(node, search.Predecessor(node))] = 1;
    }
    visit(k, search);
  }
}

}  // namespace brenu
