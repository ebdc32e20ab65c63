// What the C interface has no function for: which networks a job has, their size, the standard
// error of unit weight, the list of the observations.
#pragma once

#include <cstdint>
#include <vector>

#include "brenu/brenu.h"

namespace brenu::tool {

enum class Network { kHeights, kPlane };

// One stored pair.  The names live as long as the context's observations do.
struct Observation {
  std::int32_t station;  // index
  const char* stationName;
  const char* target;
  ObsData data;
};

// Of an adjusted network.
struct NetworkFigures {
  std::int32_t controlPoints, newPoints;
  std::int32_t redundancy;  // observations minus unknowns
  double sigma0;  // metres for 1 km of levelling; in the plane a multiple of MO, MS and MR

  // Standard errors mean something only with redundant observations and a new point.
  bool HasPrecision() const;
};

// The networks that the last LeastSquareAdj adjusted: heights, plane or both.
std::vector<Network> AdjustedNetworks(const AdjustmentContext& context);
NetworkFigures FiguresOf(const AdjustmentContext& context, Network network);

// The formats: traverses without orientation, distances only, and ordinary ones.
bool IsUnoriented(const AdjustmentContext& context);
bool IsDistancesOnly(const AdjustmentContext& context);
bool IsOrdinary(const AdjustmentContext& context);
bool IsControl(const PointData& point, Network network);

// By index.
std::vector<PointData> PointsOf(const AdjustmentContext& context);
// In the order of the names of stations and targets.
std::vector<Observation> ObservationsOf(const AdjustmentContext& context);

}  // namespace brenu::tool
