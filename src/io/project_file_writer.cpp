#include <string>

#include "core/text_number.h"
#include "io/project_file.h"
#include "io/replace_file.h"

namespace brenu {

namespace {

void AppendParam(std::string& out, const AdjParam& param) {
  const auto addDouble = [&out](const char* key, double value) {
    out += key;
    AppendGeneral(out, value);
    out += '\n';
  };
  const auto addInt = [&out](const char* key, std::int32_t value) {
    out += key;
    AppendInt(out, value);
    out += '\n';
  };
  out += "[PARAM]\n";
  addDouble("MO:", param.MO);
  addDouble("MS:", param.MS);
  addDouble("MR:", param.MR);
  addInt("Lvl1:", param.Lvl1);
  addInt("Lvl2:", param.Lvl2);
  addInt("Lvl1Limit:", param.Lvl1Limit);
  addInt("Lvl2Limit:", param.Lvl2Limit);
  addInt("Limit:", param.Limit);
  addInt("format:", param.format);
}

void AppendType(std::string& out, std::int32_t type) {
  if (type == 0 || type == 1) out += '0';
  AppendInt(out, type);
}

// An absent value is an empty field.
void AppendField(std::string& out, double value, double absent, bool fixed) {
  out += ',';
  if (value == absent) return;
  if (fixed) {
    AppendFixed(out, value, 6);
  } else {
    AppendGeneral(out, value);
  }
}

}  // namespace

bool WriteProjectFile(const AdjustmentContext& context, const char* path) {
  std::string out;
  AppendParam(out, context.param);

  out += "\n[PT]\n";
  for (const auto& [index, point] : context.store.Points()) {
    out += NameOf(point);
    out += ',';
    AppendType(out, point.type);
    for (const double value : {point.x, point.y, point.h}) AppendField(out, value, 0.0, true);
    out += '\n';
  }

  out += "\n[OBS]\n";
  // Only the first point line brings in the six decimals that the rest of the file keeps.
  const bool fixed = !context.store.Points().empty();
  for (const auto& [station, targets] : context.store.Observations()) {
    for (const auto& [target, obs] : targets) {
      out += station;
      out += ',';
      out += target;
      AppendField(out, obs.direction, kAbsentAngle, fixed);
      AppendField(out, obs.distance, kAbsentLength, fixed);
      AppendField(out, obs.heightDiff, kAbsentLength, fixed);
      AppendField(out, obs.azimuth, kAbsentAngle, fixed);
      out += '\n';
    }
  }
  return ReplaceFile(path, out) != Replaced::kNotOpened;
}

}  // namespace brenu
