// The numbers of tests that rows of a report share.
#pragma once

#include <span>
#include <vector>

#include "core/observation_check.h"
#include "report/report.h"

namespace brenu {

// Of an observation whose numbers come as the adjustment has them; `ratio` is m0 by its a-priori
// value, with which standard errors are scaled.  Its names and values are still to be set.
ObservationRow CheckedRow(ObsKind kind, const ObservationCheck& check, double ratio, bool isScaled);

// Sums by kinds, those that do not occur left out.
std::vector<GroupRow> GroupsOf(std::span<const ObservationRow> rows);

// None without redundancy.
std::optional<VarianceTest> TestVariance(std::span<const ObservationRow> rows,
                                         std::int32_t redundancy);

// Sets the critical values of |w| and |tau| when one network in twenty with as many tests may fail
// one by chance (Z. Sidak: each test at 1 - 0.95^(1/n)), and marks the observations whose w exceeds
// its.
void MarkSuspects(NetworkReport& report);

// From a standard ellipse to that of 95 %: sqrt(2 F(2, r)) with errors a posteriori, sqrt of
// chi-square (2) a priori.
double EllipseFactor(std::int32_t redundancy, bool isScaled);
// The same of one height: Student's t, or the normal distribution.
double HeightFactor(std::int32_t redundancy, bool isScaled);

// What an error in a value looks like: other units, whole degrees, minutes or metres; without a
// code for nothing.
Finding LikelyMisreading(ObsKind kind, double observed, double error, double sigma);

}  // namespace brenu
