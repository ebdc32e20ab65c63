#include "plane/approximate/orientations.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <span>

#include "core/normal_equations.h"

namespace brenu::approximate {

namespace {

// Trees of nodes, each with its orientation against its root.
class TurnedTrees {
 public:
  explicit TurnedTrees(std::size_t count) : m_parent(count), m_turn(count, 0.0), m_size(count, 1) {
    std::iota(m_parent.begin(), m_parent.end(), std::size_t{0});
  }

  // Makes the way to the root short; the orientation against it.
  std::size_t Root(std::size_t node, double& turn) {
    std::size_t root = node;
    turn = 0.0;
    for (; m_parent[root] != root; root = m_parent[root]) turn += m_turn[root];
    double rest = turn;
    while (m_parent[node] != root && node != root) {
      const std::size_t next = m_parent[node];
      const double own = m_turn[node];
      m_parent[node] = root;
      m_turn[node] = rest;
      rest -= own;
      node = next;
    }
    return root;
  }

  // False when an edge joins what is joined already.
  bool Join(const OrientationEdge& edge) {
    double ofA = 0.0;
    double ofB = 0.0;
    std::size_t a = Root(edge.a.Position(), ofA);
    std::size_t b = Root(edge.b.Position(), ofB);
    if (a == b) return false;
    double turn = ofA + edge.turn - ofB;  // of b's root against a's
    if (m_size[a] < m_size[b]) {
      std::swap(a, b);
      turn = -turn;
    }
    m_parent[b] = a;
    m_turn[b] = HalfCircle(turn);
    m_size[a] += m_size[b];
    return true;
  }

 private:
  std::vector<std::size_t> m_parent;
  std::vector<double> m_turn;  // against the parent
  std::vector<std::size_t> m_size;
};

// Lets edges vote on each other: with a third node, three of them close a triangle or do not.
class EdgeVote {
 public:
  EdgeVote(std::size_t nodeCount, const std::vector<OrientationEdge>& edges)
      : m_first(nodeCount + 1, 0) {
    for (const OrientationEdge& e : edges) {
      ++m_first[e.a.Position() + 1];
      ++m_first[e.b.Position() + 1];
    }
    std::partial_sum(m_first.begin(), m_first.end(), m_first.begin());
    m_arms.resize(2 * edges.size());
    std::vector<std::size_t> next(m_first.begin(), m_first.end() - 1);
    for (const OrientationEdge& e : edges) {
      m_arms[next[e.a.Position()]++] = {e.b, e.turn, e.sigma};
      m_arms[next[e.b.Position()]++] = {e.a, -e.turn, e.sigma};
    }
    for (std::size_t i = 0; i < nodeCount; ++i) {
      const auto arms = std::span(m_arms).subspan(m_first[i], m_first[i + 1] - m_first[i]);
      std::sort(arms.begin(), arms.end(), [](const Arm& a, const Arm& b) { return a.to < b.to; });
    }
  }

  // An edge that contradicts others and agrees with none hardly counts.
  void WeakenContradicted(std::vector<OrientationEdge>& edges) const {
    constexpr double kWeakening = 100.0;
    std::vector<char> isWeak(edges.size(), 0);
    for (std::size_t k = 0; k < edges.size(); ++k) isWeak[k] = IsContradicted(edges[k]) ? 1 : 0;
    for (std::size_t k = 0; k < edges.size(); ++k) {
      if (isWeak[k] != 0) edges[k].sigma *= kWeakening;
    }
  }

 private:
  struct Arm {
    Node to;
    double turn, sigma;
  };

  std::span<const Arm> ArmsOf(Node node) const {
    const std::size_t first = m_first[node.Position()];
    return std::span(m_arms).subspan(first, m_first[node.Position() + 1] - first);
  }

  bool IsContradicted(const OrientationEdge& edge) const {
    constexpr double kTolerance = 4.0;  // standard errors
    const bool aHasFewer = ArmsOf(edge.a).size() <= ArmsOf(edge.b).size();
    const Node from = aHasFewer ? edge.a : edge.b;
    const Node to = aHasFewer ? edge.b : edge.a;
    const double turn = aHasFewer ? edge.turn : -edge.turn;
    const auto others = ArmsOf(to);
    bool isContradicted = false;
    for (const Arm& arm : ArmsOf(from)) {
      if (arm.to == to) continue;
      auto closing = std::lower_bound(others.begin(), others.end(), arm.to,
                                      [](const Arm& a, Node node) { return a.to < node; });
      for (; closing != others.end() && closing->to == arm.to; ++closing) {
        const double misfit = std::fabs(HalfCircle(turn + closing->turn - arm.turn));
        const double sigma = std::hypot(edge.sigma, std::hypot(arm.sigma, closing->sigma));
        if (misfit < kTolerance * sigma) return false;
        isContradicted = true;
      }
    }
    return isContradicted;
  }

  std::vector<std::size_t> m_first;  // by node, with one entry more
  std::vector<Arm> m_arms;           // grouped by node
};

Orientations OrientByTree(std::size_t nodeCount, const std::vector<OrientationEdge>& edges) {
  TurnedTrees trees(nodeCount);
  for (const OrientationEdge& edge : edges) trees.Join(edge);
  Orientations result;
  std::vector<std::int32_t> numberOf(nodeCount, -1);  // of the component, by root
  double ofWorld = 0.0;
  const std::size_t world = trees.Root(kWorld.Position(), ofWorld);
  for (std::size_t i = 0; i < nodeCount; ++i) {
    double turn = 0.0;
    const std::size_t root = trees.Root(i, turn);
    if (numberOf[root] < 0) numberOf[root] = result.componentCount++;
    result.component.Add(numberOf[root]);
    result.orientation.Add(HalfCircle(root == world ? turn - ofWorld : turn));
  }
  return result;
}

UnknownPattern PatternOf(std::size_t nodeCount, const std::vector<OrientationEdge>& edges) {
  UnknownPattern pattern = PointPattern(static_cast<std::int32_t>(nodeCount), 1);
  for (const OrientationEdge& edge : edges) pattern.Connect(edge.a.Number(), edge.b.Number());
  return pattern;
}

// One node of each component is held: the world, or the first.
void HoldOneEach(const Orientations& o, NormalEquations& normal) {
  std::vector<char> isHeld(static_cast<std::size_t>(o.componentCount), 0);
  for (const Node node : o.component.Indices()) {
    char& held = isHeld[static_cast<std::size_t>(o.component[node])];
    if (held == 0) normal.Hold(node.Number(), 1e20);
    held = 1;
  }
}

}  // namespace

Orientations SolveOrientations(std::size_t nodeCount, std::vector<OrientationEdge> edges) {
  EdgeVote(nodeCount, edges).WeakenContradicted(edges);
  std::stable_sort(
      edges.begin(), edges.end(),
      [](const OrientationEdge& a, const OrientationEdge& b) { return a.sigma < b.sigma; });
  Orientations result = OrientByTree(nodeCount, edges);
  if (edges.empty()) return result;
  NormalEquations normal;
  normal.SetPattern(PatternOf(nodeCount, edges));
  constexpr int kRounds = 9;
  constexpr int kFading = 6;     // the first round that lets contradictions fade out altogether
  constexpr double kFits = 5.0;  // standard errors
  for (int round = 0; round < kRounds; ++round) {
    normal.Reset();
    bool allFit = true;
    for (const OrientationEdge& edge : edges) {
      const double misfit =
          HalfCircle(result.orientation[edge.b] - result.orientation[edge.a] - edge.turn);
      const double ratio = std::fabs(misfit) / edge.sigma;
      const double fade = round == 0        ? 1.0
                          : round < kFading ? 1.0 / std::max(1.0, ratio)  // least sum of amounts
                                            : 1.0 / (1.0 + ratio * ratio / 9.0);
      allFit = allFit && ratio < kFits;
      const Term equation[] = {{edge.a.Number(), -1.0}, {edge.b.Number(), 1.0}};
      normal.Add(equation, fade / (edge.sigma * edge.sigma), misfit);
    }
    if (round > 0 && allFit) break;
    HoldOneEach(result, normal);
    if (!normal.Solve()) break;
    const auto corrections = normal.Solution();
    for (const Node node : result.orientation.Indices()) {
      double& orientation = result.orientation[node];
      orientation = HalfCircle(orientation + corrections[node.Position()]);
    }
  }
  return result;
}

}  // namespace brenu::approximate
