// A job as tables and checks see it: which networks it has, their size, the list of observations.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "job/adjustment_context.h"

namespace brenu {

enum class Network { kHeights, kPlane };

// One stored pair; the names live as long as the observations of the store.
struct Observation {
  std::string_view station, target;
  ObsData data;
};

// Of an adjusted network.
struct NetworkFigures {
  std::int32_t controlPoints, newPoints;
  std::int32_t redundancy;  // observations minus unknowns
  std::int32_t leftOut;     // new points without results
  double sigma0;  // metres for 1 km of levelling; in the plane a multiple of MO, MS and MR

  // Standard errors mean something only with redundant observations and a new point.
  bool HasPrecision() const;
};

// The networks that the last adjustment adjusted: heights, plane or both.
std::vector<Network> AdjustedNetworks(const AdjustmentContext& context);
NetworkFigures FiguresOf(const AdjustmentContext& context, Network network);

// The formats: traverses without orientation, distances only, and ordinary ones.
bool IsUnoriented(const AdjustmentContext& context);
bool IsDistancesOnly(const AdjustmentContext& context);
bool IsOrdinary(const AdjustmentContext& context);
bool IsControl(const PointData& point, Network network);

// In the order of the names of stations and targets.
std::vector<Observation> ObservationsOf(const AdjustmentContext& context);

}  // namespace brenu
