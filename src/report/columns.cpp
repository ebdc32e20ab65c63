#include "report/columns.h"

#include <cmath>

#include "core/text_number.h"
#include "review/text.h"

namespace brenu {

namespace {

constexpr Words kYes = {"yes", "是"};
constexpr Words kPasses = {"passes", "合格"};
constexpr Words kFails = {"fails", "超限"};

Cell Number(double value) { return value; }
Cell Whole(std::int64_t value) { return value; }
Cell Name(const std::string& name) { return std::string_view(name); }

const char* KeyOf(Checked checked) {
  constexpr const char* const kKeys[] = {"well", "weak", "not"};
  return kKeys[static_cast<int>(checked)];
}
const char* KeyOf(ClosureRow::Kind kind) {
  return kind == ClosureRow::Kind::kTraverse ? "traverse" : "levelling";
}

template <typename Row>
constexpr Cell KindCell(const Row& row) {
  return std::string_view(KeyOf(row.kind));
}

// Keys of programs that people read as words.
constexpr struct {
  std::string_view key;
  Words words;
} kKeyWords[] = {{KeyOf(ObsKind::kDirection), WordsOf(ObsKind::kDirection)},
                 {KeyOf(ObsKind::kDistance), WordsOf(ObsKind::kDistance)},
                 {KeyOf(ObsKind::kAzimuth), WordsOf(ObsKind::kAzimuth)},
                 {KeyOf(ObsKind::kHeightDifference), WordsOf(ObsKind::kHeightDifference)},
                 {"traverse", {"traverse", "导线"}},
                 {"levelling", {"levelling", "水准"}},
                 {"well", {"", ""}},
                 {"weak", {"weakly", "弱"}},
                 {"not", {"not", "无"}}};

void AppendTwoDigits(std::string& text, long long number) {
  if (number < 10) text += '0';
  text += std::to_string(number);
}

// Degrees, minutes and seconds with a decimal; 360 degrees are 0.
std::string DegreesMinutesSecondsOf(double degrees) {
  if (!std::isfinite(degrees)) return "-";
  long long tenths = std::llround(degrees * 36000.0) % (360LL * 36000);
  if (tenths < 0) tenths += 360LL * 36000;
  std::string text = std::to_string(tenths / 36000);
  text += ' ';
  AppendTwoDigits(text, tenths / 600 % 60);
  text += ' ';
  AppendTwoDigits(text, tenths / 10 % 60);
  text += '.';
  return text += std::to_string(tenths % 10);
}

std::string DegreesMinutesOf(double degrees) {
  if (!std::isfinite(degrees)) return "-";
  const long long minutes = std::llround(degrees * 60.0);
  std::string text = std::to_string(minutes / 60);
  text += ' ';
  AppendTwoDigits(text, minutes % 60);
  return text;
}

std::string NumberText(double value, Shown shown, bool isAngle) {
  switch (shown) {
    case Shown::kMetres:
      return Fixed(value, 4);
    case Shown::kKilometres:
      return Fixed(value / 1000.0, 3);
    case Shown::kMillimetres:
      return Fixed(value * 1000.0, 2);
    case Shown::kDegrees:
      return DegreesMinutesOf(value);
    case Shown::kSeconds:
    case Shown::kTest:
      return Fixed(value, 2);
    case Shown::kValue:
      return isAngle ? DegreesMinutesSecondsOf(value) : Fixed(value, 4);
    case Shown::kError:
      return Fixed(isAngle ? value : value * 1000.0, 2);
    default:
      return Fixed(value, 3);
  }
}

// Of rows with an ellipse.
template <typename Row>
constexpr Column<Row> kEllipseE = {
    "e", {"e (mm)", "E (mm)"}, Shown::kMillimetres, [](const Row& r) {
      return Number(r.ellipse.e);
    }};
template <typename Row>
constexpr Column<Row> kEllipseF = {
    "f", {"f (mm)", "F (mm)"}, Shown::kMillimetres, [](const Row& r) {
      return Number(r.ellipse.f);
    }};
template <typename Row>
constexpr Column<Row> kEllipseT = {
    "t", {"t (deg min)", "T (度 分)"}, Shown::kDegrees, [](const Row& r) {
      return Number(r.ellipse.t);
    }};
template <typename Row>
constexpr Column<Row> kEllipseE95 = {
    "e95", {"e 95 % (mm)", "E 95% (mm)"}, Shown::kMillimetres, [](const Row& r) {
      return Number(r.ellipse.e95);
    }};
template <typename Row>
constexpr Column<Row> kEllipseF95 = {
    "f95", {"f 95 % (mm)", "F 95% (mm)"}, Shown::kMillimetres, [](const Row& r) {
      return Number(r.ellipse.f95);
    }};

constexpr Column<PlanePointRow> kPlanePoints[] = {
    {"name", {"Point", "点名"}, Shown::kText, [](const auto& r) { return Name(r.name); }},
    {"control", {"Control", "已知"}, Shown::kFlag, [](const auto& r) { return Cell(r.control); }},
    {"x", {"X (m)", "X (m)"}, Shown::kMetres, [](const auto& r) { return Number(r.x); }},
    {"y", {"Y (m)", "Y (m)"}, Shown::kMetres, [](const auto& r) { return Number(r.y); }},
    {"mx", {"mx (mm)", "mx (mm)"}, Shown::kMillimetres, [](const auto& r) { return Number(r.mx); }},
    {"my", {"my (mm)", "my (mm)"}, Shown::kMillimetres, [](const auto& r) { return Number(r.my); }},
    {"mp", {"mp (mm)", "mp (mm)"}, Shown::kMillimetres, [](const auto& r) { return Number(r.mp); }},
    kEllipseE<PlanePointRow>,
    kEllipseF<PlanePointRow>,
    kEllipseT<PlanePointRow>,
    kEllipseE95<PlanePointRow>,
    kEllipseF95<PlanePointRow>,
};

constexpr Column<HeightRow> kHeights[] = {
    {"name", {"Point", "点名"}, Shown::kText, [](const auto& r) { return Name(r.name); }},
    {"control", {"Control", "已知"}, Shown::kFlag, [](const auto& r) { return Cell(r.control); }},
    {"h", {"H (m)", "H (m)"}, Shown::kMetres, [](const auto& r) { return Number(r.h); }},
    {"mh", {"mH (mm)", "mH (mm)"}, Shown::kMillimetres, [](const auto& r) { return Number(r.mh); }},
    {"h95",
     {"95 % (mm)", "95% (mm)"},
     Shown::kMillimetres,
     [](const auto& r) { return Number(r.mh95); }},
};

constexpr Column<ObservationRow> kObservations[] = {
    {"kind", {"Kind", "类型"}, Shown::kKey, KindCell<ObservationRow>},
    {"from", {"From", "测站"}, Shown::kText, [](const auto& r) { return Name(r.from); }},
    {"to", {"To", "照准点"}, Shown::kText, [](const auto& r) { return Name(r.to); }},
    {"observed",
     {"Observed", "观测值"},
     Shown::kValue,
     [](const auto& r) { return Number(r.observed); }},
    {"sigma",
     {"s (mm, \")", "σ (mm, ″)"},
     Shown::kError,
     [](const auto& r) { return Number(r.sigma); }},
    {"residual",
     {"v (mm, \")", "v (mm, ″)"},
     Shown::kError,
     [](const auto& r) { return Number(r.residual); }},
    {"adjusted",
     {"Adjusted", "平差值"},
     Shown::kValue,
     [](const auto& r) { return Number(r.adjusted); }},
    {"sigma_adjusted",
     {"s adj (mm, \")", "平差值 σ"},
     Shown::kError,
     [](const auto& r) { return Number(r.sigmaAdjusted); }},
    {"redundancy", {"r", "r"}, Shown::kNumber, [](const auto& r) { return Number(r.redundancy); }},
    {"w", {"w", "w"}, Shown::kTest, [](const auto& r) { return Number(r.w); }},
    {"tau", {"tau", "τ"}, Shown::kTest, [](const auto& r) { return Number(r.tau); }},
    {"error",
     {"-v/r (mm, \")", "-v/r (mm, ″)"},
     Shown::kError,
     [](const auto& r) { return Number(r.error); }},
    {"mde",
     {"MDE (mm, \")", "MDE (mm, ″)"},
     Shown::kError,
     [](const auto& r) { return Number(r.mde); }},
    {"effect",
     {"Effect (mm)", "影响 (mm)"},
     Shown::kMillimetres,
     [](const auto& r) { return Number(r.effect); }},
    {"checked",
     {"Checked", "检核"},
     Shown::kKey,
     [](const auto& r) { return Cell(std::string_view(KeyOf(r.checked))); }},
    {"exceeds", {"Exceeds", "超限"}, Shown::kFlag, [](const auto& r) { return Cell(r.exceeds); }},
    {"removed", {"Taken out", "剔除"}, Shown::kFlag, [](const auto& r) { return Cell(r.removed); }},
};

constexpr Column<GroupRow> kGroups[] = {
    {"kind", {"Kind", "类型"}, Shown::kKey, KindCell<GroupRow>},
    {"count", {"Count", "个数"}, Shown::kWhole, [](const auto& r) { return Whole(r.count); }},
    {"pvv", {"[pvv]", "[pvv]"}, Shown::kTest, [](const auto& r) { return Number(r.pvv); }},
    {"redundancy",
     {"Redundancy", "多余观测"},
     Shown::kTest,
     [](const auto& r) { return Number(r.redundancy); }},
    {"variance_factor",
     {"Variance factor", "方差因子"},
     Shown::kNumber,
     [](const auto& r) { return Number(r.varianceFactor); }},
};

constexpr Column<TakenOutRow> kTakenOut[] = {
    {"kind", {"Kind", "类型"}, Shown::kKey, KindCell<TakenOutRow>},
    {"from", {"From", "测站"}, Shown::kText, [](const auto& r) { return Name(r.from); }},
    {"to", {"To", "照准点"}, Shown::kText, [](const auto& r) { return Name(r.to); }},
    {"w", {"w", "w"}, Shown::kTest, [](const auto& r) { return Number(r.w); }},
    {"error",
     {"Error (mm, \")", "粗差 (mm, ″)"},
     Shown::kError,
     [](const auto& r) { return Number(r.error); }},
};

constexpr Column<ControlRow> kControl[] = {
    {"name", {"Point", "点名"}, Shown::kText, [](const auto& r) { return Name(r.name); }},
    {"coordinate",
     {"Coordinate", "坐标"},
     Shown::kText,
     [](const auto& r) { return Name(r.coordinate); }},
    {"correction",
     {"Correction (mm)", "改正 (mm)"},
     Shown::kMillimetres,
     [](const auto& r) { return Number(r.correction); }},
    {"w", {"w", "w"}, Shown::kTest, [](const auto& r) { return Number(r.w); }},
};

constexpr Column<RelativeEllipseRow> kRelative[] = {
    {"from", {"From", "起点"}, Shown::kText, [](const auto& r) { return Name(r.from); }},
    {"to", {"To", "终点"}, Shown::kText, [](const auto& r) { return Name(r.to); }},
    kEllipseE<RelativeEllipseRow>,
    kEllipseF<RelativeEllipseRow>,
    kEllipseT<RelativeEllipseRow>,
    kEllipseE95<RelativeEllipseRow>,
    kEllipseF95<RelativeEllipseRow>,
};

constexpr Column<ClosureRow> kClosures[] = {
    {"kind", {"Kind", "类型"}, Shown::kKey, KindCell<ClosureRow>},
    {"route", {"Route", "路线"}, Shown::kText, [](const auto& r) { return Name(r.route); }},
    {"length",
     {"Length (km)", "长度 (km)"},
     Shown::kKilometres,
     [](const auto& r) { return Number(r.length); }},
    {"misclosure",
     {"Misclosure (mm)", "闭合差 (mm)"},
     Shown::kMillimetres,
     [](const auto& r) { return Number(r.misclosure); }},
    {"limit",
     {"Limit (mm)", "限差 (mm)"},
     Shown::kMillimetres,
     [](const auto& r) { return Number(r.limit); }},
    {"angle_misclosure",
     {"Angles (\")", "角度 (″)"},
     Shown::kSeconds,
     [](const auto& r) { return Number(r.angleMisclosure); }},
    {"angle_limit",
     {"Limit (\")", "限差 (″)"},
     Shown::kSeconds,
     [](const auto& r) { return Number(r.angleLimit); }},
    {"relative",
     {"1 : N", "1 : N"},
     Shown::kWhole,
     [](const auto& r) { return Whole(r.relative); }},
    {"passed", {"Result", "结论"}, Shown::kPass, [](const auto& r) { return Cell(r.passed); }},
};

}  // namespace

template <>
std::span<const Column<PlanePointRow>> ColumnsOf() {
  return kPlanePoints;
}
template <>
std::span<const Column<HeightRow>> ColumnsOf() {
  return kHeights;
}
template <>
std::span<const Column<ObservationRow>> ColumnsOf() {
  return kObservations;
}
template <>
std::span<const Column<GroupRow>> ColumnsOf() {
  return kGroups;
}
template <>
std::span<const Column<TakenOutRow>> ColumnsOf() {
  return kTakenOut;
}
template <>
std::span<const Column<ControlRow>> ColumnsOf() {
  return kControl;
}
template <>
std::span<const Column<RelativeEllipseRow>> ColumnsOf() {
  return kRelative;
}
template <>
std::span<const Column<ClosureRow>> ColumnsOf() {
  return kClosures;
}

void AppendCell(std::string& out, const Cell& cell, std::string_view absent,
                void (*appendText)(std::string& out, std::string_view text)) {
  if (const auto* number = std::get_if<double>(&cell)) {
    if (std::isfinite(*number)) {
      AppendShortest(out, *number);
    } else {
      out += absent;
    }
  } else if (const auto* whole = std::get_if<std::int64_t>(&cell)) {
    out += std::to_string(*whole);
  } else if (const auto* flag = std::get_if<bool>(&cell)) {
    out += *flag ? "true" : "false";
  } else {
    appendText(out, std::get<std::string_view>(cell));
  }
}

std::string Text(const Cell& cell, Shown shown, bool isAngle, Language language) {
  if (const auto* number = std::get_if<double>(&cell)) return NumberText(*number, shown, isAngle);
  if (const auto* whole = std::get_if<std::int64_t>(&cell)) {
    return *whole > 0 ? std::to_string(*whole) : "-";
  }
  if (const auto* flag = std::get_if<bool>(&cell)) {
    if (shown == Shown::kPass) return (*flag ? kPasses : kFails).In(language);
    return *flag ? kYes.In(language) : "";
  }
  const std::string_view text = std::get<std::string_view>(cell);
  if (shown != Shown::kKey) return Printable(text);
  for (const auto& [key, words] : kKeyWords) {
    if (text == key) return words.In(language);
  }
  return std::string(text);
}

}  // namespace brenu
