#include <algorithm>
#include <utility>

#include "core/text_number.h"
#include "io/grammar.h"
#include "io/station_file.h"

namespace brenu {

namespace {

void AppendNumber(std::string& out, double value) {
  out += ',';
  AppendFixed(out, value, 6);
}

Finding CannotKeep(std::string before, const std::string& station, const std::string& target,
                   const char* after) {
  before.append(station).append(" - ").append(target).append(after);
  return Warning(BRENU_CANNOT_BE_KEPT, {std::move(before)});
}

}  // namespace

std::string StationFileText(const AdjParam& param, const Store& store, Findings& left) {
  const Grammar& grammar = StationGrammar();
  std::string out(grammar.HeaderOf(Section::kParameters));
  out += '\n';
  AppendParameters(out, grammar, param);
  out += '\n';
  out += grammar.HeaderOf(Section::kPoints);
  out += '\n';
  bool isPlane = false;
  for (const auto& [index, point] : store.Points()) {
    isPlane = isPlane || IsPlaneControl(point);
    out += NameOf(point);
    out += point.type == 0 || point.type == 1 ? ",0" : ",";
    AppendInt(out, point.type);
    for (const double value : {point.x, point.y, point.h}) AppendNumber(out, value);
    out += '\n';
  }
  out += '\n';
  out += grammar.HeaderOf(Section::kObservations);
  out += '\n';
  for (const auto& [station, targets] : store.Observations()) {
    for (const auto& [target, obs] : targets) {
      if (HasAzimuth(obs)) left.push_back(CannotKeep("the azimuth ", station, target, ""));
      if (isPlane && !HasDirection(obs)) {
        if (HasDistance(obs)) {
          left.push_back(CannotKeep("", station, target, " without a direction"));
        }
        continue;
      }
      out += station;
      out += ',';
      out += target;
      AppendNumber(out, std::max(obs.direction, 0.0));
      AppendNumber(out, obs.distance);
      AppendNumber(out, obs.heightDiff);
      out += '\n';
    }
  }
  return out;
}

}  // namespace brenu
