#include "report/statistics.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/distributions.h"

namespace brenu {

namespace {

constexpr double kConfidence = 0.95;
constexpr double kNotChecked = 0.01;
constexpr double kWeakly = 0.05;
// Of the shift that a test at 0.1 % finds with a power of 80 % (W. Baarda).
constexpr double kNonCentrality = 4.13;

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

Checked CheckedBy(double redundancy) {
  if (!(redundancy >= kNotChecked)) return Checked::kNot;
  return redundancy < kWeakly ? Checked::kWeakly : Checked::kWell;
}

}  // namespace

ObservationRow CheckedRow(ObsKind kind, const ObservationCheck& check, double ratio,
                          bool isScaled) {
  ObservationRow row{};
  row.kind = kind;
  row.sigma = check.sigma;
  row.residual = check.residual;
  row.sigmaAdjusted = check.sigmaAdjusted * (isScaled ? ratio : 1.0);
  row.redundancy = check.Redundancy();
  row.checked = CheckedBy(row.redundancy);
  row.removed = !check.isInUse;
  row.w = row.tau = row.error = row.mde = row.effect = kNone;
  if (row.removed) {
    row.w = row.residual / check.SigmaResidual();
    row.error = -row.residual;
  } else if (row.checked != Checked::kNot) {
    row.w = row.residual / check.SigmaResidual();
    row.error = -row.residual / row.redundancy;
    row.mde = kNonCentrality * row.sigma / std::sqrt(row.redundancy);
    row.effect = row.mde * check.effect;
  }
  if (isScaled) row.tau = row.w / ratio;
  return row;
}

std::vector<GroupRow> GroupsOf(std::span<const ObservationRow> rows) {
  std::vector<GroupRow> groups;
  for (int k = 0; k < kObsKindCount; ++k) {
    groups.push_back({static_cast<ObsKind>(k), 0, 0.0, 0.0, kNone});
  }
  for (const ObservationRow& row : rows) {
    if (row.removed) continue;
    GroupRow& group = groups[static_cast<std::size_t>(row.kind)];
    ++group.count;
    group.pvv += std::pow(row.residual / row.sigma, 2);
    group.redundancy += row.redundancy;
  }
  std::erase_if(groups, [](const GroupRow& group) { return group.count == 0; });
  for (GroupRow& group : groups) {
    if (group.redundancy >= kWeakly) group.varianceFactor = group.pvv / group.redundancy;
  }
  return groups;
}

std::optional<VarianceTest> TestVariance(std::span<const ObservationRow> rows,
                                         std::int32_t redundancy) {
  if (redundancy <= 0) return std::nullopt;
  constexpr double kTail = (1.0 - kConfidence) / 2.0;
  VarianceTest test{};
  for (const ObservationRow& row : rows) {
    if (!row.removed) test.statistic += std::pow(row.residual / row.sigma, 2);
  }
  test.lower = ChiSquareQuantile(kTail, redundancy);
  test.upper = ChiSquareQuantile(1.0 - kTail, redundancy);
  test.passed = test.statistic >= test.lower && test.statistic <= test.upper;
  return test;
}

void MarkSuspects(NetworkReport& report) {
  const auto isTested = [](const ObservationRow& row) {
    return !row.removed && row.checked == Checked::kWell;
  };
  std::vector<ObservationRow>& rows = report.observations;
  const auto tests = static_cast<double>(std::count_if(rows.begin(), rows.end(), isTested));
  // 1 - 0.95^(1/n) without cancellation, halved for two sides.
  const double tail = -0.5 * std::expm1(std::log(kConfidence) / std::max(tests, 1.0));
  report.criticalW = -StandardNormalQuantile(tail);
  // With a redundancy of 1 all tau are 1.
  report.criticalTau = report.redundancy > 1 ? TauQuantile(1.0 - tail, report.redundancy) : kNone;
  for (ObservationRow& row : rows) {
    row.exceeds = isTested(row) && std::fabs(row.w) > report.criticalW;
  }
}

double EllipseFactor(std::int32_t redundancy, bool isScaled) {
  return std::sqrt(isScaled ? 2.0 * FQuantile(kConfidence, 2.0, redundancy)
                            : ChiSquareQuantile(kConfidence, 2.0));
}

double HeightFactor(std::int32_t redundancy, bool isScaled) {
  constexpr double kUpper = (1.0 + kConfidence) / 2.0;
  return isScaled ? StudentQuantile(kUpper, redundancy) : StandardNormalQuantile(kUpper);
}

Finding LikelyMisreading(ObsKind kind, double observed, double error, double sigma) {
  struct Unit {
    Code code;
    double size;  // arc-seconds or metres
    double shown;
  };
  static constexpr Unit kAngles[] = {{BRENU_LIKE_OTHER_FACE, 648000.0, 1.0},
                                     {BRENU_LIKE_DEGREES, 36000.0, 10.0},
                                     {BRENU_LIKE_DEGREES, 3600.0, 1.0},
                                     {BRENU_LIKE_MINUTES, 600.0, 10.0},
                                     {BRENU_LIKE_MINUTES, 60.0, 1.0}};
  static constexpr Unit kLengths[] = {{BRENU_LIKE_METRES, 100.0, 100.0},
                                      {BRENU_LIKE_METRES, 10.0, 10.0},
                                      {BRENU_LIKE_METRES, 1.0, 1.0},
                                      {BRENU_LIKE_METRES, 0.1, 0.1},
                                      {BRENU_LIKE_METRES, 0.01, 0.01}};
  // Four standard errors, and less than one chance in ten that an arbitrary error looks so.
  const double tolerance = 4.0 * sigma;
  constexpr double kFoot = 0.3048;
  if (!IsAngle(kind) &&
      std::fabs(error - observed * (1.0 - kFoot)) < std::max(tolerance, observed * 1e-4)) {
    return Note(BRENU_LIKE_FEET);
  }
  for (const Unit& unit : IsAngle(kind) ? std::span<const Unit>(kAngles) : kLengths) {
    const double count = std::round(std::fabs(error) / unit.size);
    if (count < 1.0 || count > 9.0 || 2.0 * tolerance > 0.1 * unit.size) continue;
    if (std::fabs(std::fabs(error) - count * unit.size) > tolerance) continue;
    return Note(unit.code, {}, {count * unit.shown});
  }
  return Note(BRENU_NOTHING);
}

}  // namespace brenu
