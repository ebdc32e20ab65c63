// What there is to say about an adjusted job, as rows of numbers: made once, worded and formatted
// by the renderings.  Lengths, coordinates and their errors are metres, angles decimal degrees,
// residuals and errors of angles arc-seconds; not a number stands for what there is not.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/finding.h"
#include "core/records.h"
#include "core/rules.h"
#include "review/observation_kind.h"

namespace brenu {

// Half axes of an error ellipse and the azimuth of the greater one, 0 to 180 degrees.
struct EllipseRow {
  double e, f, t;
  double e95, f95;  // of the region that holds the point with 95 %
};

struct PlanePointRow {
  std::string name;
  bool control;
  double x, y;
  double mx, my, mp;  // standard errors of the coordinates and of the position; 0 of control
  EllipseRow ellipse;
};

struct HeightRow {
  std::string name;
  bool control;
  double h, mh;
  double mh95;  // half width of the interval that holds the height with 95 %
  std::optional<std::pair<double, double>> map;  // X and Y of the file, where it gives them
};

// How well the others check an observation, by its redundancy number.
enum class Checked : std::uint8_t {
  kWell,
  kWeakly,  // below 0.05: its test says little
  kNot      // below 0.01, or taken out
};

struct ObservationRow {
  ObsKind kind;
  std::string from, to;
  double observed, sigma;  // a priori
  double residual;         // adjusted minus observed
  double adjusted, sigmaAdjusted;
  double redundancy;  // number, 0 to 1
  double w;           // residual by its a-priori standard error (Baarda)
  double tau;         // by its a-posteriori standard error (Pope)
  double error;       // -v / r, the error that would explain the residual
  double mde;     // the least error that the test finds with 80 % at 0.1 %: 4.13 sigma / sqrt(r)
  double effect;  // metres by which an undetected error of that size moves an end point
  Checked checked;
  bool removed;  // by data snooping; its residual is what it would have
  bool exceeds;  // w beyond the critical value of the verdict
};

struct GroupRow {
  ObsKind kind;
  std::int32_t count;  // in use
  double pvv;          // sum of the squared residuals, each by its a-priori standard error
  double redundancy;
  double varianceFactor;  // pvv / redundancy: 1 where the a-priori errors of the kind are right
};

struct TakenOutRow {
  ObsKind kind;
  std::string from, to;
  double w;                                   // when it was taken out
  double error;                               // observed minus adjusted without it
  std::vector<ObservationName> alternatives;  // whose tests cannot be told apart from this one's
  Finding misreading;                         // what the error looks like; no code for nothing
};

struct ControlRow {
  std::string name;
  std::string coordinate;  // "X", "Y" or "H"
  double correction;       // at which it would fit best
  double w;
};

struct RelativeEllipseRow {
  std::string from, to;
  EllipseRow ellipse;
};

struct ClosureRow {
  enum class Kind : std::uint8_t { kLevelling, kTraverse };
  Kind kind;
  std::string route;
  double length;      // of the route
  double misclosure;  // of heights or of the side lengths; the limit likewise
  double limit;
  double angleMisclosure, angleLimit;  // arc-seconds
  std::int32_t relative;               // N of 1:N, 0 for none
  bool passed;
};

// The global test of the standard error of unit weight, two-sided at 5 %.
struct VarianceTest {
  double statistic;  // [pvv] with a-priori errors
  double lower, upper;
  bool passed;
};

// What heights and plane have in common.
struct NetworkReport {
  double m0,
      m0Apriori;  // heights: metres for 1 km of levelling; plane: a multiple of MO, MS and MR
  std::int32_t redundancy;
  std::int32_t controlPoints, newPoints;  // newPoints with results
  bool isScaled;       // errors are a posteriori, with m0; else a priori, as nothing is redundant
  double factor95;     // from standard ellipse (plane) or error (heights) to 95 %; by F or Student
                       // when scaled, by chi-square or the normal distribution when not
  double criticalW;    // of the verdict, 5 % over all tests
  double criticalTau;  // the same of tau; not a number without redundancy
  std::optional<VarianceTest> test;  // none without redundancy
  std::vector<ObservationRow> observations;
  std::vector<GroupRow> groups;
  std::vector<TakenOutRow> takenOut;
  std::vector<ControlRow> control;
  std::size_t untested;  // by data snooping
};
struct HeightsReport : NetworkReport {
  std::vector<HeightRow> points;
};
struct PlaneReport : NetworkReport {
  std::vector<PlanePointRow> points;
  std::vector<RelativeEllipseRow> relative;
};

// Whether a surveyor may go on with the result.
struct Verdict {
  bool passed = true;
  Findings reasons;  // why not; the first is what to look at first
  Findings remarks;  // what is worth knowing all the same
  std::string next;  // the command that helps on
};

struct Report {
  std::string program;  // name and version
  std::string file;     // as it was given, UTF-8
  Rules rules;
  AdjParam param;
  Verdict verdict;
  Findings findings;
  std::optional<HeightsReport> heights;
  std::optional<PlaneReport> plane;
  std::vector<ClosureRow> closures;
};

}  // namespace brenu
