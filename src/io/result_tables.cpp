#include "io/result_tables.h"

#include <utility>

#include "core/parallel.h"

namespace brenu {

namespace {

// Builds the tables one after the other until a row fails.
class TableBuilder {
 public:
  explicit TableBuilder(const AdjustmentContext& context) : m_context(context) {
    for (const auto& [index, point] : context.store.Points()) m_points.push_back(&point);
    for (const auto& [from, targets] : context.store.Observations()) {
      for (const auto& [to, obs] : targets) m_lines.push_back({from, to, &obs});
    }
  }

  ResultTables Build() {
    const bool plane = HasPlane(m_context.netType);
    const bool level = ReportsHeights(m_context);
    const PlaneAdjustment& planeNet = m_context.plane.results;
    const LevelAdjustment& levelNet = m_context.level.results;

    Points(ResultTable::kApproximate, m_tables.approximate,
           [&](const PointData& p) { return Approximate(p); });
    if (plane) {
      Points(ResultTable::kPlane, m_tables.plane, [&](const PointData& p) {
        return Named<PlaneRow>(p, planeNet.ResultOfPoint(NameOf(p)));
      });
    }
    if (level) {
      Points(ResultTable::kVertical, m_tables.vertical, [&](const PointData& p) {
        return Named<VerticalRow>(p, levelNet.ResultOfPoint(NameOf(p)));
      });
      Lines(ResultTable::kHeight, m_tables.heights, IsLevelled,
            [&](auto from, auto to) { return levelNet.ResultOfObs(from, to); });
    }
    if (plane) {
      Lines(ResultTable::kDirection, m_tables.directions, HasDirection,
            [&](auto from, auto to) { return planeNet.ResultOfDirection(from, to); });
      Lines(ResultTable::kLength, m_tables.lengths, HasDistance,
            [&](auto from, auto to) { return planeNet.ResultOfDistance(from, to); });
      Lines(ResultTable::kAzimuth, m_tables.azimuths, HasAzimuth,
            [&](auto from, auto to) { return planeNet.ResultOfAzimuth(from, to); });
      Precision();
    }
    Points(ResultTable::kStartPoint, m_tables.start, [](const PointData& p) {
      return std::optional(PointRow{NameOf(p), p.x, p.y, p.h, p.type});
    });
    Points(ResultTable::kControlPoint, m_tables.control,
           [&](const PointData& p) { return Control(p); });
    return std::move(m_tables);
  }

 private:
  template <typename Row, typename Result>
  static std::optional<Row> Named(const PointData& p, const std::optional<Result>& result) {
    if (!result) return std::nullopt;
    return Row{NameOf(p), *result};
  }

  // A stored pair.
  struct Line {
    std::string_view from, to;
    const ObsData* obs;
  };

  // Looks the rows of a table up, some at a time side by side, until one fails: makeRow(item, rows)
  // adds the row of an item if it has one, and is false when that row cannot be had.
  template <typename Item, typename Row, typename MakeRow>
  void Collect(ResultTable table, const std::vector<Item>& items, std::vector<Row>& rows,
               MakeRow makeRow) {
    constexpr std::size_t kRows = 1024;  // by one thread
    if (m_tables.failedIn) return;
    struct Part {
      std::vector<Row> rows;
      bool isComplete = true;
    };
    std::vector<Part> parts((items.size() + kRows - 1) / kRows);
    ForEachPart(items.size(), kRows, [&](std::size_t begin, std::size_t end) {
      Part& part = parts[begin / kRows];
      for (std::size_t k = begin; k < end && part.isComplete; ++k) {
        part.isComplete = makeRow(items[k], part.rows);
      }
    });
    for (Part& part : parts) {
      rows.insert(rows.end(), part.rows.begin(), part.rows.end());
      std::vector<Row>().swap(part.rows);
      if (part.isComplete) continue;
      m_tables.failedIn = table;
      return;
    }
  }

  template <typename Row, typename MakeRow>
  void Points(ResultTable table, std::vector<Row>& rows, MakeRow makeRow) {
    Collect(table, m_points, rows, [&](const PointData* point, std::vector<Row>& to) {
      const std::optional<Row> row = makeRow(*point);
      if (row) to.push_back(*row);
      return row || IsLeftOut(NameOf(*point));
    });
  }

  template <typename Row, typename LookUp>
  void Lines(ResultTable table, std::vector<Row>& rows, bool (*has)(const ObsData&),
             LookUp lookUp) {
    Collect(table, m_lines, rows, [&](const Line& line, std::vector<Row>& to) {
      if (!has(*line.obs)) return true;
      const auto result = lookUp(line.from, line.to);
      if (result) to.push_back({line.from, line.to, *result});
      return result || IsLeftOut(line.from) || IsLeftOut(line.to);
    });
  }

  void Precision() {
    const PlaneAdjustment& net = m_context.plane.results;
    Collect(ResultTable::kPrecision, m_lines, m_tables.precision,
            [&](const Line& line, std::vector<PrecisionRow>& to) {
              if (net.IsControl(line.from) && net.IsControl(line.to)) return true;
              const auto result = net.PrecisionOfLine(line.from, line.to);
              if (result) to.push_back({line.from, line.to, *result});
              return result || IsLeftOut(line.from) || IsLeftOut(line.to);
            });
  }

  // Whether one of the networks left the point out: it has no rows then.
  bool IsLeftOut(std::string_view name) const {
    const PlaneAdjustment& plane = m_context.plane.results;
    const LevelAdjustment& level = m_context.level.results;
    return plane.IsLeftOut(plane.Net().layout.IndexOfPoint(name)) ||
           level.IsLeftOut(level.Net().layout.IndexOfPoint(name));
  }

  std::optional<PointRow> Approximate(const PointData& p) const {
    PointRow row{NameOf(p), p.x, p.y, p.h, p.type};
    if (HasPlane(m_context.netType)) {
      const PlanePart& plane = m_context.plane;
      const auto point = plane.points.FindPoint(plane.net->layout.IndexOfPoint(row.name).Number());
      if (!point) return std::nullopt;
      row.x = point->x;
      row.y = point->y;
    }
    if (ReportsHeights(m_context)) {
      const PointNo number = m_context.level.net->layout.IndexOfPoint(row.name);
      if (number.IsNone()) return std::nullopt;
      row.h = m_context.level.heights[number];
    }
    if (m_context.netType == kNoControl) return std::nullopt;
    return row;
  }

  std::optional<PointRow> Control(const PointData& p) const {
    PointRow row{NameOf(p), p.x, p.y, p.h, p.type};
    if (HasPlane(m_context.netType)) {
      const auto plane = m_context.plane.results.ResultOfPoint(row.name);
      if (!plane) return std::nullopt;
      row.x = plane->x;
      row.y = plane->y;
    }
    if (ReportsHeights(m_context)) {
      const auto level = m_context.level.results.ResultOfPoint(row.name);
      if (!level) return std::nullopt;
      row.h = level->height;
    }
    return row;
  }

  const AdjustmentContext& m_context;
  std::vector<const PointData*> m_points;  // ascending by index
  std::vector<Line> m_lines;               // in the order of the store
  ResultTables m_tables;
};

}  // namespace

ResultTables MakeResultTables(const AdjustmentContext& context) {
  return TableBuilder(context).Build();
}

std::size_t RowCount(const ResultTables& t) {
  return t.approximate.size() + t.plane.size() + t.vertical.size() + t.heights.size() +
         t.directions.size() + t.lengths.size() + t.azimuths.size() + t.precision.size() +
         t.start.size() + t.control.size();
}

bool ReportsHeights(const AdjustmentContext& context) {
  return HasLevelling(context.netType) && context.level.net->param.format != kFormatDistancesOnly;
}

}  // namespace brenu
