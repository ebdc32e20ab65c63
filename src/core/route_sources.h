#pragma once

#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

#include "core/parallel.h"
#include "core/route_search.h"

namespace brenu {

// Calls visit(k, search, found) for the sources k = 0..count-1 of routes, side by side, each time
// with a search and a list of its own, and appends the lists to `all` in the order of sources.
template <typename Record, typename Visit>
void ForEachSource(const RouteGraph& graph, std::size_t count, std::vector<Record>& all,
                   Visit visit) {
  constexpr std::size_t kSources = 4;       // in a row by one thread
  constexpr std::size_t kLeastNodes = 500;  // that are worth a thread
  const std::size_t size = graph.NodeCount() < kLeastNodes ? count : kSources;
  const ThreadTeam team;
  std::vector<std::vector<Record>> found(count);
  ForEachPart(count, size == 0 ? 1 : size, [&](std::size_t begin, std::size_t end) {
    RouteSearch search(graph);
    for (std::size_t k = begin; k < end; ++k) visit(k, search, found[k]);
  });
  for (std::vector<Record>& list : found) {
    std::move(list.begin(), list.end(), std::back_inserter(all));
    std::vector<Record>().swap(list);
  }
}

}  // namespace brenu
