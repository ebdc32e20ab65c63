#include "report/svg_writer.h"

#include <cmath>

#include "core/text_number.h"

namespace brenu {

void AppendUnits(std::string& out, double value) {
  const double rounded = std::round(value * 10.0) / 10.0;
  if (rounded == 0.0) {
    out += '0';
    return;
  }
  AppendFixed(out, rounded, 1);
  if (out.ends_with(".0")) out.resize(out.size() - 2);
}

void AppendAttribute(std::string& out, std::string_view name, double value) {
  out += ' ';
  out += name;
  out += "=\"";
  AppendUnits(out, value);
  out += '"';
}

void AppendPoint(std::string& out, const PagePoint& point) {
  AppendUnits(out, point.x);
  out += ' ';
  AppendUnits(out, point.y);
}

}  // namespace brenu
