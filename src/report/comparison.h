// Two adjustments of the same points side by side: two epochs, or two variants of the data.
#pragma once

#include <string>
#include <vector>

#include "report/report.h"

namespace brenu {

// Second minus first, metres.  `test` and `critical`: the point has moved significantly when the
// first exceeds the second; not a number for points that are control in both or have no precision.
struct PlaneDifferenceRow {
  std::string name;
  double dx, dy, length;
  double test, critical;
  bool significant;
};
struct HeightDifferenceRow {
  std::string name;
  double dh;
  double test, critical;
  bool significant;
};

struct Comparison {
  std::vector<PlaneDifferenceRow> plane;
  std::vector<HeightDifferenceRow> heights;
  std::vector<std::string> onlyFirst, onlySecond;  // names
};

// Each point is tested by itself at 5 %, both adjustments taken as independent, with the variance
// factor of both together (congruency test of single points: H. Pelzer, Zur Analyse geodaetischer
// Deformationsmessungen):
//   plane    T^2 = d^T (Qa + Qb)^-1 d / (2 s0^2), against F(2, ra + rb)
//   heights  t = |d| / (s0 sqrt(qa + qb)), against Student's t(ra + rb)
// Without redundancy the a-priori variance factor and chi-square / 2, or the normal distribution,
// stand in.  Variants that share observations are not independent: the test then says too seldom
// that they differ.
Comparison Compare(const Report& first, const Report& second);

}  // namespace brenu
