#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/finding.h"
#include "core/records.h"
#include "job/name_index.h"

namespace brenu {

// The points and observations of a job: what the host entered, from which the networks are built
// before every computation.  A refusal leaves the store as it was except where said otherwise.  So
// does an exception, memory exhaustion, in every function but AddObsPair, where the observations
// added before it stay.
class Store {
 public:
  using PointMap = std::map<std::int32_t, PointData>;  // by index

  // Not copied: points are found by where they stand in memory.
  Store() = default;
  Store(Store&&) = default;
  Store& operator=(Store&&) = default;

  // Stays the same until the next change, and differs from that of any other contents.
  const std::shared_ptr<const std::byte>& State() {
    if (m_state == nullptr) m_state = std::make_shared<std::byte>();
    return m_state;
  }

  const PointMap& Points() const { return m_points; }
  const ObservationMap& Observations() const { return m_observations; }

  Outcome AddPoint(std::int32_t index, const PointData& point);
  // The points of higher index move down by one place in the set of indices in use.
  Outcome DeletePoint(std::int32_t index);
  // Overwrites first and refuses the renaming afterwards, when the new name is a station already.
  Outcome SetPoint(std::int32_t index, const PointData& point);
  // Null when there is no such point.
  const PointData* FindPoint(std::int32_t index) const;
  // Adds an empty point when there is none.
  const PointData& PointOrEmpty(std::int32_t index);
  // The lowest index of a point of that name.
  std::int32_t IndexOfName(std::string_view name) const { return m_names.First(name); }

  std::int32_t ObsCount(std::int32_t station) const;
  Outcome AddObs(std::int32_t station, std::string_view target, const ObsData& obs);
  Outcome DeleteObs(std::int32_t station, std::string_view target);
  Outcome SetObs(std::int32_t station, std::string_view target, const ObsData& obs);
  // Null when the pair is not stored.
  const ObsData* FindObs(std::int32_t station, std::string_view target) const;

  // Adds the observations of a station to two targets and registers the pair; a first target that
  // could be added stays when the second is refused.
  Outcome AddObsPair(std::int32_t station, std::string_view target1, std::string_view target2,
                     const ObsData& obs1, const ObsData& obs2);
  // The same with one of the targets stored already: the new readings are turned onto the stored
  // directions and the other target is added.  Refused, too, when the other target has a direction
  // and none stored can serve as reference.
  Outcome AddReconciledObs(std::int32_t station, std::string_view target1, std::string_view target2,
                           const ObsData& obs1, const ObsData& obs2);

 private:
  std::optional<double> StoredDirection(std::int32_t station, std::string_view target) const;
  // The targets of a station; null when it is no point or has no entry.
  const TargetMap* TargetsOf(std::int32_t station) const;
  ObsData* FindObs(std::int32_t station, std::string_view target);
  // Of an index that is not negative and not far beyond the number of points.
  bool IsLow(std::int32_t index) const {
    constexpr std::size_t kAtLeast = 1024;
    return index >= 0 && static_cast<std::size_t>(index) < 2 * m_points.size() + kAtLeast;
  }
  // Enters a point under an index that is not in use.
  const PointData& Insert(std::int32_t index, const PointData& point);
  // How often a name stands in the observations, as station or as target.
  std::size_t CountInObservations(std::string_view name) const;
  // Takes its memory beforehand: as many copies of the new name as the old one is counted.
  void RenameInObservations(std::string_view from, std::vector<std::string> to) noexcept;

  // To be called by whatever may change the contents.
  void Touch() noexcept { m_state.reset(); }

  std::shared_ptr<const std::byte> m_state;  // null when nobody has asked since the last change
  PointMap m_points;
  // Those of low indices by their index, to find them at once; null for none and for those that
  // were out of its range when they were entered.
  std::vector<PointData*> m_lowPoints;
  NameIndex m_names;  // of m_points
  ObservationMap m_observations;
  // Station index -> second target -> first target, of the pairs added at once.
  std::map<std::int32_t, std::map<std::string, std::string, std::less<>>> m_anglePairs;
};

}  // namespace brenu
