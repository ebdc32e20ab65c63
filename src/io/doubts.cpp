#include "io/doubts.h"

#include <cmath>
#include <string>
#include <utility>

#include "core/text_number.h"

namespace brenu {

namespace {

// Degrees, minutes and seconds as one writes them.  60 seconds come from rounding, -1 means none.
bool IsAngle(double dms) {
  if (dms == kAbsentAngle) return true;
  if (!(dms >= 0.0 && dms <= 360.0)) return false;
  constexpr double kRounding = 1e-7;
  const double minutes = (dms - std::floor(dms)) * 100.0 + kRounding;
  const double seconds = (minutes - std::floor(minutes)) * 100.0;
  return minutes < 60.0 && seconds < 60.0 + 1e-3;
}

}  // namespace

void Doubts::Add(Code code, std::string_view excerpt, std::vector<std::string> names,
                 std::vector<double> values) {
  if (m_found.size() == kMostKept) {
    ++m_more;
    return;
  }
  Finding doubt = Warning(code, std::move(names), std::move(values));
  doubt.line = m_line;
  doubt.excerpt = excerpt;
  m_found.push_back(std::move(doubt));
}

double Doubts::Number(const Field& field, std::string_view text) {
  const ParsedDouble parsed = ParseWholeDouble(text);
  if (!parsed.isWhole) {
    Add(BRENU_NOT_A_NUMBER, text, {field.name}, {parsed.value});
  } else if (field.kind == FieldKind::kAngle && !IsAngle(parsed.value)) {
    Add(BRENU_NOT_AN_ANGLE, text, {field.name}, {parsed.value});
  }
  return parsed.value;
}

void Doubts::CheckPoint(const PointData& point, std::string_view type, bool givesPlane,
                        bool givesHeight) {
  if (point.type != 0 && !IsPlaneControl(point) && !IsHeightControl(point)) {
    Add(BRENU_POINT_TYPE_UNKNOWN, type, {}, {static_cast<double>(point.type)});
  }
  if ((IsPlaneControl(point) && !givesPlane) || (IsHeightControl(point) && !givesHeight)) {
    Add(BRENU_KNOWN_VALUE_MISSING, type, {std::string(NameOf(point))});
  }
}

void Doubts::CheckZero(Code code, std::string_view station, std::string_view target,
                       std::string_view field) {
  if (field.empty()) return;
  Zeros& zeros = code == BRENU_DISTANCE_ZERO ? m_distances : m_heightDiffs;
  if (field.find_first_not_of("0.+- ") != std::string_view::npos) {
    zeros.hasOther = true;
  } else if (zeros.count++ == 0) {
    zeros.first = Warning(code, {std::string(station), std::string(target)});
    zeros.first.line = m_line;
  }
}

Findings Doubts::Take() {
  if (m_more > 0) {
    m_found.push_back(Warning(BRENU_MORE_DOUBTS, {}, {static_cast<double>(m_more)}));
  }
  for (Zeros* zeros : {&m_distances, &m_heightDiffs}) {
    if (zeros->count == 0 || !zeros->hasOther) continue;
    zeros->first.values = {zeros->count - 1.0};
    m_found.push_back(std::move(zeros->first));
  }
  return std::move(m_found);
}

}  // namespace brenu
