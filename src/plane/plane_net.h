#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "core/network_layout.h"
#include "core/normal_equations.h"
#include "core/records.h"
#include "plane/line_equation.h"
#include "plane/observation_tables.h"

namespace brenu {

// What the adjustment found for one observation, in the units of the public getters.
struct PlaneObsResult {
  double residual, adjusted, apriori;
};

// Azimuth and length between two points from their adjusted coordinates.
struct LinePrecision {
  double azimuth;       // dd.mmss
  double azimuthError;  // arc-seconds
  double length;        // metres
  double lengthError;   // metres
  std::int32_t relativePrecision;
};

// The horizontal network: control points, new points, directions, distances and azimuths.
//
// The network build fills it; every computation starts with the set-up step, which takes the
// network as filled and computes on arrays: coordinates by name (slot), observations in walk
// order.  The unknowns are X and Y of point i at 2i and 2i + 1 and then one orientation unknown a
// direction set.  Results of the last computation stay readable while the network is filled anew.
class PlaneNet {
 public:
  // The argument is for comparing the two ways to store normal equations.
  explicit PlaneNet(std::int32_t mostPackedUnknowns = kMostPackedUnknowns)
      : m_normal(mostPackedUnknowns) {}

  // Points are numbered in the order given, the first `knownPointCount` have known coordinates.
  void Fill(std::vector<PointData> points, std::int32_t knownPointCount,
            const ObservationMap& observations, const AdjParam& param);

  // Approximate coordinates of all points; on success they are also written into the point
  // records.  False when there are no points or stations, or when a point cannot be reached.
  bool CalcApproxCoordinates();

  // Least-squares adjustment of coordinates and orientation unknowns.
  bool Adjust();

  // The same from distances alone, on the working coordinates as they are: known points are no
  // unknowns, and neither directions nor azimuths take part.
  bool AdjustDistances();

  // -1 when the network has no such point.
  std::int32_t IndexOfPoint(std::string_view name) const { return m_layout->IndexOfPoint(name); }
  // Null when the network has no point of that number.
  const PointData* FindPoint(std::int32_t number) const;

  // Results of the last computation; empty when it had no such point or observation.
  std::optional<PlaneResult> ResultOfPoint(std::string_view name) const;
  std::optional<PlaneObsResult> ResultOfDirection(std::string_view station,
                                                  std::string_view target) const;
  std::optional<PlaneObsResult> ResultOfDistance(std::string_view station,
                                                 std::string_view target) const;
  std::optional<PlaneObsResult> ResultOfAzimuth(std::string_view station,
                                                std::string_view target) const;
  std::optional<LinePrecision> PrecisionOfLine(std::string_view station,
                                               std::string_view target) const;
  // The a-posteriori standard error of unit weight of the last adjustment.
  double Sigma0() const { return m_sigma0; }
  // False for a point whose coordinates the last computation could not reach.
  bool IsReached(std::string_view name) const;

 private:
  bool PrepareAdj();
  bool HasCoordinates(std::int32_t slot) const;
  // The X unknown of the point of that name; negative when the point is held, or there is none.
  std::int32_t UnknownOf(std::int32_t slot) const;

  // Derivatives in arc-seconds per metre.
  LineEquation DirectionCoefficients(std::int32_t from, std::int32_t to) const;
  // Derivatives without unit.
  LineEquation DistanceCoefficients(std::int32_t from, std::int32_t to) const;
  double DistanceError(double length) const { return m_param.MS + m_param.MR * length; }

  bool BuildNormals();
  bool HasUnknownName() const;
  UnknownPattern MakePattern() const;
  void NumberOrientations();
  void AddDirectionSet(const DirectionSet& set);
  void HoldKnownPoints();
  double SolveAndUpdate();
  double CalcResiduals();
  double CalcDistanceResiduals();
  std::int32_t Redundancy() const;
  void CalcPointPrecision();

  UnknownPattern MakeDistancePattern() const;
  bool BuildDistanceNormals();

  // As filled by the network build.
  std::shared_ptr<const NetworkLayout> m_layout = std::make_shared<NetworkLayout>();
  std::vector<PointData> m_points;      // by point number
  std::int32_t m_orientationCount = 0;  // stations in the store, with directions or without
  AdjParam m_param = kDefaultParam;

  // As made by the set-up step and the computations after it.
  std::shared_ptr<const NetworkLayout> m_net = m_layout;  // the layout that the rest refers to
  std::vector<PlaneResult> m_coords;  // by slot: working coordinates, then precision
  ObservationTables m_obs;            // with use flags and residuals
  NormalEquations m_normal;
  std::int32_t m_firstUnknownPoint = 0;  // the point that owns the unknowns 0 and 1
  double m_sigma0 = 0.0;
};

}  // namespace brenu
