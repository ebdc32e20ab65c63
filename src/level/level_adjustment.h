#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "core/finding.h"
#include "core/normal_equations.h"
#include "core/observation_check.h"
#include "core/outlier_test.h"
#include "level/level_net.h"

namespace brenu {

// What the adjustment found for one levelled height difference, metres.
struct HeightObsResult {
  double observed, residual, adjusted, sigma, weight;
  bool removed;  // taken out by data snooping
};

// A height difference that data snooping by the rules of textbooks took out.
struct LevelTakenOut {
  SightNo sight;
  double testValue;                   // when it was taken out
  double error;                       // observed minus adjusted without it, metres
  std::vector<SightNo> alternatives;  // whose tests cannot be told apart from this one's
};

// How well a bench mark fits the lines: the correction to its height at which they would agree
// best, and its test value.
struct BenchMarkFit {
  PointNo point;
  double correction;  // metres
  double w;           // by its a-priori standard error
};

// One computation on a height network and its results, on arrays: heights by name (slot),
// everything else by observation (sight) or point.  Results keep the network, parameters
// included, that they were computed from.
class LevelAdjustment {
 public:
  LevelAdjustment() = default;  // without results
  // The second argument is for comparing the two ways to store normal equations.
  explicit LevelAdjustment(std::shared_ptr<const LevelNet> net,
                           std::int32_t mostPackedUnknowns = kMostPackedUnknowns);

  // For a computation by the rules of textbooks with that a-priori standard error of 1 km of
  // levelling, metres.
  LevelAdjustment(std::shared_ptr<const LevelNet> net, double apriori);

  // Heights of all points by propagation along the observations.  Fails without points or
  // observations, and when a height cannot be reached.
  Outcome CalcApproxHeight();
  // Least-squares adjustment of the heights with weights 1 km / L.
  Outcome LevelAdjust();
  // The same, taking out one observation a round as long as the largest standardised residual
  // exceeds the two-sided critical value of the level of significance; the a-priori standard error
  // is 1 mm for 1 km.  What is taken out has weight 0.  Each round is announced.
  Outcome LevelDataSnooping(double alpha, const std::function<void(int)>& announceRound = {});

  // By the rules of textbooks.  Points that no line connects with a bench mark are left out, each
  // with a warning; fails when none is left.
  Outcome AdjustAsTextbook();
  // Approximate heights alone.
  Outcome ApproximateAsTextbook();
  // The same with data snooping (core/snooping.h).
  Outcome SnoopAsTextbook(const OutlierTest& test,
                          const std::function<void(int)>& announceRound = {});
  // In the order in which they were taken out.
  const std::vector<LevelTakenOut>& AllTakenOut() const { return m_takenOut; }
  std::size_t UntestedCount() const { return m_untested; }
  // Of the bench marks that lines touch and other bench marks check, ascending; after an adjustment
  // by the rules of textbooks.
  const std::vector<BenchMarkFit>& BenchMarkFits() const { return m_benchMarkFits; }
  // Whether no line connects the point with a bench mark, so that it has no results.
  bool IsLeftOut(PointNo point) const { return m_isLeftOut.Has(point) && m_isLeftOut[point] != 0; }
  // A priori, metres for 1 km; 1 mm by the classic rules.
  double Apriori() const { return m_apriori; }

  const LevelNet& Net() const { return *m_net; }
  // By slot, metres: approximate, after an adjustment adjusted ones.
  const Table<Slot, double>& Heights() const { return m_heights; }
  // The heights after a successful CalcApproxHeight; empty before.
  const Table<PointNo, double>& ApproximateHeights() const { return m_approximate; }

  // Empty when the computation had no such point or observation.
  std::optional<VerticalResult> ResultOfPoint(std::string_view name) const;
  std::optional<HeightObsResult> ResultOfObs(std::string_view station,
                                             std::string_view target) const;
  // How the lines check each other, by sight, residuals of those left out not being numbers.  Empty
  // without an adjustment.
  Table<SightNo, ObservationCheck> ObservationChecks() const;
  // The standard error of unit weight of the adjustment: that of 1 km of levelling, metres.
  double Sigma0() const { return m_sigma0; }
  // Observations in use minus new heights.
  std::int32_t Redundancy() const;

 private:
  static constexpr double kClassicApriori = 0.001;
  enum class LineState : std::uint8_t { kInUse, kTakenOut, kLeftOut };

  bool PrepareLevel();
  Outcome ExplainUnreached() const;
  UnknownPattern MakePattern() const;
  Outcome FormNormalEquation();
  void HoldKnownHeights();
  Outcome SolveHeight();
  double CalcVtPV();
  void SetSigma0(double vtpv);
  void CalcLevelPrecision();
  double PrecisionScale() const;
  Outcome ExplainNotFinite() const;
  // The cofactor of the adjusted height difference.
  double CofactorOfDifference(const Sight& sight) const;

  // Rules of textbooks.
  Outcome FinishAsTextbook();
  Outcome Solve();
  std::vector<BenchMarkFit> FitBenchMarks() const;
  class Snooped;

  struct WorstObs {
    SightNo observation;
    double value = 0.0;
  };
  WorstObs FindWorst() const;
  bool IsRemoved(SightNo observation) const;

  std::shared_ptr<const LevelNet> m_net = std::make_shared<LevelNet>();
  Table<Slot, double> m_heights;         // metres: approximate, then adjusted
  Table<PointNo, double> m_approximate;  // metres
  Table<SightNo, double> m_weight;       // 1000 / L
  NormalEquations m_normal;              // one unknown a point: the correction of its height
  Table<PointNo, double> m_solution;     // that correction, metres
  Table<SightNo, double> m_residual;     // metres
  Table<PointNo, double> m_pointSigma;   // metres
  Table<SightNo, double> m_obsSigma;     // metres
  double m_sigma0 = 0.0;                 // metres
  double m_apriori = kClassicApriori;
  // By the rules of textbooks:
  Table<PointNo, char> m_isLeftOut;
  Table<SightNo, LineState> m_state;
  Table<PointNo, double> m_holding;  // weights that hold the bench marks
  std::vector<LevelTakenOut> m_takenOut;
  std::size_t m_untested = 0;
  std::vector<BenchMarkFit> m_benchMarkFits;
};

}  // namespace brenu
