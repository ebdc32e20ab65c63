#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "core/finding.h"
#include "fieldbook/field_book.h"

namespace brenu {

// Of a total station, proposed where nothing speaks of it: 5", 5 mm + 5 ppm.
inline constexpr APriori kUsualErrors = {5.0, 0.005, 5e-6};

// How far the sets of a setup differ from their means.
class Spread {
 public:
  struct Deviation {
    std::int32_t line = 0;
    NameNo station, target;
    std::int32_t set = 0;
    double value = 0.0;  // radians or metres
  };

  // The deviations of the directions of a setup, which have so many degrees of freedom, and so many
  // sets.
  void AddDirections(const std::vector<Deviation>& deviations, double freedom, double sets);
  // Of one distance.
  void AddDistances(const std::vector<Deviation>& deviations);

  // Takes over what another one found.
  void Add(const Spread& other);

  // Standard errors of a direction in one set, and of a distance; absent without repetition.
  std::optional<double> DirectionError() const { return m_directions.Error(); }
  std::optional<double> DistanceError() const { return m_distances.Error(); }
  // Proposed for the mean of the sets: what they speak of, but not less than the centring of
  // instrument and target leaves, which the sets share.
  APriori Proposal() const;

  // Deviations of more than three standard errors that are no small ones.
  Findings Outliers(const PointNames& names) const;

 private:
  struct Sum {
    std::vector<Deviation> deviations;
    double squares = 0.0, freedom = 0.0, sets = 0.0, groups = 0.0;

    void Add(const std::vector<Deviation>& added, double withFreedom, double ofSets);
    std::optional<double> Error() const;
    // Of the mean of as many sets as there were on average.
    std::optional<double> ErrorOfMean() const;
  };

  Sum m_directions, m_distances;
};

}  // namespace brenu
