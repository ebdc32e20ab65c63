#include "core/sparse/symbolic_factor.h"

#include <algorithm>
#include <numeric>

#include "core/sparse/graph.h"
#include "core/sparse/ordering.h"
#include "core/sparse/supernode_tree.h"

namespace brenu {

namespace {

std::size_t At(std::int32_t v) { return static_cast<std::size_t>(v); }

// The rows below every supernode, in places of vertices: the neighbours of its columns and the rows
// below its children, as far as they come later.
class RowLists {
 public:
  RowLists(const Graph& graph, const SupernodeTree& tree)
      : m_placeOf(tree.vertices.size()), m_seenBy(tree.vertices.size(), -1), m_first{0} {
    for (std::size_t k = 0; k < tree.vertices.size(); ++k) {
      m_placeOf[At(tree.vertices[k])] = static_cast<std::int32_t>(k);
    }
    std::vector<std::int32_t> lastChild(tree.parent.size(), -1);
    std::vector<std::int32_t> previousSibling(tree.parent.size(), -1);
    for (std::int32_t s = 0; s < tree.Count(); ++s) {
      const std::int32_t begin = tree.firstPlace[At(s)];
      const std::int32_t end = tree.firstPlace[At(s) + 1];
      for (std::int32_t place = begin; place < end; ++place) {
        for (const std::int32_t v : graph.Neighbours(tree.vertices[At(place)])) {
          Add(m_placeOf[At(v)], s, end);
        }
      }
      for (std::int32_t c = lastChild[At(s)]; c >= 0; c = previousSibling[At(c)]) {
        for (std::int64_t k = m_first[At(c)]; k < m_first[At(c) + 1]; ++k) {
          Add(m_places[static_cast<std::size_t>(k)], s, end);
        }
      }
      std::sort(m_places.data() + m_first.back(), m_places.data() + m_places.size());
      m_first.push_back(static_cast<std::int64_t>(m_places.size()));
      const std::int32_t parent = tree.parent[At(s)];
      if (parent >= 0) previousSibling[At(s)] = std::exchange(lastChild[At(parent)], s);
    }
  }

  std::span<const std::int32_t> Of(std::int32_t s) const {
    return std::span(m_places).subspan(
        static_cast<std::size_t>(m_first[At(s)]),
        static_cast<std::size_t>(m_first[At(s) + 1] - m_first[At(s)]));
  }

 private:
  void Add(std::int32_t place, std::int32_t supernode, std::int32_t end) {
    if (place < end || m_seenBy[At(place)] == supernode) return;
    m_seenBy[At(place)] = supernode;
    m_places.push_back(place);
  }

  std::vector<std::int32_t> m_placeOf;  // by vertex
  std::vector<std::int32_t> m_seenBy;   // by place: the last supernode with this row
  std::vector<std::int64_t> m_first;    // by supernode, with one entry more
  std::vector<std::int32_t> m_places;   // the lists one after the other
};

}  // namespace

SymbolicFactor::SymbolicFactor(const UnknownPattern& pattern) {
  const Graph graph = GroupGraph(pattern);
  const SupernodeTree tree(graph, EliminationTree(graph, FillReducingOrder(graph)));
  const RowLists rowLists(graph, tree);

  // The unknowns of a group take consecutive places.
  std::vector<std::int32_t> firstOfPlace{0};  // by place of a vertex: the first place of an unknown
  std::vector<std::int32_t> next(graph.weights.size());
  for (const std::int32_t v : tree.vertices) {
    next[At(v)] = firstOfPlace.back();
    firstOfPlace.push_back(firstOfPlace.back() + graph.WeightOf(v));
  }
  m_placeOf.reserve(pattern.groupOfUnknown.size());
  for (const std::int32_t g : pattern.groupOfUnknown) m_placeOf.push_back(next[At(g)]++);

  m_supernodeAt.reserve(m_placeOf.size());
  for (std::int32_t s = 0; s < tree.Count(); ++s) {
    Supernode supernode;
    supernode.first = firstOfPlace[At(tree.firstPlace[At(s)])];
    supernode.width = firstOfPlace[At(tree.firstPlace[At(s) + 1])] - supernode.first;
    supernode.parent = tree.parent[At(s)];
    supernode.firstRow = static_cast<std::int64_t>(m_rows.size());
    supernode.firstElement = m_elementCount;
    for (const std::int32_t place : rowLists.Of(s)) {
      for (std::int32_t k = firstOfPlace[At(place)]; k < firstOfPlace[At(place) + 1]; ++k) {
        m_rows.push_back(k);
        ++supernode.rowCount;
      }
    }
    m_elementCount += std::int64_t{supernode.width} * supernode.Height();
    m_supernodeAt.insert(m_supernodeAt.end(), At(supernode.width), s);
    m_supernodes.push_back(supernode);
  }
  LinkRowsToParents();
  CollectChildren();
}

void SymbolicFactor::LinkRowsToParents() {
  m_rowsInParent.reserve(m_rows.size());
  for (const Supernode& s : m_supernodes) {
    if (s.parent < 0) continue;  // has no rows below
    const Supernode& parent = m_supernodes[At(s.parent)];
    const auto parentRows = Rows(parent);
    std::size_t k = 0;
    for (const std::int32_t place : Rows(s)) {
      if (place < parent.first + parent.width) {
        m_rowsInParent.push_back(place - parent.first);
        continue;
      }
      while (parentRows[k] != place) ++k;
      m_rowsInParent.push_back(parent.width + static_cast<std::int32_t>(k));
    }
  }
}

void SymbolicFactor::CollectChildren() {
  m_firstChild.assign(m_supernodes.size() + 1, 0);
  for (const Supernode& s : m_supernodes) {
    if (s.parent >= 0) ++m_firstChild[At(s.parent) + 1];
  }
  std::partial_sum(m_firstChild.begin(), m_firstChild.end(), m_firstChild.begin());
  m_children.resize(At(m_firstChild.back()));
  std::vector<std::int32_t> next(m_firstChild.begin(), m_firstChild.end() - 1);
  for (std::size_t s = 0; s < m_supernodes.size(); ++s) {
    const std::int32_t parent = m_supernodes[s].parent;
    if (parent >= 0) m_children[At(next[At(parent)]++)] = static_cast<std::int32_t>(s);
  }
}

std::span<const std::int32_t> SymbolicFactor::Children(std::size_t supernode) const {
  const auto first = At(m_firstChild[supernode]);
  return std::span(m_children).subspan(first, At(m_firstChild[supernode + 1]) - first);
}

std::int32_t SymbolicFactor::FindRow(const Supernode& s, std::int32_t place) const {
  if (place < s.first + s.width) return place - s.first;
  const auto rows = Rows(s);
  const auto found = std::lower_bound(rows.begin(), rows.end(), place);
  if (found == rows.end() || *found != place) return -1;
  return s.width + static_cast<std::int32_t>(found - rows.begin());
}

std::int64_t SymbolicFactor::FindElement(std::int32_t rowPlace, std::int32_t columnPlace) const {
  const Supernode& s = SupernodeAt(columnPlace);
  const std::int32_t row = FindRow(s, rowPlace);
  if (row < 0) return -1;
  return s.firstElement + std::int64_t{columnPlace - s.first} * s.Height() + row;
}

}  // namespace brenu
