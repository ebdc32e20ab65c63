#include "io/record_entry.h"

#include <algorithm>

#include "core/text_number.h"
#include "io/text_line.h"

namespace brenu {

void EnterParam(AdjParam& param, const ParamKeys& keys, std::string_view key,
                std::string_view value) {
  if (key == "MO") param.MO = ParseDouble(value);
  if (key == "MS") param.MS = ParseDouble(value);
  if (key == "MR") param.MR = ParseDouble(value);
  if (key == keys.levellingGrade) {
    param.Lvl1 = ParseInt(value);
    param.Lvl1Limit = LevellingLimitOfGrade(param.Lvl1);
  }
  if (key == keys.planeGrade) {
    param.Lvl2 = ParseInt(value);
    param.Lvl2Limit = AngleLimitOfGrade(param.Lvl2);
  }
  if (key == "Limit") param.Limit = ParseInt(value);
  if (key == keys.format) param.format = ParseInt(value);
}

const char* EnterPoint(Store& store, std::int32_t index, std::span<const std::string_view> pieces) {
  const std::string_view name = UpToNul(pieces[0]);
  if (name.size() > kMaxNameLength) return "the point name is longer than 127 bytes";
  PointData point{};
  std::copy(name.begin(), name.end(), point.name);
  point.type = ParseInt(pieces[1]);
  point.x = ParseDouble(pieces[2]);
  point.y = ParseDouble(pieces[3]);
  point.h = ParseDouble(pieces[4]);
  if (store.AddPoint(index, point) != -1) return nullptr;
  return store.IndexOfName(name) >= 0 ? "a point of this name exists already"
                                      : "another point section has filled these places already";
}

const char* EnterObs(Store& store, std::string_view station, std::string_view target,
                     const ObsData& obs) {
  station = UpToNul(station);
  target = UpToNul(target);
  const std::int32_t index = store.IndexOfName(station);
  if (store.AddObs(index, target, obs) != -1) return nullptr;
  if (index < 0) return "the station is not among the points above";
  if (store.IndexOfName(target) < 0) return "the target is not among the points above";
  if (station == target) return "station and target are the same point";
  return "this station and target have an observation line already";
}

}  // namespace brenu
