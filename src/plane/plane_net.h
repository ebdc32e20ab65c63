#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/network_layout.h"
#include "core/normal_equations.h"
#include "core/records.h"
#include "plane/circles.h"
#include "plane/line_equation.h"
#include "plane/observation_tables.h"
#include "plane/traverse_table.h"

namespace brenu {

// What the adjustment found for one observation, in the units of the public getters.
struct PlaneObsResult {
  double residual, adjusted, apriori;
  bool removed;  // taken out by data snooping
};

// Azimuth and length between two points from their adjusted coordinates.
struct LinePrecision {
  double azimuth;       // dd.mmss
  double azimuthError;  // arc-seconds
  double length;        // metres
  double lengthError;   // metres
  std::int32_t relativePrecision;
};

// What is measured from one placed point.
struct NamedCircle {
  const char* name;
  Circle circle;
};

// A point that can be placed by trilateration.
struct Placement {
  std::string name;
  NamedCircle first, second;  // names live as long as the filled network
  double quality;             // sine of the angle at which the circles meet
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

  // The same with one Gauss-Newton step a round, taking out the observation with the largest test
  // value as long as it exceeds the two-sided critical value of the level of significance.
  bool DataSnooping(double alpha);

  // Adjusts distances alone, on the working coordinates as they are: known points are no
  // unknowns, and neither directions nor azimuths take part.
  bool AdjustDistances();

  // Closure errors of connecting and closed traverses from the approximate coordinates, appended as
  // records whose flag `heightWithinLimit` tells whether both misclosures are within the tolerance.
  // False when there are none.
  bool CalcTraverseCloseErrors(std::vector<CloseError>& records);

  // Coordinates of connecting traverses from angles and sides alone, without orientation at either
  // end.  False without such a traverse, or when it leaves a point with measured sides out.
  bool AdjustWithoutOrientation();

  // Trilateration: the new points of a distance-only network are placed one by one, each where two
  // circles around placed points meet; a point with X within 1e-7 of 0 is not placed.
  // Takes all new points back to (0, 0).
  void UnplacePoints();
  // The set-up step alone.
  bool PrepareAdj();
  // Places a point on the right or left of the line from the first to the second centre and
  // returns how many are left to place; places nothing when the circles do not meet there.
  std::uint32_t PlacePoint(bool right, const NamedCircle& first, const NamedCircle& second,
                           std::string_view name);
  // The named point, or without name the one whose circles meet nearest to a right angle (then
  // name order), with the best two of its circles.  Empty when there is none.
  std::optional<Placement> NextPlacement(std::string_view name) const;
  // With all points placed, sets the network up with their coordinates and derives the directions
  // of the measured lines, as grid azimuths.
  bool FinishTrilateration();

  // The traverses of the last closure errors or computation without orientation, and the row of a
  // point in them; null pointers when it has none.
  const std::vector<Traverse>& Traverses() const { return m_traverses.Traverses(); }
  TraverseTable::Row TraverseRow(std::string_view name) const { return m_traverses.Find(name); }

  // -1 when the network has no such point.
  std::int32_t IndexOfPoint(std::string_view name) const { return m_layout->IndexOfPoint(name); }
  // Null when the network has no point of that number; -1 is what was placed under no point's name.
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
  // Whether the last computation held the point as a control point.
  bool IsControl(std::string_view name) const;
  const AdjParam& Param() const { return m_param; }
  // The a-posteriori standard error of unit weight of the last adjustment.
  double Sigma0() const { return m_sigma0; }
  // Observations minus unknowns, of the last adjustment.
  std::int32_t Redundancy() const { return m_redundancy; }
  // False for a point whose coordinates the last computation could not reach.
  bool IsReached(std::string_view name) const;

 private:
  bool HasCoordinates(std::int32_t slot) const;
  void WriteBackCoordinates();
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
  void AnalysePattern();
  void NumberOrientations();
  void AddDirectionSet(const DirectionSet& set);
  void HoldKnownPoints();
  double SolveAndUpdate();
  double CalcResiduals();
  double CalcDistanceResiduals();
  std::int32_t OrientationCount() const;
  void CountRedundancy(std::int32_t orientations);
  void CalcPointPrecision();
  PlaneObs* FindWorst(double critical);

  UnknownPattern MakeDistancePattern() const;
  bool BuildDistanceNormals();

  bool IsPlaced(std::int32_t point) const;
  std::vector<NamedCircle> CirclesThrough(std::int32_t slot) const;
  std::optional<Placement> BestPlacement(std::int32_t slot) const;
  void DeriveDirections();

  // As filled by the network build.
  std::shared_ptr<const NetworkLayout> m_layout = std::make_shared<NetworkLayout>();
  std::vector<PointData> m_points;      // by point number
  std::int32_t m_orientationCount = 0;  // stations in the store, with directions or without
  AdjParam m_param = kDefaultParam;
  std::int32_t m_unplacedCount = 0;       // new points not yet placed by trilateration
  std::optional<PointData> m_strayPoint;  // what was placed under a name that no point has

  // As made by the set-up step and the computations after it.
  std::shared_ptr<const NetworkLayout> m_net = m_layout;  // the layout that the rest refers to
  std::vector<PlaneResult> m_coords;  // by slot: working coordinates, then precision
  ObservationTables m_obs;            // with use flags and residuals
  NormalEquations m_normal;
  std::vector<std::int32_t> m_setOrder;       // the sets and
  std::vector<std::int32_t> m_distanceOrder;  // distances in the order in which they are added
  std::int32_t m_firstUnknownPoint = 0;       // the point that owns the unknowns 0 and 1
  bool m_directionsDerived = false;  // the directions come from coordinates, not from readings
  std::int32_t m_redundancy = 0;
  double m_sigma0 = 0.0;

  // As made by the last traverse computation; stays through the others.
  TraverseTable m_traverses;
};

}  // namespace brenu
