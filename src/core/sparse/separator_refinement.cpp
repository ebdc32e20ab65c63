#include <algorithm>
#include <queue>

#include "core/sparse/separator.h"

namespace brenu {

namespace {

constexpr int kMostPasses = 8;
constexpr int kMovesWithoutGain = 120;  // a pass gives up after so many

using Part = std::uint8_t;  // as in Separation

std::size_t At(std::int32_t v) { return static_cast<std::size_t>(v); }
Part Opposite(Part side) { return side == 0 ? 1 : 0; }

// One vertex leaves the separator for a part; its neighbours in the other part take its place.
//
// A pass makes such moves, the lightest resulting separator first and each vertex once, also where
// the separator grows for a while, and then goes back to the best state met.
class Refinement {
 public:
  Refinement(const Graph& graph, Separation& separation)
      : m_graph(graph), m_cut(separation), m_movedIn(m_cut.part.size(), 0) {
    m_reach[0].assign(m_cut.part.size(), 0);
    m_reach[1].assign(m_cut.part.size(), 0);
  }

  // False when nothing was gained.
  bool RunPass() {
    ++m_pass;
    m_log.clear();
    m_candidates[0] = {};
    m_candidates[1] = {};
    for (std::int32_t v = 0; v < m_graph.Count(); ++v) {
      if (m_cut.part[At(v)] == Separation::kSeparator) Enter(v);
    }
    Separation best;  // weights only
    best.weights = m_cut.weights;
    std::size_t bestLength = 0;
    int withoutGain = 0;
    while (withoutGain < kMovesWithoutGain) {
      const Part side = ChooseSide();
      if (side == Separation::kSeparator) break;
      const std::int32_t v = m_candidates[side].top().Vertex();
      m_candidates[side].pop();
      Move(v, side);
      ++withoutGain;
      if (m_cut.IsBetterThan(best)) {
        best.weights = m_cut.weights;
        bestLength = m_log.size();
        withoutGain = 0;
      }
    }
    TakeBack(bestLength);
    return bestLength > 0;
  }

 private:
  // By how much the separator becomes lighter, and which vertex, in the separator when the entry
  // was made, moves: in one number, which orders them by gain.
  struct Candidate {
    Candidate(std::int64_t gain, std::int32_t vertex) : key(gain * kUnit + vertex) {}
    std::int64_t Gain() const { return (key - Vertex()) / kUnit; }
    std::int32_t Vertex() const { return static_cast<std::int32_t>(key & (kUnit - 1)); }
    bool operator<(const Candidate& o) const { return key < o.key; }

    static constexpr std::int64_t kUnit = std::int64_t{1} << 32;
    std::int64_t key;
  };
  struct Change {
    std::int32_t vertex;
    Part before;
  };

  std::int64_t Gain(std::int32_t v, Part side) const {
    return m_graph.WeightOf(v) - m_reach[Opposite(side)][At(v)];
  }
  // A separator vertex whose gain for that side has changed.
  void Offer(std::int32_t v, Part side) {
    if (m_movedIn[At(v)] != m_pass) m_candidates[side].emplace(Gain(v, side), v);
  }
  // Vertex v has come into the separator.
  void Enter(std::int32_t v) {
    m_reach[0][At(v)] = m_reach[1][At(v)] = 0;
    for (const std::int32_t u : m_graph.Neighbours(v)) {
      const Part part = m_cut.part[At(u)];
      if (part != Separation::kSeparator) m_reach[part][At(v)] += m_graph.WeightOf(u);
    }
    Offer(v, 0);
    Offer(v, 1);
  }

  // Drops entries that are out of date; false when none is left.
  bool HasCandidate(Part side) {
    auto& queue = m_candidates[side];
    while (!queue.empty()) {
      const Candidate& c = queue.top();
      const std::int32_t v = c.Vertex();
      if (m_cut.part[At(v)] == Separation::kSeparator && m_movedIn[At(v)] != m_pass &&
          c.Gain() == Gain(v, side)) {
        return true;
      }
      queue.pop();
    }
    return false;
  }
  // The part into which the best move goes, kSeparator when there is none.
  Part ChooseSide() {
    const Part lighter = m_cut.weights[0] <= m_cut.weights[1] ? 0 : 1;
    const Part heavier = Opposite(lighter);
    const std::int64_t limit = m_cut.HeaviestAllowed();
    const bool toLighter = HasCandidate(lighter);
    const bool toHeavier =
        HasCandidate(heavier) &&
        m_cut.weights[heavier] + m_graph.WeightOf(m_candidates[heavier].top().Vertex()) <= limit;
    if (!toHeavier) return toLighter ? lighter : Separation::kSeparator;
    if (!toLighter) return heavier;
    const bool better = m_candidates[heavier].top().Gain() > m_candidates[lighter].top().Gain();
    return better ? heavier : lighter;
  }

  void SetPart(std::int32_t v, Part part) {
    Part& current = m_cut.part[At(v)];
    m_log.push_back({v, current});
    m_cut.weights[current] -= m_graph.WeightOf(v);
    m_cut.weights[part] += m_graph.WeightOf(v);
    current = part;
  }

  void Move(std::int32_t v, Part side) {
    const Part other = Opposite(side);
    SetPart(v, side);
    m_movedIn[At(v)] = m_pass;
    for (const std::int32_t u : m_graph.Neighbours(v)) {
      if (m_cut.part[At(u)] == Separation::kSeparator) {
        m_reach[side][At(u)] += m_graph.WeightOf(v);
        Offer(u, other);
      } else if (m_cut.part[At(u)] == other) {
        SetPart(u, Separation::kSeparator);
        for (const std::int32_t t : m_graph.Neighbours(u)) {
          if (m_cut.part[At(t)] != Separation::kSeparator) continue;
          m_reach[other][At(t)] -= m_graph.WeightOf(u);
          Offer(t, side);
        }
        Enter(u);
      }
    }
  }

  void TakeBack(std::size_t length) {
    while (m_log.size() > length) {
      const Change change = m_log.back();
      SetPart(change.vertex, change.before);
      m_log.resize(m_log.size() - 2);  // the change and the way back
    }
  }

  const Graph& m_graph;
  Separation& m_cut;
  int m_pass = 0;
  std::vector<int> m_movedIn;                        // by vertex: the pass of its last move
  std::array<std::vector<std::int64_t>, 2> m_reach;  // of separator vertices: neighbours' weight
  std::array<std::priority_queue<Candidate>, 2> m_candidates;  // by part to move to
  std::vector<Change> m_log;                                   // of this pass
};

}  // namespace

void RefineSeparator(const Graph& graph, Separation& separation) {
  separation.Weigh(graph);
  Refinement refinement(graph, separation);
  for (int i = 0; i < kMostPasses && refinement.RunPass(); ++i) {
  }
}

}  // namespace brenu
