#include "fieldbook/sdr_fields.h"

#include <algorithm>

#include "fieldbook/units.h"

namespace brenu {

namespace {

// Of angle, length, pressure, temperature, order of coordinates, sense of the circle.  Some makers
// leave out blanks before them, so that they stand at the end of the line only.
std::string_view FlagsOf(std::string_view header) {
  constexpr std::size_t kFirst = 41;
  constexpr std::size_t kFewest = 5;
  constexpr std::size_t kMost = 6;
  const auto areFlags = [](std::string_view text) {
    return text.size() >= kFewest && text.find_first_not_of("0123456789") == text.npos;
  };
  const std::string_view inPlace = Trimmed(Columns(header, kFirst, kMost));
  if (areFlags(inPlace)) return inPlace;
  const std::string_view line = Trimmed(header);
  const std::size_t before = line.find_last_not_of("0123456789");
  std::string_view last = before == line.npos ? std::string_view{} : line.substr(before + 1);
  if (last.size() > kMost) last.remove_prefix(last.size() - kMost);
  return areFlags(last) ? last : std::string_view{};
}

}  // namespace

SdrUnits UnitsOfSdrHeader(std::string_view header) {
  SdrUnits units;
  units.layout = Columns(header, 5, 4) == "SDR2" ? kNarrowSdr : kWideSdr;
  const std::string_view flags = FlagsOf(header);
  const auto flag = [&](std::size_t place) { return place < flags.size() ? flags[place] : '1'; };
  units.isComplete = !flags.empty();
  units.angle = flag(0) == '2' ? kGon : flag(0) == '3' || flag(0) == '4' ? kMil : kDegree;
  units.length = flag(1) == '2' ? kFoot : 1.0;
  units.isEastFirst = flag(4) == '2';
  units.isCounterClockwise = flag(5) == '2';
  return units;
}

// The flag stands in column 51, or 52 where the text before it is too long; there a number may
// begin, too.
bool CountsFromHorizon(std::string_view instrument) {
  constexpr std::size_t kColumn = 51;
  const auto isFlag = [](std::string_view text) { return text == "1" || text == "2"; };
  const std::string_view behind = Trimmed(Columns(instrument, kColumn + 1, 2));
  return isFlag(behind) ? behind == "2" : Columns(instrument, kColumn, 1) == "2";
}

}  // namespace brenu
