#include "io/result_tables.h"

#include "core/parallel.h"

namespace brenu {

namespace {

template <typename Row, typename Result>
std::optional<Row> Named(const PointData& p, const std::optional<Result>& result) {
  if (!result) return std::nullopt;
  return Row{NameOf(p), *result};
}

}  // namespace

ResultTables::ResultTables(const AdjustmentContext& context) : m_context(context) {
  for (const auto& [index, point] : context.store.Points()) m_points.push_back(&point);
  for (const auto& [from, targets] : context.store.Observations()) {
    for (const auto& [to, obs] : targets) m_lines.push_back({from, to, &obs});
  }
}

// Looks the rows of a table up, some at a time side by side, until one fails: makeRow(item, rows)
// adds the row of an item if it has one, and is false when that row cannot be had.
template <typename Row, typename Item, typename MakeRow>
std::vector<Row> ResultTables::Collect(const std::vector<Item>& items, MakeRow makeRow) {
  constexpr std::size_t kRows = 1024;  // by one thread
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
  std::vector<Row> rows;
  for (Part& part : parts) {
    rows.insert(rows.end(), part.rows.begin(), part.rows.end());
    std::vector<Row>().swap(part.rows);
    m_hasFailed = !part.isComplete;
    if (m_hasFailed) break;
  }
  return rows;
}

template <typename Row, typename MakeRow>
std::vector<Row> ResultTables::Points(MakeRow makeRow) {
  return Collect<Row>(m_points, [&](const PointData* point, std::vector<Row>& to) {
    const std::optional<Row> row = makeRow(*point);
    if (row) to.push_back(*row);
    return row || IsLeftOut(NameOf(*point));
  });
}

template <typename Row, typename HasRow, typename LookUp>
std::vector<Row> ResultTables::Lines(HasRow hasRow, LookUp lookUp) {
  return Collect<Row>(m_lines, [&](const Line& line, std::vector<Row>& to) {
    if (!hasRow(line)) return true;
    const auto result = lookUp(line.from, line.to);
    if (result) to.push_back({line.from, line.to, *result});
    return result || IsLeftOut(line.from) || IsLeftOut(line.to);
  });
}

// Whether one of the networks left the point out: it has no rows then.
bool ResultTables::IsLeftOut(std::string_view name) const {
  const PlaneAdjustment& plane = m_context.plane.results;
  const LevelAdjustment& level = m_context.level.results;
  return plane.IsLeftOut(plane.Net().layout.IndexOfPoint(name)) ||
         level.IsLeftOut(level.Net().layout.IndexOfPoint(name));
}

std::vector<PointRow> ResultTables::Approximate() {
  return Points<PointRow>([this](const PointData& p) { return ApproximateOf(p); });
}

std::vector<PlaneRow> ResultTables::Plane() {
  return Points<PlaneRow>([this](const PointData& p) {
    return Named<PlaneRow>(p, m_context.plane.results.ResultOfPoint(NameOf(p)));
  });
}

std::vector<VerticalRow> ResultTables::Vertical() {
  return Points<VerticalRow>([this](const PointData& p) {
    return Named<VerticalRow>(p, m_context.level.results.ResultOfPoint(NameOf(p)));
  });
}

std::vector<HeightRow> ResultTables::Heights() {
  return Lines<HeightRow>(
      [](const Line& line) { return IsLevelled(*line.obs); },
      [this](auto from, auto to) { return m_context.level.results.ResultOfObs(from, to); });
}

std::vector<PlaneObsRow> ResultTables::Directions() {
  return Lines<PlaneObsRow>(
      [](const Line& line) { return HasDirection(*line.obs); },
      [this](auto from, auto to) { return m_context.plane.results.ResultOfDirection(from, to); });
}

std::vector<PlaneObsRow> ResultTables::Lengths() {
  return Lines<PlaneObsRow>(
      [](const Line& line) { return HasDistance(*line.obs); },
      [this](auto from, auto to) { return m_context.plane.results.ResultOfDistance(from, to); });
}

std::vector<PlaneObsRow> ResultTables::Azimuths() {
  return Lines<PlaneObsRow>(
      [](const Line& line) { return HasAzimuth(*line.obs); },
      [this](auto from, auto to) { return m_context.plane.results.ResultOfAzimuth(from, to); });
}

std::vector<PrecisionRow> ResultTables::Precision() {
  const PlaneAdjustment& net = m_context.plane.results;
  return Lines<PrecisionRow>(
      [&](const Line& line) { return !net.IsControl(line.from) || !net.IsControl(line.to); },
      [&](auto from, auto to) { return net.PrecisionOfLine(from, to); });
}

std::vector<PointRow> ResultTables::Start() {
  return Points<PointRow>([](const PointData& p) {
    return std::optional(PointRow{NameOf(p), p.x, p.y, p.h, p.type});
  });
}

std::vector<PointRow> ResultTables::Control() {
  return Points<PointRow>([this](const PointData& p) { return ControlOf(p); });
}

std::optional<PointRow> ResultTables::ApproximateOf(const PointData& p) const {
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

std::optional<PointRow> ResultTables::ControlOf(const PointData& p) const {
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

bool ReportsHeights(const AdjustmentContext& context) {
  return HasLevelling(context.netType) && context.level.net->param.format != kFormatDistancesOnly;
}

}  // namespace brenu
