#include <algorithm>

#include "plane/plane_net.h"

namespace brenu {

// All stored pairs belong to the pattern, whatever is observed between them: the precision of any
// of them may be asked for.
UnknownPattern PlaneNet::MakePattern() const {
  UnknownPattern pattern = PointPattern(m_net->PointCount(), 2);
  for (const DirectionSet& set : m_obs.sets) {
    const PlaneObs& first = m_obs.directions[static_cast<std::size_t>(set.first)];
    const std::int32_t station = m_net->PointOf(first.from);
    // A set at a name without point has no equations and stands alone.
    pattern.groupOfUnknown.push_back(station >= 0 ? station : pattern.groupCount++);
  }
  for (const Sight& s : m_net->Sights()) {
    pattern.Connect(m_net->PointOf(s.station), m_net->PointOf(s.target));
  }
  return pattern;
}

void PlaneNet::AnalysePattern() {
  m_normal.SetPattern(MakePattern());
  // What stands at a name without point is never added: any place will do.
  const auto unknownOf = [this](const PlaneObs& o) { return std::max(UnknownOf(o.from), 0); };
  m_setOrder = m_normal.FastestOrder(m_obs.sets.size(), [&](std::size_t k) {
    return unknownOf(m_obs.directions[static_cast<std::size_t>(m_obs.sets[k].first)]);
  });
  m_distanceOrder = m_normal.FastestOrder(
      m_obs.distances.size(), [&](std::size_t k) { return unknownOf(m_obs.distances[k]); });
}

// As MakePattern, for the new points alone, without orientations.
UnknownPattern PlaneNet::MakeDistancePattern() const {
  const std::int32_t known = m_net->ControlCount();
  UnknownPattern pattern = PointPattern(m_net->PointCount() - known, 2);
  for (const Sight& s : m_net->Sights()) {
    pattern.Connect(m_net->PointOf(s.station) - known, m_net->PointOf(s.target) - known);
  }
  return pattern;
}

}  // namespace brenu
