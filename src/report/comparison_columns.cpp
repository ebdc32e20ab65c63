#include "report/columns.h"

namespace brenu {

namespace {

constexpr Words kPoint = {"Point", "点名"};
constexpr Words kTest = {"Test", "检验量"};
constexpr Words kCritical = {"Critical", "临界值"};
constexpr Words kSignificant = {"Significant", "显著"};

constexpr Column<PlaneDifferenceRow> kPlaneDifferences[] = {
    {"name", kPoint, Shown::kText, [](const auto& r) { return Cell(std::string_view(r.name)); }},
    {"dx", {"dX (mm)", "dX (mm)"}, Shown::kMillimetres, [](const auto& r) { return Cell(r.dx); }},
    {"dy", {"dY (mm)", "dY (mm)"}, Shown::kMillimetres, [](const auto& r) { return Cell(r.dy); }},
    {"length",
     {"Length (mm)", "长度 (mm)"},
     Shown::kMillimetres,
     [](const auto& r) { return Cell(r.length); }},
    {"test", kTest, Shown::kTest, [](const auto& r) { return Cell(r.test); }},
    {"critical", kCritical, Shown::kTest, [](const auto& r) { return Cell(r.critical); }},
    {"significant", kSignificant, Shown::kFlag, [](const auto& r) { return Cell(r.significant); }}};

constexpr Column<HeightDifferenceRow> kHeightDifferences[] = {
    {"name", kPoint, Shown::kText, [](const auto& r) { return Cell(std::string_view(r.name)); }},
    {"dh", {"dH (mm)", "dH (mm)"}, Shown::kMillimetres, [](const auto& r) { return Cell(r.dh); }},
    {"test", kTest, Shown::kTest, [](const auto& r) { return Cell(r.test); }},
    {"critical", kCritical, Shown::kTest, [](const auto& r) { return Cell(r.critical); }},
    {"significant", kSignificant, Shown::kFlag, [](const auto& r) { return Cell(r.significant); }}};

}  // namespace

template <>
std::span<const Column<PlaneDifferenceRow>> ColumnsOf() {
  return kPlaneDifferences;
}
template <>
std::span<const Column<HeightDifferenceRow>> ColumnsOf() {
  return kHeightDifferences;
}

}  // namespace brenu
