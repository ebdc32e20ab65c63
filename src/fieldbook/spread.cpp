#include "fieldbook/spread.h"

#include <algorithm>
#include <cmath>

#include "core/angles.h"

namespace brenu {

namespace {

// Below these nothing is worth a word: a line of 100 m and a centring of a millimetre.
constexpr double kSmallDirection = 5.0 / kRho;
constexpr double kSmallDistance = 0.005;
// What is proposed at least, and without repetition.
constexpr double kLeastDirection = 1.0;  // arc-seconds
constexpr double kLeastDistance = 0.001;
constexpr double kRatioWithSpread = 2e-6;

}  // namespace

void Spread::Sum::Add(const std::vector<Deviation>& added, double withFreedom, double ofSets) {
  if (added.empty() || withFreedom <= 0.0) return;
  for (const Deviation& deviation : added) {
    squares += deviation.value * deviation.value;
    deviations.push_back(deviation);
  }
  freedom += withFreedom;
  sets += ofSets;
  groups += 1.0;
}

std::optional<double> Spread::Sum::Error() const {
  if (freedom <= 0.0) return std::nullopt;
  return std::sqrt(squares / freedom);
}

std::optional<double> Spread::Sum::ErrorOfMean() const {
  const std::optional<double> error = Error();
  return error ? std::optional(*error / std::sqrt(sets / groups)) : std::nullopt;
}

void Spread::AddDirections(const std::vector<Deviation>& deviations, double freedom, double sets) {
  m_directions.Add(deviations, freedom, sets);
}

void Spread::AddDistances(const std::vector<Deviation>& deviations) {
  const auto count = static_cast<double>(deviations.size());
  m_distances.Add(deviations, count - 1.0, count);
}

void Spread::Add(const Spread& other) {
  const auto add = [](Sum& sum, const Sum& more) {
    sum.squares += more.squares;
    sum.freedom += more.freedom;
    sum.sets += more.sets;
    sum.groups += more.groups;
  };
  add(m_directions, other.m_directions);
  add(m_distances, other.m_distances);
}

APriori Spread::Proposal() const {
  APriori proposal = kUsualErrors;
  if (const auto error = m_directions.ErrorOfMean()) {
    proposal.direction = std::max(*error * kRho, kLeastDirection);
  }
  if (const auto error = m_distances.ErrorOfMean()) {
    proposal.distance = std::max(*error, kLeastDistance);
    proposal.distanceRatio = kRatioWithSpread;
  }
  return proposal;
}

Findings Spread::Outliers(const PointNames& names) const {
  constexpr double kFactor = 3.0;
  Findings found;
  const auto test = [&](const Sum& sum, double small, double unit, Code code) {
    const double redundancy = sum.freedom / static_cast<double>(sum.deviations.size());
    for (const Deviation& d : sum.deviations) {
      // Without what the deviation itself adds, v^2 / r of the redundancy number r.
      const double others = std::max(sum.squares - d.value * d.value / redundancy, 0.0);
      const double error = std::sqrt(others / std::max(sum.freedom - 1.0, 1.0) * redundancy);
      if (std::fabs(d.value) <= std::max(kFactor * error, small)) continue;
      found.push_back({code,
                       Severity::kWarning,
                       d.line,
                       {},
                       {names[d.station], names[d.target]},
                       {static_cast<double>(d.set), d.value * unit}});
    }
  };
  test(m_directions, kSmallDirection, kRho, BRENU_SET_OUT_OF_SPREAD);
  test(m_distances, kSmallDistance, 1.0, BRENU_DISTANCE_OUT_OF_SPREAD);
  return found;
}

}  // namespace brenu
