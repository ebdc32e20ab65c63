#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "core/network_layout.h"
#include "core/normal_equations.h"
#include "core/records.h"

namespace brenu {

// What the adjustment found for one levelled height difference, metres.
struct HeightObsResult {
  double residual, adjusted, sigma, weight;
  bool removed;  // taken out by data snooping
};

// The height network: bench marks, new points and levelled height differences.
//
// The network build fills it; every computation starts with the set-up step, which takes the
// network as filled and computes on arrays: heights by name (slot), everything else by observation
// number (the layout's sights) or point number.  Results of the last computation stay readable
// while the network is filled anew.
class LevelNet {
 public:
  // The argument is for comparing the two ways to store normal equations.
  explicit LevelNet(std::int32_t mostPackedUnknowns = kMostPackedUnknowns)
      : m_normal(mostPackedUnknowns) {}

  // Points are numbered in the order given, the first `knownPointCount` have known heights.
  // Records without both a length and a height difference are left out.
  void Fill(std::vector<PointData> points, std::int32_t knownPointCount,
            const ObservationMap& observations, const AdjParam& param);

  // Heights of all points by propagation along the observations; on success they are also written
  // into the point records.  False when there are no points or observations, or when a height
  // cannot be reached.
  bool CalcApproxHeight();

  // Least-squares adjustment of the heights with weights 1 km / L.
  bool LevelAdjust();

  // The same, taking out one observation a round as long as the largest standardised residual
  // exceeds the two-sided critical value of the level of significance; the a-priori standard error
  // is 1 mm for 1 km.  What is taken out has weight 0.
  bool LevelDataSnooping(double alpha);

  // Closure errors from the approximate heights, appended as records without flags: of the shortest
  // lines between any two bench marks, and of loops, in which each observation starts one loop at
  // most.  False when there can be none (fewer than two bench marks; a tree), for negative or
  // infinite line lengths, and for observations to names without a point.
  bool CalcLineCloseError(std::vector<CloseError>& records) const;
  bool CalcLoopCloseError(std::vector<CloseError>& records) const;

  // -1 when the network has no such point.
  std::int32_t IndexOfPoint(std::string_view name) const { return m_layout->IndexOfPoint(name); }
  const PointData& Point(std::int32_t number) const {
    return m_points[static_cast<std::size_t>(number)];
  }

  // Results of the last computation; empty when it had no such point or observation.
  std::optional<VerticalResult> ResultOfPoint(std::string_view name) const;
  std::optional<HeightObsResult> ResultOfObs(std::string_view station,
                                             std::string_view target) const;
  // The standard error of unit weight of the last adjustment: that of 1 km of levelling, metres.
  double Sigma0() const { return m_sigma0; }
  // Observations in use minus new heights, of the last computation.
  std::int32_t Redundancy() const;
  // False for a point whose height the last computation could not reach.
  bool IsReached(std::string_view name) const;

 private:
  bool PrepareLevel();
  UnknownPattern MakePattern() const;
  bool FormNormalEquation();
  void HoldKnownHeights();
  bool SolveHeight();
  double CalcVtPV();
  void SetSigma0(double vtpv);
  void CalcLevelPrecision();
  // The cofactor of the adjusted height difference.
  double CofactorOfDifference(const Sight& sight) const;

  struct WorstObs {
    std::int32_t observation = -1;
    double value = 0.0;
  };
  WorstObs FindWorst() const;
  bool IsRemoved(std::size_t observation) const;

  // As filled by the network build.
  std::shared_ptr<const NetworkLayout> m_layout = std::make_shared<NetworkLayout>();
  std::vector<PointData> m_points;  // by point number
  AdjParam m_param = kDefaultParam;

  // As made by the set-up step and the computations after it.
  std::shared_ptr<const NetworkLayout> m_net = m_layout;  // the layout that the rest refers to
  std::vector<double> m_heights;     // by slot, metres: approximate, then adjusted
  std::vector<double> m_weight;      // by observation: 1000 / L
  NormalEquations m_normal;          // one unknown a point: the correction of its height
  std::vector<double> m_solution;    // by point: that correction, metres
  std::vector<double> m_residual;    // by observation, metres
  std::vector<double> m_pointSigma;  // by point, metres
  std::vector<double> m_obsSigma;    // by observation, metres
  double m_sigma0 = 0.0;             // standard error of unit weight: 1 km of levelling, metres
};

}  // namespace brenu
