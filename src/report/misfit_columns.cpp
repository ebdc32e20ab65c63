#include "core/angles.h"
#include "report/columns.h"

namespace brenu {

namespace {

constexpr Column<Misfit> kMisfits[] = {
    {"kind",
     {"Kind", "类型"},
     Shown::kKey,
     [](const auto& m) { return Cell(std::string_view(KeyOf(m.kind))); }},
    {"from",
     {"From", "测站"},
     Shown::kText,
     [](const auto& m) { return Cell(std::string_view(m.from)); }},
    {"to",
     {"To", "照准点"},
     Shown::kText,
     [](const auto& m) { return Cell(std::string_view(m.to)); }},
    {"observed",
     {"Observed", "观测值"},
     Shown::kValue,
     [](const auto& m) { return Cell(IsAngle(m.kind) ? m.observed / kPi * 180.0 : m.observed); }},
    {"difference",
     {"Difference (mm, \")", "差值 (mm, ″)"},
     Shown::kError,
     [](const auto& m) { return Cell(m.difference); }},
    {"ratio", {"By sigma", "与 σ 之比"}, Shown::kTest, [](const auto& m) {
       return Cell(m.ratio);
     }}};

}  // namespace

template <>
std::span<const Column<Misfit>> ColumnsOf() {
  return kMisfits;
}

}  // namespace brenu
