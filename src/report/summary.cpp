#include "report/summary.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <string_view>

#include "report/columns.h"
#include "report/text_table.h"
#include "review/sentence.h"
#include "review/text.h"

namespace brenu {

namespace {

constexpr double kMillimetres = 1000.0;

struct KindWords {
  ObsKind kind;
  Words worst;
};
constexpr KindWords kHeightKinds[] = {
    {ObsKind::kHeightDifference, {"worst residual of a height difference", "高差最大改正数"}}};
constexpr KindWords kPlaneKinds[] = {
    {ObsKind::kDistance, {"worst residual of a distance", "边长最大改正数"}},
    {ObsKind::kDirection, {"worst residual of a direction", "方向最大改正数"}},
    {ObsKind::kAzimuth, {"worst residual of an azimuth", "方位角最大改正数"}}};

// Columns: label, value, unit, remark.
class SummaryTable {
 public:
  SummaryTable(const Report& report, const NetworkReport& network, Language language)
      : m_report(report), m_network(network), m_language(language) {}

  void Add(const Words& label, std::string value, std::string unit = "", std::string remark = "") {
    m_table.AddRow({label.In(m_language), std::move(value), std::move(unit), std::move(remark)});
  }
  void AddCounts(std::span<const KindWords> kinds);
  void AddTest();
  void AddWorst(std::span<const KindWords> kinds);
  const char* In(const Words& words) const { return words.In(m_language); }
  std::string Text() const { return m_table.Text(); }

 private:
  const Report& m_report;
  const NetworkReport& m_network;
  Language m_language;
  TextTable m_table{"lrll"};
};

void SummaryTable::AddCounts(std::span<const KindWords> kinds) {
  std::set<std::string_view> stations;
  for (const ObservationRow& row : m_network.observations) stations.insert(row.from);
  Add({"control points", "已知点"}, std::to_string(m_network.controlPoints));
  Add({"new points", "待定点"}, std::to_string(m_network.newPoints));
  Add({"stations", "测站"}, std::to_string(stations.size()));
  std::size_t takenOut = 0;
  for (const auto& [kind, worst] : kinds) {
    std::size_t count = 0;
    std::size_t removed = 0;
    for (const ObservationRow& row : m_network.observations) {
      if (row.kind != kind) continue;
      ++count;
      removed += row.removed ? 1 : 0;
    }
    takenOut += removed;
    std::string remark = std::to_string(removed);
    remark += In({" of them taken out", " 个被剔除"});
    Add(PluralOf(kind), std::to_string(count), "", removed == 0 ? "" : remark);
  }
  // As the classic rules count it in the plane.
  const bool countsTwice = takenOut > 0 && kinds.size() > 1 && !m_report.rules.AreTextbook();
  Add({"redundancy", "多余观测数"}, std::to_string(m_network.redundancy), "",
      countsTwice ? In({"each observation taken out is subtracted twice", "剔除者减两次"}) : "");
}

void SummaryTable::AddTest() {
  if (!m_network.test) return;
  const VarianceTest& t = *m_network.test;
  std::string remark = In({"within ", "区间 "});
  remark += Fixed(t.lower, 1);
  remark += In({" to ", " 至 "});
  remark += Fixed(t.upper, 1);
  remark += In({", chi-square 5 % two-sided", "，χ² 双侧 5%"});
  if (!t.passed) remark.insert(0, In({"not ", "不在"}));
  Add({"global test, [pvv] a priori", "整体检验 [pvv]"}, Fixed(t.statistic, 1), "", remark);
}

void SummaryTable::AddWorst(std::span<const KindWords> kinds) {
  for (const auto& [kind, label] : kinds) {
    const ObservationRow* worst = nullptr;
    for (const ObservationRow& row : m_network.observations) {
      if (row.kind != kind || row.removed) continue;
      if (worst == nullptr || std::fabs(row.residual) > std::fabs(worst->residual)) worst = &row;
    }
    if (worst == nullptr) continue;
    const bool isAngle = IsAngle(kind);
    Add(label, Fixed(worst->residual * (isAngle ? 1.0 : kMillimetres), 2), isAngle ? "\"" : "mm",
        Line(worst->from, worst->to));
  }
}

// A warning in place of the standard error of unit weight where it means nothing; empty otherwise.
std::string WithoutPrecision(const NetworkReport& network, Language language) {
  if (network.newPoints == 0) {
    return Words{"warning: there is no new point, so it cannot be computed",
                 "警告：没有待定点，无法计算"}
        .In(language);
  }
  if (network.isScaled) return "";
  std::string text = Words{"warning: the redundancy is ", "警告：多余观测数为 "}.In(language);
  text += std::to_string(network.redundancy);
  return text +=
         Words{", so it cannot be computed; errors are a priori", "，无法计算；精度为先验值"}.In(
             language);
}

constexpr Words kUnitWeight = {"standard error of unit weight", "单位权中误差"};
constexpr Words kLargestError = {"largest point error", "最大点位误差"};

// That of the rows with the largest error.
template <typename Row>
void AddLargest(SummaryTable& table, const std::vector<Row>& points, double Row::*error) {
  const Row* largest = nullptr;
  for (const Row& row : points) {
    if (row.control || !std::isfinite(row.*error)) continue;
    if (largest == nullptr || row.*error > largest->*error) largest = &row;
  }
  if (largest == nullptr) return;
  table.Add(kLargestError, Fixed(largest->*error * kMillimetres, 2), "mm",
            Printable(largest->name));
}

// The columns of points that the screen shows.
template <typename Row>
std::string PointsTable(const std::vector<Row>& points, std::span<const std::string_view> keys,
                        Language language) {
  std::vector<const Column<Row>*> columns;
  for (const Column<Row>& column : ColumnsOf<Row>()) {
    if (std::find(keys.begin(), keys.end(), column.key) != keys.end()) columns.push_back(&column);
  }
  TextTable table('l' + std::string(columns.size() - 1, 'r'));
  std::vector<std::string> cells;
  for (const auto* column : columns) cells.emplace_back(column->heading.In(language));
  table.AddRow(cells);
  for (const Row& row : points) {
    cells.clear();
    for (const auto* column : columns) {
      cells.push_back(IsOfControl(*column, row) ? "-" : TextOf(*column, row, language));
    }
    if (row.control) cells.front() += " *";
    table.AddRow(cells);
  }
  return table.Text();
}

}  // namespace

std::string HeightsSummary(const Report& report, Language language) {
  const HeightsReport& heights = *report.heights;
  SummaryTable table(report, heights, language);
  table.AddCounts(kHeightKinds);
  const std::string warning = WithoutPrecision(heights, language);
  if (warning.empty()) {
    std::string remark = table.In({"for 1 km of levelling, a priori ", "每公里，先验 "});
    remark += Fixed(heights.m0Apriori * kMillimetres, 2);
    table.Add(kUnitWeight, Fixed(heights.m0 * kMillimetres, 2), "mm", remark);
  } else {
    table.Add(kUnitWeight, "-", "", warning);
  }
  table.AddTest();
  AddLargest(table, heights.points, &HeightRow::mh);
  table.AddWorst(kHeightKinds);
  return table.Text();
}

std::string PlaneSummary(const Report& report, Language language) {
  const PlaneReport& plane = *report.plane;
  const auto kinds = report.param.format == kFormatDistancesOnly
                         ? std::span<const KindWords>(kPlaneKinds).first(1)
                         : std::span<const KindWords>(kPlaneKinds);
  SummaryTable table(report, plane, language);
  table.AddCounts(kinds);
  const std::string warning = WithoutPrecision(plane, language);
  if (warning.empty()) {
    std::string remark = "m0 = ";
    remark += Fixed(plane.m0, 3);
    remark += table.In({" times the a-priori MO = ", " × 先验 MO = "});
    remark += Fixed(report.param.MO, 2);
    remark += '"';
    table.Add(kUnitWeight, Fixed(plane.m0 * report.param.MO, 2), "\"", remark);
  } else {
    table.Add(kUnitWeight, "-", "", warning);
  }
  table.AddTest();
  AddLargest(table, plane.points, &PlanePointRow::mp);
  table.AddWorst(kinds);
  return table.Text();
}

std::string HeightsTable(const HeightsReport& report, Language language) {
  constexpr std::string_view kKeys[] = {"name", "h", "mh"};
  return PointsTable(report.points, kKeys, language);
}

std::string PlaneTable(const PlaneReport& report, Language language) {
  constexpr std::string_view kKeys[] = {"name", "x", "y", "mx", "my", "mp", "e", "f", "t"};
  return PointsTable(report.points, kKeys, language);
}

std::string TakenOutTable(const Report& report, Language language) {
  TextTable table("rlllrrl");
  std::vector<std::string> cells = {Words{"No.", "序号"}.In(language)};
  for (const Column<TakenOutRow>& column : ColumnsOf<TakenOutRow>()) {
    cells.emplace_back(column.heading.In(language));
  }
  table.AddRow(cells);
  int count = 0;
  std::size_t untested = 0;
  const auto add = [&](const NetworkReport& network) {
    untested += network.untested;
    for (const TakenOutRow& row : network.takenOut) {
      cells = {std::to_string(++count)};
      for (const Column<TakenOutRow>& column : ColumnsOf<TakenOutRow>()) {
        cells.push_back(TextOf(column, row, language));
      }
      std::string remark;
      if (row.misreading.code != BRENU_NOTHING) remark = SentenceOf(row.misreading, language);
      for (const ObservationName& other : row.alternatives) {
        remark += remark.empty() ? "" : "; ";
        remark += Words{"or it is ", "或为 "}.In(language);
        remark += std::string(WordsOf(other.kind).In(language)) + ' ' + Line(other.from, other.to);
      }
      cells.push_back(std::move(remark));
      table.AddRow(cells);
    }
  };
  if (report.heights) add(*report.heights);
  if (report.plane) add(*report.plane);
  std::string text =
      count == 0
          ? Words{"Data snooping took no observation out\n", "粗差探测未剔除观测值\n"}.In(language)
          : Words{"Taken out by data snooping: ", "粗差探测剔除："}.In(language) +
                std::to_string(count) + '\n' + table.Text();
  if (untested > 0) {
    text += std::to_string(untested);
    text +=
        Words{" observations are checked too little to be tested\n", " 个观测值检核不足，未检验\n"}
            .In(language);
  }
  return text;
}

}  // namespace brenu
