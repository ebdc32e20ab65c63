// The tables of a report: which columns each has, what programs call them and people read above
// them. All renderings walk these lists, so that they agree in every number.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "report/comparison.h"
#include "report/report.h"
#include "review/language.h"
#include "review/misfits.h"

namespace brenu {

// How a value is shown to people; programs get it as it is.
enum class Shown : std::uint8_t {
  kText,
  kKey,   // one of few, worded for people
  kFlag,  // "yes" or nothing
  kPass,
  kWhole,
  kMetres,       // 4 decimals
  kKilometres,   // of metres, 3 decimals
  kMillimetres,  // of metres, 2 decimals
  kDegrees,      // degrees and minutes of an azimuth
  kSeconds,      // 2 decimals
  kNumber,       // 3 decimals
  kTest,         // 2 decimals
  kValue,        // observed or adjusted: metres, or degrees, minutes and seconds
  kError         // residual or error of it: millimetres or arc-seconds
};

using Cell = std::variant<double, std::int64_t, bool, std::string_view>;

template <typename Row>
struct Column {
  const char* key;
  Words heading;
  Shown shown;
  Cell (*cell)(const Row& row);
};

// Each table lists its columns in the order in which they are shown.
template <typename Row>
std::span<const Column<Row>> ColumnsOf();
template <>
std::span<const Column<PlanePointRow>> ColumnsOf();
template <>
std::span<const Column<HeightRow>> ColumnsOf();
template <>
std::span<const Column<ObservationRow>> ColumnsOf();
template <>
std::span<const Column<GroupRow>> ColumnsOf();
template <>
std::span<const Column<TakenOutRow>> ColumnsOf();
template <>
std::span<const Column<ControlRow>> ColumnsOf();
template <>
std::span<const Column<RelativeEllipseRow>> ColumnsOf();
template <>
std::span<const Column<ClosureRow>> ColumnsOf();
template <>
std::span<const Column<PlaneDifferenceRow>> ColumnsOf();
template <>
std::span<const Column<HeightDifferenceRow>> ColumnsOf();
template <>
std::span<const Column<Misfit>> ColumnsOf();

// A cell for programs, with all digits; `absent` for what there is not, and texts as appendText
// puts them.
void AppendCell(std::string& out, const Cell& cell, std::string_view absent,
                void (*appendText)(std::string& out, std::string_view text));

// A cell for people; "-" for what there is not.
std::string Text(const Cell& cell, Shown shown, bool isAngle, Language language);

// The same of a row, by the kind of its observation if it has one.
template <typename Row>
std::string TextOf(const Column<Row>& column, const Row& row, Language language) {
  bool isAngle = false;
  if constexpr (requires { IsAngle(row.kind); }) isAngle = IsAngle(row.kind);
  return Text(column.cell(row), column.shown, isAngle, language);
}

// Whether it is a standard error of a control point, which has none.
template <typename Row>
bool IsOfControl(const Column<Row>& column, const Row& row) {
  if constexpr (requires { row.control; }) {
    return row.control && column.shown != Shown::kMetres && column.shown > Shown::kPass;
  }
  return false;
}

}  // namespace brenu
