#include "report/histogram.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "review/text.h"

namespace brenu {

namespace {

constexpr int kBins = 20;  // of half a unit, from -5 to 5; what lies beyond is in the outer ones
constexpr double kBinWidth = 0.5;
constexpr double kLeast = -5.0;
constexpr double kBarWidth = 22.0;
constexpr double kLeft = 40.0;
constexpr double kTop = 14.0;
constexpr double kHeight = 150.0;

double ShareOf(double w) {
  return std::exp(-0.5 * w * w) / std::sqrt(2.0 * std::numbers::pi) * kBinWidth;
}

double XOf(double w) { return kLeft + (w - kLeast) / kBinWidth * kBarWidth; }

std::string TextAt(double x, double y, const char* anchor, const std::string& text) {
  return "<text x=\"" + Fixed(x, 1) + "\" y=\"" + Fixed(y, 1) + "\" text-anchor=\"" + anchor +
         "\">" + text + "</text>";
}

std::string LineAt(double x1, double y1, double x2, double y2, const char* style) {
  return std::string("<line class=\"") + style + "\" x1=\"" + Fixed(x1, 1) + "\" y1=\"" +
         Fixed(y1, 1) + "\" x2=\"" + Fixed(x2, 1) + "\" y2=\"" + Fixed(y2, 1) + "\"/>";
}

}  // namespace

std::string HistogramOfW(std::span<const ObservationRow> rows, double critical, Language language) {
  std::array<int, kBins> counts{};
  int total = 0;
  for (const ObservationRow& row : rows) {
    if (row.removed || !std::isfinite(row.w)) continue;
    const double bin = std::floor((row.w - kLeast) / kBinWidth);
    ++counts[static_cast<std::size_t>(std::clamp(bin, 0.0, kBins - 1.0))];
    ++total;
  }
  if (total == 0) return "";
  const double most =
      std::max<double>(*std::max_element(counts.begin(), counts.end()), total * ShareOf(0.0));
  const double bottom = kTop + kHeight;
  const auto yOf = [&](double count) { return bottom - count / most * kHeight; };
  const double right = XOf(-kLeast);
  const Words label = {"histogram of the test values w", "检验值 w 直方图"};
  std::string svg = "<svg class=\"chart\" role=\"img\" aria-label=\"";
  svg += label.In(language);
  svg += "\" viewBox=\"0 0 " + Fixed(right + 20.0, 0) + ' ' + Fixed(bottom + 24.0, 0) + "\">";
  for (int i = 0; i < kBins; ++i) {
    const int count = counts[static_cast<std::size_t>(i)];
    if (count == 0) continue;
    const double w = kLeast + (i + 0.5) * kBinWidth;
    const double y = yOf(count);
    svg += "<rect class=\"";
    svg += std::fabs(w) > critical ? "beyond" : "within";
    svg += "\" x=\"" + Fixed(XOf(w - kBinWidth / 2.0) + 1.0, 1) + "\" y=\"" + Fixed(y, 1) +
           "\" width=\"" + Fixed(kBarWidth - 2.0, 1) + "\" height=\"" + Fixed(bottom - y, 1) +
           "\"><title>" + std::to_string(count) + "</title></rect>";
  }
  svg += "<polyline class=\"curve\" points=\"";
  for (double w = kLeast; w <= -kLeast + 1e-9; w += 0.25) {
    svg += Fixed(XOf(w), 1) + ',' + Fixed(yOf(total * ShareOf(w)), 1) + ' ';
  }
  svg += "\"/>";
  svg += LineAt(kLeft, bottom, right, bottom, "axis");
  for (int w = -5; w <= 5; ++w) {
    svg += LineAt(XOf(w), bottom, XOf(w), bottom + 4.0, "axis");
    svg += TextAt(XOf(w), bottom + 17.0, "middle", std::to_string(w));
  }
  for (const double w : {-critical, critical}) {
    if (std::fabs(w) < -kLeast) svg += LineAt(XOf(w), kTop, XOf(w), bottom, "limit");
  }
  svg += TextAt(kLeft - 4.0, kTop + 8.0, "end", Fixed(most, 0));
  return svg += "</svg>\n";
}

}  // namespace brenu
