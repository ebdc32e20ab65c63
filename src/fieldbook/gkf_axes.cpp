#include "fieldbook/gkf_axes.h"

#include <cmath>

#include "core/text_number.h"
#include "fieldbook/units.h"

namespace brenu {

namespace {

struct Named {
  std::string_view name;
  bool isSwapped;
  double bearing;  // degrees
};
constexpr Named kAxes[] = {{"ne", false, 0.0},   {"sw", false, 180.0}, {"es", false, 90.0},
                           {"wn", false, 270.0}, {"en", true, 0.0},    {"nw", true, 270.0},
                           {"se", true, 90.0},   {"ws", true, 180.0}};

std::optional<double> NumberIn(std::string_view text) {
  const ParsedDouble number = ParseWholeDouble(text);
  if (text.empty() || !number.isWhole || !std::isfinite(number.value)) return std::nullopt;
  return number.value;
}

}  // namespace

std::optional<GkfAxes> GkfAxesOf(std::string_view name) {
  for (const Named& axes : kAxes) {
    if (axes.name == name) return GkfAxes{axes.isSwapped, axes.bearing * kDegree};
  }
  return std::nullopt;
}

std::optional<double> GkfAngle(std::string_view text) {
  const bool isNegative = text.starts_with('-');
  const std::string_view amount = isNegative ? text.substr(1) : text;
  const std::size_t first = amount.find('-');
  const bool isExponent =
      first != amount.npos && first > 0 && (amount[first - 1] == 'e' || amount[first - 1] == 'E');
  if (first == amount.npos || isExponent) {
    const std::optional<double> gon = NumberIn(text);
    return gon ? std::optional(*gon * kGon) : std::nullopt;
  }
  const std::size_t second = amount.find('-', first + 1);
  if (second == amount.npos) return std::nullopt;
  const auto degrees = NumberIn(amount.substr(0, first));
  const auto minutes = NumberIn(amount.substr(first + 1, second - first - 1));
  const auto seconds = NumberIn(amount.substr(second + 1));
  if (!degrees || !minutes || !seconds) return std::nullopt;
  const double angle = (*degrees + *minutes / 60.0 + *seconds / 3600.0) * kDegree;
  return isNegative ? -angle : angle;
}

}  // namespace brenu
