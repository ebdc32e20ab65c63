#pragma once

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

// The results of the last computations as rows, looked up table by table when they are asked for:
// points in ascending index, observations in the order of the store.  Names point into the store.
class ResultTables {
 public:
  explicit ResultTables(const AdjustmentContext& context);

  std::vector<PointRow> Approximate();
  std::vector<PlaneRow> Plane();
  std::vector<VerticalRow> Vertical();
  std::vector<HeightRow> Heights();
  std::vector<PlaneObsRow> Directions();
  std::vector<PlaneObsRow> Lengths();
  std::vector<PlaneObsRow> Azimuths();
  std::vector<PrecisionRow> Precision();  // pairs of plane control points have none
  std::vector<PointRow> Start();          // as entered
  std::vector<PointRow> Control();        // with adjusted values where there are any

  // Whether a row's result could not be had: its table ended before that row.
  bool HasFailed() const { return m_hasFailed; }

 private:
  // A stored pair.
  struct Line {
    std::string_view from, to;
    const ObsData* obs;
  };

  template <typename Row, typename Item, typename MakeRow>
  std::vector<Row> Collect(const std::vector<Item>& items, MakeRow makeRow);
  template <typename Row, typename MakeRow>
  std::vector<Row> Points(MakeRow makeRow);
  template <typename Row, typename HasRow, typename LookUp>
  std::vector<Row> Lines(HasRow hasRow, LookUp lookUp);
  bool IsLeftOut(std::string_view name) const;
  std::optional<PointRow> ApproximateOf(const PointData& p) const;
  std::optional<PointRow> ControlOf(const PointData& p) const;

  const AdjustmentContext& m_context;
  std::vector<const PointData*> m_points;  // ascending by index
  std::vector<Line> m_lines;               // in the order of the store
  bool m_hasFailed = false;
};

// Whether the report has a part on heights: with distances only the levelling network is built but
// not computed.
bool ReportsHeights(const AdjustmentContext& context);

}  // namespace brenu
