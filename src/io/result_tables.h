#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "job/adjustment_context.h"

namespace brenu {

// A point with coordinates or heights of some kind; the type is that of the store.
struct PointRow {
  std::string_view name;
  double x, y, h;  // metres
  std::int32_t type;
};

// Results under the names they belong to.
template <typename Result>
struct NamedPoint {
  std::string_view name;
  Result result;
};

template <typename Result>
struct NamedLine {
  std::string_view from, to;
  Result result;
};

using PlaneRow = NamedPoint<PlaneResult>;
using VerticalRow = NamedPoint<VerticalResult>;
using HeightRow = NamedLine<HeightObsResult>;
using PlaneObsRow = NamedLine<PlaneObsResult>;
using PrecisionRow = NamedLine<LinePrecision>;

// The tables of the result report, in its order.
enum class ResultTable {
  kApproximate,
  kPlane,
  kVertical,
  kHeight,
  kDirection,
  kLength,
  kAzimuth,
  kPrecision,
  kStartPoint,
  kControlPoint
};

// The results of the last computations as rows: points in ascending index, observations in the
// order of the store.  Tables of networks that the last build did not include are empty.  Names
// point into the store.
struct ResultTables {
  std::vector<PointRow> approximate;
  std::vector<PlaneRow> plane;
  std::vector<VerticalRow> vertical;
  std::vector<HeightRow> heights;
  std::vector<PlaneObsRow> directions;
  std::vector<PlaneObsRow> lengths;
  std::vector<PlaneObsRow> azimuths;
  std::vector<PrecisionRow> precision;  // pairs of plane control points have none
  std::vector<PointRow> start;          // as entered
  std::vector<PointRow> control;        // with adjusted values where there are any
  // The table in which a row's result could not be had: it ends before that row, and those after it
  // are empty.
  std::optional<ResultTable> failedIn;
};

ResultTables MakeResultTables(const AdjustmentContext& context);

// Of all tables together.
std::size_t RowCount(const ResultTables& tables);

// Whether the report has a part on heights: with distances only the levelling network is built but
// not computed.
bool ReportsHeights(const AdjustmentContext& context);

}  // namespace brenu
