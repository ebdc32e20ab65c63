#include <algorithm>
#include <numeric>
#include <utility>

#include "core/sparse/ordering.h"
#include "core/sparse/separator.h"

namespace brenu {

namespace {

constexpr std::int32_t kSmallPart = 120;

// A part of the graph that still has to be ordered.
struct Part {
  Graph graph;
  std::vector<std::int32_t> vertices;  // by vertex of this part: its number in the whole graph
  std::size_t end;                     // its vertices take the places before this one
};

// Where a cut leaves one of the parts empty the graph is (nearly) complete and any order will do.
std::vector<std::int32_t> ByDegree(const Graph& graph) {
  std::vector<std::int32_t> order(graph.weights.size());
  std::iota(order.begin(), order.end(), 0);
  std::stable_sort(order.begin(), order.end(), [&](std::int32_t a, std::int32_t b) {
    return graph.Neighbours(a).size() < graph.Neighbours(b).size();
  });
  return order;
}

}  // namespace

std::vector<std::int32_t> NestedDissectionOrder(Graph graph) {
  std::vector<std::int32_t> order(graph.weights.size());
  std::vector<std::int32_t> all(order.size());
  std::iota(all.begin(), all.end(), 0);
  std::vector<Part> parts;
  parts.push_back({std::move(graph), std::move(all), order.size()});
  std::vector<std::int32_t> numberIn;

  while (!parts.empty()) {
    Part part = std::move(parts.back());
    parts.pop_back();
    const auto place = [&](const std::vector<std::int32_t>& local) {
      std::size_t next = part.end - local.size();
      for (const std::int32_t v : local) {
        order[next++] = part.vertices[static_cast<std::size_t>(v)];
      }
    };
    if (part.graph.Count() <= kSmallPart) {
      place(MinimumDegreeOrder(part.graph));
      continue;
    }
    const Separation cut = FindSeparator(part.graph);
    if (cut.weights[0] == 0 || cut.weights[1] == 0) {
      place(ByDegree(part.graph));
      continue;
    }
    std::vector<std::int32_t> members[3];  // of the parts and the separator
    for (std::int32_t v = 0; v < part.graph.Count(); ++v) {
      members[cut.part[static_cast<std::size_t>(v)]].push_back(v);
    }
    place(members[Separation::kSeparator]);
    std::size_t end = part.end - members[Separation::kSeparator].size();
    numberIn.resize(part.graph.weights.size());
    for (const std::uint8_t side : {std::uint8_t{1}, std::uint8_t{0}}) {
      Graph half = Subgraph(part.graph, cut.part, side, numberIn);
      for (std::int32_t& v : members[side]) v = part.vertices[static_cast<std::size_t>(v)];
      const std::size_t size = members[side].size();
      parts.push_back({std::move(half), std::move(members[side]), end});
      end -= size;
    }
  }
  return order;
}

}  // namespace brenu
