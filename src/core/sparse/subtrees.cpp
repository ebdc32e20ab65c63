#include "core/sparse/subtrees.h"

#include <algorithm>

namespace brenu {

namespace {

// The most work on top: a heap of ranges.
bool HasLessWork(const Subtrees::Range& a, const Subtrees::Range& b) { return a.work < b.work; }

// By supernode, everything below included.
std::vector<Subtrees::Range> AllSubtrees(const SymbolicFactor& symbolic) {
  std::vector<Subtrees::Range> all;
  all.reserve(symbolic.Supernodes().size());
  for (std::size_t s = 0; s < symbolic.Supernodes().size(); ++s) {
    const Supernode& supernode = symbolic.Supernodes()[s];
    const double height = supernode.Height();
    const auto number = static_cast<std::int32_t>(s);
    Subtrees::Range range{number, number + 1, supernode.width * height * height};
    const auto children = symbolic.Children(s);
    if (!children.empty()) range.first = all[static_cast<std::size_t>(children.front())].first;
    for (const std::int32_t c : children) range.work += all[static_cast<std::size_t>(c)].work;
    all.push_back(range);
  }
  return all;
}

}  // namespace

Subtrees::Subtrees(const SymbolicFactor& symbolic, std::size_t workers) {
  constexpr double kLeastWork = 2e7;     // that pays
  constexpr double kSharesOfWorker = 4;  // so that all end at about the same time
  const auto supernodes = symbolic.Supernodes();
  const auto count = static_cast<std::int32_t>(supernodes.size());
  if (workers > 1) {
    const std::vector<Range> all = AllSubtrees(symbolic);
    double total = 0.0;
    for (std::size_t s = 0; s < all.size(); ++s) {
      if (supernodes[s].parent >= 0) continue;
      ranges.push_back(all[s]);
      total += all[s].work;
    }
    if (total >= kLeastWork) {
      const double share = total / (kSharesOfWorker * static_cast<double>(workers));
      std::make_heap(ranges.begin(), ranges.end(), HasLessWork);
      while (ranges.front().work > share) {
        std::pop_heap(ranges.begin(), ranges.end(), HasLessWork);
        const std::int32_t root = ranges.back().end - 1;
        ranges.pop_back();
        above.push_back(root);
        for (const std::int32_t c : symbolic.Children(static_cast<std::size_t>(root))) {
          ranges.push_back(all[static_cast<std::size_t>(c)]);
          std::push_heap(ranges.begin(), ranges.end(), HasLessWork);
        }
        if (ranges.empty()) break;
      }
      std::sort(above.begin(), above.end());
      std::stable_sort(ranges.begin(), ranges.end(),
                       [](const Range& a, const Range& b) { return a.work > b.work; });
      return;
    }
  }
  ranges.clear();
  if (count > 0) ranges.push_back({0, count, 0.0});
}

}  // namespace brenu
