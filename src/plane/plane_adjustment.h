#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "core/finding.h"
#include "core/normal_equations.h"
#include "core/outlier_test.h"
#include "core/rules.h"
#include "plane/coordinates.h"
#include "plane/line_equation.h"
#include "plane/observation_tables.h"
#include "plane/plane_obs_id.h"
#include "plane/snooping_record.h"

namespace brenu {

// What the adjustment found for one observation, in the units of the public getters.
struct PlaneObsResult {
  double observed, residual, adjusted, apriori;
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

// One computation on a plane network and its results, on arrays: coordinates by name (slot),
// observations in walk order.  The unknowns are X and Y of point i at 2i and 2i + 1 and then one
// orientation unknown a direction set.  Results keep the network, parameters included, that they
// were computed from.
class PlaneAdjustment {
 public:
  PlaneAdjustment() = default;  // without results
  // Control points have their coordinates, new points none.  The second argument is for comparing
  // the two ways to store normal equations.
  explicit PlaneAdjustment(std::shared_ptr<const PlaneNet> net,
                           std::int32_t mostPackedUnknowns = kMostPackedUnknowns);
  // For a computation by the rules of textbooks.
  PlaneAdjustment(std::shared_ptr<const PlaneNet> net, RuleSet rules);

  // Fails when a new point cannot be reached.
  Outcome CalcApproxCoordinates();
  // Whether these coordinates are all that has been computed: a classic computation of the network
  // may go on from them.
  bool IsPlacedOnly() const { return m_isPlacedOnly; }
  // Least-squares adjustment of coordinates and orientation unknowns.
  Outcome Adjust();
  // The same with one Gauss-Newton step a round, taking out the observation with the largest test
  // value as long as it exceeds the two-sided critical value of the level of significance.  Each
  // round is announced.
  Outcome DataSnooping(double alpha, const std::function<void(int)>& announceRound = {});
  // By the rules of textbooks: approximate coordinates without order of growth, and damped passes
  // until nothing changes any more.  Points that the observations do not determine are left out,
  // each with a warning; fails when none is left, and when the passes do not converge.
  Outcome AdjustAsTextbook();
  // Approximate coordinates alone.
  Outcome ApproximateAsTextbook();
  // The same with data snooping: as long as the largest standardised residual of those that
  // others check exceeds the critical value, its observation is taken out; at the end each is tried
  // again.  A control point that explains the misfit better than any observation ends it.
  Outcome SnoopAsTextbook(const OutlierTest& test,
                          const std::function<void(int)>& announceRound = {});

  // Adjusts distances alone, with these parameters, on the coordinates as they are: known points
  // are no unknowns, and neither directions nor azimuths take part.
  Outcome AdjustDistances(const AdjParam& param);

  // Puts the points where trilateration placed them and derives the directions of the measured
  // lines, as grid azimuths.
  void TakePlacedPoints(const Table<PointNo, Position>& positions);
  // Gives a point coordinates.
  void SetCoordinates(Slot slot, const Position& position);
  // Keeps the coordinates that points have now as approximate ones, for others those stored.
  void KeepApproximateCoordinates();

  const PlaneNet& Net() const { return *m_net; }
  const AdjParam& Param() const { return m_param; }
  const Coordinates& WorkingCoordinates() const { return m_coords; }
  const ObservationTables& Observations() const { return m_obs; }
  // What was kept as approximate coordinates; empty as long as they could not be computed.
  const Table<PointNo, Position>& ApproximateCoordinates() const { return m_approximate; }

  // In the order in which they were taken out by the rules of textbooks.
  const std::vector<TakenOut>& AllTakenOut() const { return m_takenOut; }
  std::size_t UntestedCount() const { return m_untested; }
  // Of the control points that observations touch and other control checks, ascending; after an
  // adjustment by the rules of textbooks.
  const std::vector<ControlFit>& ControlFits() const { return m_controlFits; }

  // Empty when the computation had no such point or observation.
  std::optional<PlaneResult> ResultOfPoint(std::string_view name) const;
  std::optional<PlaneObsResult> ResultOfDirection(std::string_view station,
                                                  std::string_view target) const;
  std::optional<PlaneObsResult> ResultOfDistance(std::string_view station,
                                                 std::string_view target) const;
  std::optional<PlaneObsResult> ResultOfAzimuth(std::string_view station,
                                                std::string_view target) const;
  std::optional<LinePrecision> PrecisionOfLine(std::string_view station,
                                               std::string_view target) const;
  // Of the position of the second point relative to the first: x and y are the coordinate
  // differences.  They are the ends of a sight or a pair that the network was asked for.  Empty
  // between control points.
  std::optional<PlaneResult> PrecisionBetween(Slot fromSlot, Slot toSlot) const;
  // Whether the observations did not determine the point, so that it has no results.
  bool IsLeftOut(PointNo point) const { return m_isLeftOut.Has(point) && m_isLeftOut[point] != 0; }
  // Whether the computation held the point as a control point.
  bool IsControl(std::string_view name) const;
  // Of the observations of the last adjustment, by kinds in the order of the enumeration, each in
  // walk order; those that a point left out makes useless are missing.  Empty without an
  // adjustment.
  std::vector<PlaneObsCheck> ObservationChecks() const;
  // The a-posteriori standard error of unit weight.
  double Sigma0() const { return m_sigma0; }
  // Observations minus unknowns.
  std::int32_t Redundancy() const { return m_redundancy; }

 private:
  // The X unknown of the point of that name; negative when the point is held, or there is none.
  std::int32_t UnknownOf(Slot slot) const;

  // Derivatives in arc-seconds per metre.
  LineEquation DirectionCoefficients(Slot from, Slot to) const;
  // Derivatives without unit.
  LineEquation DistanceCoefficients(Slot from, Slot to) const;
  double DistanceError(double length) const { return m_param.MS + m_param.MR * length; }

  Outcome BuildNormals();
  const PlaneObs* FindUnknownName() const;
  UnknownPattern MakePattern() const;
  void AnalysePattern();
  void NumberOrientations();
  void AddDirections();
  SightNo AddDirectionSet(const DirectionSet& set, EquationList& equations);
  void AddDistance(const PlaneObs& o, EquationList& equations) const;
  void HoldKnownPoints();
  double SolveAndUpdate();
  double CalcResiduals();
  double CalcDistanceResiduals();
  double SumOfDirections() const;
  std::int32_t OrientationCount() const;
  void CountRedundancy(std::int32_t orientations);
  void CalcPointPrecision();
  double PrecisionScale() const;
  std::vector<double> TestValues() const;
  PlaneObs* FindWorst(double critical);
  Outcome ExplainResult() const;
  Finding ExplainNotFinite() const;

  // Of an observation, with the orientation unknown of its set; negative for none.
  PlaneObsCheck CheckOf(PlaneKind kind, const PlaneObs& o, std::int32_t orientation) const;

  // Rules of textbooks.
  Outcome PlaceAndConverge(bool withoutGrossErrors);
  void TakeOutGrossErrors();
  Findings PlacePoints();
  Findings LeaveOut(const std::vector<std::int32_t>& unknowns);
  void ExcludeObservations();
  bool HasNewPoint() const;
  Outcome Converge();
  void HoldFirmly();
  Findings SolveAndLeaveOut();
  bool StepDamped(std::span<const double> step, double& pvv);
  // Whether a coordinate takes corrections.
  bool Moves(std::int32_t unknown) const;
  void Move(std::span<const double> step, double part);
  double LargestCorrection(std::span<const double> step) const;
  std::vector<double> RightHandSide() const;
  double EffectOn(std::span<const Term> terms, std::span<const double> product,
                  double weight) const;
  double CalcExactResiduals();
  // Of the observations in use, or of all when none is.
  double OrientationOf(const DirectionSet& set) const;
  std::int32_t CountOnce() const;
  std::vector<ControlFit> FitControl() const;
  double FreeCorrection(PointNo point, bool isX, double correction) const;
  void RefineControlMisfit(Finding& misfit);
  bool IsFreed(std::int32_t unknown) const { return unknown == m_freed; }
  Outcome FinishAsTextbook();
  class GrossErrors;
  class Snooped;

  UnknownPattern MakeDistancePattern() const;
  Outcome BuildDistanceNormals();
  void DeriveDirections();

  // `observed` in dd.mmss, as it is stored.
  PlaneObsResult AngleResult(const PlaneObs& o, double observed) const;

  std::shared_ptr<const PlaneNet> m_net = std::make_shared<PlaneNet>();
  AdjParam m_param = kDefaultParam;
  RuleSet m_rules = RuleSet::kClassic;
  Table<PointNo, char> m_isLeftOut;  // by the rules of textbooks; empty otherwise
  Table<PointNo, std::pair<double, double>> m_holding;  // weights that hold X and Y of control
  std::vector<TakenOut> m_takenOut;
  std::size_t m_untested = 0;  // observations that data snooping could not test
  std::vector<ControlFit> m_controlFits;
  std::int32_t m_freed = -1;  // a coordinate of a control point that is an unknown for once
  Coordinates m_coords;       // working coordinates, then with precision
  bool m_isPlacedOnly = false;
  Table<PointNo, Position> m_approximate;
  ObservationTables m_obs;  // with use flags and residuals
  NormalEquations m_normal;
  std::vector<std::size_t> m_setOrder;       // the sets and
  std::vector<std::size_t> m_distanceOrder;  // distances in the order in which they are added
  PointNo m_firstUnknownPoint{0};            // the point that owns the unknowns 0 and 1
  bool m_directionsDerived = false;  // the directions come from coordinates, not from readings
  SightNo m_turnedDirection;         // the first that was reduced a full circle off
  std::int32_t m_redundancy = 0;
  double m_sigma0 = 0.0;
};

}  // namespace brenu
