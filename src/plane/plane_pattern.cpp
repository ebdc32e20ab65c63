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

// The same for the new points alone, without orientations.
UnknownPattern PlaneNet::MakeDistancePattern() const {
  const std::int32_t known = m_net->ControlCount();
  UnknownPattern pattern = PointPattern(m_net->PointCount() - known, 2);
  for (const Sight& s : m_net->Sights()) {
    pattern.Connect(m_net->PointOf(s.station) - known, m_net->PointOf(s.target) - known);
  }
  return pattern;
}

}  // namespace brenu
