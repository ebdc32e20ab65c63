#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "fieldbook/setup_reduction.h"

namespace brenu {

// The setups on one station put together, for a project holds one line a pair.
class StationMeans {
 public:
  explicit StationMeans(NameNo station) : m_station(station) {}

  // Turns the directions of a later setup, by the mean over the common targets, onto those so far
  // and averages them with the numbers of sets as weights; distances likewise.  Without a common
  // target the directions of the setup are left out, and that is said.
  void Add(const std::vector<TargetMeans>& setup, std::int32_t line, ReductionNotes& notes);

  NameNo Station() const { return m_station; }
  const std::vector<TargetMeans>& Targets() const { return m_targets; }

 private:
  // The turn of a setup's circle onto that so far; absent without a common target.
  std::optional<double> TurnOf(const std::vector<TargetMeans>& setup) const;
  TargetMeans* Find(NameNo target);
  const TargetMeans* Find(NameNo target) const;

  NameNo m_station;
  std::vector<TargetMeans> m_targets;  // in the order of their first sights
  std::unordered_map<std::int32_t, std::size_t> m_places;
};

}  // namespace brenu
