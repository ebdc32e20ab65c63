#include "report/comparison.h"

#include <cmath>
#include <limits>
#include <numbers>
#include <string_view>
#include <unordered_map>

#include "core/distributions.h"

namespace brenu {

namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
constexpr double kProbability = 0.95;

double Square(double value) { return value * value; }

// What turns the variances of a report into cofactors.
double UnitVariance(const NetworkReport& network) {
  return Square(network.isScaled ? network.m0 : network.m0Apriori);
}

// The variance factor of both and its degrees of freedom; 0 for the a-priori one.
struct Pooled {
  double variance;
  double freedom;
};

Pooled Pool(const NetworkReport& a, const NetworkReport& b) {
  double sum = 0.0;
  double freedom = 0.0;
  for (const NetworkReport* network : {&a, &b}) {
    if (!network->isScaled) continue;
    sum += network->redundancy * Square(network->m0);
    freedom += network->redundancy;
  }
  return freedom > 0.0 ? Pooled{sum / freedom, freedom} : Pooled{Square(a.m0Apriori), 0.0};
}

// Cofactors of a point from its ellipse; zero for control.
struct Cofactors {
  double xx = 0.0, yy = 0.0, xy = 0.0;
};

Cofactors CofactorsOf(const PlanePointRow& row, double variance) {
  if (row.control) return {};
  const double t = row.ellipse.t * std::numbers::pi / 180.0;
  const double e = Square(row.ellipse.e) / variance;
  const double f = Square(row.ellipse.f) / variance;
  return {e * Square(std::cos(t)) + f * Square(std::sin(t)),
          e * Square(std::sin(t)) + f * Square(std::cos(t)), (e - f) * std::sin(t) * std::cos(t)};
}

double TestOf(const PlaneDifferenceRow& d, const Cofactors& a, const Cofactors& b) {
  const double xx = a.xx + b.xx;
  const double yy = a.yy + b.yy;
  const double xy = a.xy + b.xy;
  const double determinant = xx * yy - Square(xy);
  if (!(determinant > 0.0)) return kNone;
  return (yy * Square(d.dx) - 2.0 * xy * d.dx * d.dy + xx * Square(d.dy)) / (2.0 * determinant);
}

template <typename Row>
using ByName = std::unordered_map<std::string_view, const Row*>;

template <typename Row>
ByName<Row> NamesOf(const std::vector<Row>& rows) {
  ByName<Row> names;
  for (const Row& row : rows) names.emplace(row.name, &row);
  return names;
}

// Calls use(first, second) for the points of both, and lists the names of the others.
template <typename Row, typename Use>
void Walk(const std::vector<Row>& first, const std::vector<Row>& second, Comparison& all, Use use) {
  const ByName<Row> before = NamesOf(first);
  const ByName<Row> after = NamesOf(second);
  for (const Row& row : first) {
    const auto at = after.find(row.name);
    if (at == after.end()) {
      all.onlyFirst.push_back(row.name);
    } else {
      use(row, *at->second);
    }
  }
  for (const Row& row : second) {
    if (!before.contains(row.name)) all.onlySecond.push_back(row.name);
  }
}

void ComparePlane(const PlaneReport& first, const PlaneReport& second, Comparison& all) {
  const Pooled pooled = Pool(first, second);
  const double critical = pooled.freedom > 0.0 ? FQuantile(kProbability, 2.0, pooled.freedom)
                                               : ChiSquareQuantile(kProbability, 2.0) / 2.0;
  Walk(first.points, second.points, all, [&](const PlanePointRow& a, const PlanePointRow& b) {
    PlaneDifferenceRow row{a.name, b.x - a.x, b.y - a.y, 0.0, kNone, kNone, false};
    row.length = std::hypot(row.dx, row.dy);
    if (!(a.control && b.control)) {
      row.test =
          TestOf(row, CofactorsOf(a, UnitVariance(first)), CofactorsOf(b, UnitVariance(second))) /
          pooled.variance;
      row.critical = critical;
    }
    row.significant = row.test > row.critical;
    all.plane.push_back(std::move(row));
  });
}

void CompareHeights(const HeightsReport& first, const HeightsReport& second, Comparison& all) {
  const Pooled pooled = Pool(first, second);
  const double p = (1.0 + kProbability) / 2.0;
  const double critical =
      pooled.freedom > 0.0 ? StudentQuantile(p, pooled.freedom) : StandardNormalQuantile(p);
  const auto cofactor = [](const HeightRow& row, const HeightsReport& report) {
    return row.control ? 0.0 : Square(row.mh) / UnitVariance(report);
  };
  Walk(first.points, second.points, all, [&](const HeightRow& a, const HeightRow& b) {
    HeightDifferenceRow row{a.name, b.h - a.h, kNone, kNone, false};
    const double q = cofactor(a, first) + cofactor(b, second);
    if (q > 0.0) {
      row.test = std::fabs(row.dh) / std::sqrt(q * pooled.variance);
      row.critical = critical;
    }
    row.significant = row.test > row.critical;
    all.heights.push_back(std::move(row));
  });
}

}  // namespace

Comparison Compare(const Report& first, const Report& second) {
  Comparison all;
  if (first.plane && second.plane) ComparePlane(*first.plane, *second.plane, all);
  if (first.heights && second.heights) CompareHeights(*first.heights, *second.heights, all);
  return all;
}

}  // namespace brenu
