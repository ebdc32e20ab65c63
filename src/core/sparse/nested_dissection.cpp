#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

#include "core/parallel.h"
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

class Dissection {
 public:
  explicit Dissection(std::size_t count) : m_order(count) {}

  // The parts of each cut do not know each other: as soon as there are enough, they are dissected
  // side by side.
  std::vector<std::int32_t> Run(Part whole) {
    constexpr std::size_t kPartsOfWorker = 8;
    std::vector<Part> parts;
    parts.push_back(std::move(whole));
    const std::size_t enough = WorkerCount() == 1 ? 1 : kPartsOfWorker * WorkerCount();
    while (!parts.empty() && parts.size() < enough) {
      std::vector<std::vector<Part>> halves(parts.size());
      ForEach(parts.size(),
              [&](std::size_t i, std::size_t) { halves[i] = Cut(std::move(parts[i])); });
      parts.clear();
      for (std::vector<Part>& two : halves)
        std::move(two.begin(), two.end(), std::back_inserter(parts));
    }
    ForEach(parts.size(), [&](std::size_t i, std::size_t) { Dissect(std::move(parts[i])); });
    return std::move(m_order);
  }

 private:
  void Dissect(Part whole) {
    std::vector<Part> parts;
    parts.push_back(std::move(whole));
    while (!parts.empty()) {
      Part part = std::move(parts.back());
      parts.pop_back();
      std::vector<Part> halves = Cut(std::move(part));
      std::move(halves.begin(), halves.end(), std::back_inserter(parts));
    }
  }

  // Gives the separator of a part its places, or all of a small one, and returns what is left.
  std::vector<Part> Cut(Part part) {
    const auto place = [&](const std::vector<std::int32_t>& local) {
      std::size_t next = part.end - local.size();
      for (const std::int32_t v : local) {
        m_order[next++] = part.vertices[static_cast<std::size_t>(v)];
      }
    };
    std::vector<Part> halves;
    if (part.graph.Count() <= kSmallPart) {
      place(MinimumDegreeOrder(part.graph));
      return halves;
    }
    const Separation cut = FindSeparator(part.graph);
    if (cut.weights[0] == 0 || cut.weights[1] == 0) {
      place(ByDegree(part.graph));
      return halves;
    }
    std::vector<std::int32_t> members[3];  // of the parts and the separator
    for (std::int32_t v = 0; v < part.graph.Count(); ++v) {
      members[cut.part[static_cast<std::size_t>(v)]].push_back(v);
    }
    place(members[Separation::kSeparator]);
    std::size_t end = part.end - members[Separation::kSeparator].size();
    std::vector<std::int32_t> numberIn(part.graph.weights.size());
    for (const std::uint8_t side : {std::uint8_t{1}, std::uint8_t{0}}) {
      Graph half = Subgraph(part.graph, cut.part, side, numberIn);
      for (std::int32_t& v : members[side]) v = part.vertices[static_cast<std::size_t>(v)];
      const std::size_t size = members[side].size();
      halves.push_back({std::move(half), std::move(members[side]), end});
      end -= size;
    }
    return halves;
  }

  std::vector<std::int32_t> m_order;
};

}  // namespace

std::vector<std::int32_t> NestedDissectionOrder(Graph graph) {
  const std::size_t count = graph.weights.size();
  std::vector<std::int32_t> all(count);
  std::iota(all.begin(), all.end(), 0);
  return Dissection(count).Run({std::move(graph), std::move(all), count});
}

}  // namespace brenu
