#include <algorithm>
#include <string_view>

#include "core/angles.h"
#include "core/text_number.h"
#include "io/gkf_file.h"

namespace brenu {

namespace {

void AppendAttribute(std::string& out, const char* name, std::string_view value) {
  out += ' ';
  out += name;
  out += "=\"";
  for (const char c : value) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '"':
        out += "&quot;";
        break;
      default:
        out += c;
    }
  }
  out += '"';
}

void AppendNumber(std::string& out, const char* name, double value, int decimals) {
  std::string text;
  AppendFixed(text, value, decimals);
  AppendAttribute(out, name, text);
}

void AppendGon(std::string& out, double dms) {
  AppendNumber(out, "val", DmsToRad(dms) / kPi * 200.0, 8);
}

class Writer {
 public:
  Writer(const AdjParam& param, const Store& store) : m_store(store) {
    for (const auto& [index, point] : store.Points()) {
      m_isPlane = m_isPlane || IsPlaneControl(point);
      m_isLevel = m_isLevel || IsHeightControl(point);
    }
    Begin(param);
    for (const auto& [index, point] : store.Points()) AppendPoint(point);
    for (const auto& [station, targets] : store.Observations()) {
      AppendObservations(station, targets);
    }
    AppendHeights();
    m_out += "</points-observations>\n</network>\n</gama-local>\n";
  }

  std::string Take() { return std::move(m_out); }

 private:
  void Begin(const AdjParam& param) {
    constexpr double kSecondsPerCc = 0.324;  // of 1e-4 gon
    m_out =
        "<?xml version=\"1.0\"?>\n"
        "<gama-local xmlns=\"http://www.gnu.org/software/gama/gama-local\">\n"
        "<network axes-xy=\"ne\" angles=\"left-handed\">\n"
        "<parameters sigma-apr=\"1\"/>\n<points-observations";
    AppendNumber(m_out, "direction-stdev", param.MO / kSecondsPerCc, 8);
    AppendNumber(m_out, "azimuth-stdev", param.MO / kSecondsPerCc, 8);
    std::string distance;
    AppendFixed(distance, param.MS * 1e3, 4);
    distance += ' ';
    AppendFixed(distance, param.MR * 1e6, 4);
    distance += " 1";
    AppendAttribute(m_out, "distance-stdev", distance);
    m_out += ">\n";
  }

  void AppendPoint(const PointData& point) {
    m_out += "<point";
    AppendAttribute(m_out, "id", NameOf(point));
    if (point.x != 0.0 || point.y != 0.0 || IsPlaneControl(point)) {
      AppendNumber(m_out, "x", point.x, 6);
      AppendNumber(m_out, "y", point.y, 6);
    }
    if (point.h != 0.0 || IsHeightControl(point)) AppendNumber(m_out, "z", point.h, 6);
    std::string fixed = IsPlaneControl(point) ? "xy" : "";
    std::string adjusted = m_isPlane && !IsPlaneControl(point) ? "xy" : "";
    if (IsHeightControl(point)) {
      fixed += 'z';
    } else if (m_isLevel) {
      adjusted += 'z';
    }
    if (!fixed.empty()) AppendAttribute(m_out, "fix", fixed);
    if (!adjusted.empty()) AppendAttribute(m_out, "adj", adjusted);
    m_out += "/>\n";
  }

  // The length of a levelled line is a distance of the plane, too, where there is one.
  void AppendObservations(const std::string& station, const TargetMap& targets) {
    std::string inside;
    for (const auto& [target, obs] : targets) {
      const auto begin = [&, to = std::string_view(target)](const char* element) {
        inside += "<";
        inside += element;
        AppendAttribute(inside, "to", to);
      };
      if (HasDirection(obs)) {
        begin("direction");
        AppendGon(inside, obs.direction);
        inside += "/>\n";
      }
      if (HasDistance(obs) && (m_isPlane || !IsLevelled(obs))) {
        begin("distance");
        AppendNumber(inside, "val", obs.distance, 6);
        inside += "/>\n";
      }
      if (HasAzimuth(obs)) {
        begin("azimuth");
        AppendGon(inside, obs.azimuth);
        inside += "/>\n";
      }
    }
    if (inside.empty()) return;
    m_out += "<obs";
    AppendAttribute(m_out, "from", station);
    m_out += ">\n" + inside + "</obs>\n";
  }

  void AppendHeights() {
    std::string inside;
    for (const auto& [station, targets] : m_store.Observations()) {
      for (const auto& [target, obs] : targets) {
        if (!IsLevelled(obs)) continue;
        inside += "<dh";
        AppendAttribute(inside, "from", station);
        AppendAttribute(inside, "to", target);
        AppendNumber(inside, "val", obs.heightDiff, 6);
        AppendNumber(inside, "dist", obs.distance / 1e3, 9);
        inside += "/>\n";
      }
    }
    if (!inside.empty()) {
      m_out += "<height-differences>\n" + inside + "</height-differences>\n";
    }
  }

  const Store& m_store;
  std::string m_out;
  bool m_isPlane = false, m_isLevel = false;
};

}  // namespace

std::string GkfText(const AdjParam& param, const Store& store) {
  return Writer(param, store).Take();
}

}  // namespace brenu
