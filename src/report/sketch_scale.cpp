#include "report/sketch_scale.h"

#include <algorithm>
#include <cmath>

#include "core/text_number.h"

namespace brenu {

double RoundDown125(double most) {
  if (!(most > 0.0) || !std::isfinite(most)) return 0.0;
  const double power = std::pow(10.0, std::floor(std::log10(most)));
  const double digit = most / power * (1.0 + 1e-12);
  if (digit >= 10.0) return 10.0 * power;
  return (digit >= 5.0 ? 5.0 : digit >= 2.0 ? 2.0 : digit >= 1.0 ? 1.0 : 0.5) * power;
}

std::string RoundNumber(double value) {
  int decimals = 0;
  if (value > 0.0)
    decimals = std::clamp(-static_cast<int>(std::floor(std::log10(value) + 1e-9)), 0, 9);
  std::string text;
  AppendFixed(text, value, decimals);
  return text;
}

std::string RoundLength(double metres) {
  if (metres >= 999.0) return RoundNumber(metres / 1000.0) + " km";
  if (metres >= 0.999) return RoundNumber(metres) + " m";
  return RoundNumber(metres * 1000.0) + " mm";
}

}  // namespace brenu
