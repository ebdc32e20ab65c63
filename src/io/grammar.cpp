#include "io/grammar.h"

#include <algorithm>

#include "core/text_number.h"

namespace brenu {

namespace {

constexpr ParamKey Real(std::string_view key, double AdjParam::*field) { return {key, field}; }
constexpr ParamKey Whole(std::string_view key, std::int32_t AdjParam::*field) {
  return {key, nullptr, field};
}
constexpr ParamKey LevellingGrade(std::string_view key) {
  return {key, nullptr, &AdjParam::Lvl1, &AdjParam::Lvl1Limit, LevellingLimitOfGrade};
}
constexpr ParamKey PlaneGrade(std::string_view key) {
  return {key, nullptr, &AdjParam::Lvl2, &AdjParam::Lvl2Limit, AngleLimitOfGrade};
}

// In the order in which they are written.
constexpr ParamKey kProjectKeys[] = {Real("MO", &AdjParam::MO),
                                     Real("MS", &AdjParam::MS),
                                     Real("MR", &AdjParam::MR),
                                     LevellingGrade("Lvl1"),
                                     PlaneGrade("Lvl2"),
                                     Whole("Lvl1Limit", &AdjParam::Lvl1Limit),
                                     Whole("Lvl2Limit", &AdjParam::Lvl2Limit),
                                     Whole("Limit", &AdjParam::Limit),
                                     Whole("format", &AdjParam::format)};
constexpr ParamKey kStationKeys[] = {
    Real("MO", &AdjParam::MO),         Real("MS", &AdjParam::MS), Real("MR", &AdjParam::MR),
    LevellingGrade("Level1"),          PlaneGrade("Level"),       Whole("Limit", &AdjParam::Limit),
    Whole("Format", &AdjParam::format)};

constexpr Field kPointFields[] = {{"name", FieldKind::kName, "0"},
                                  {"type", FieldKind::kType, "0"},
                                  {"X", FieldKind::kNumber, "0", &PointData::x},
                                  {"Y", FieldKind::kNumber, "0", &PointData::y},
                                  {"H", FieldKind::kNumber, "0", &PointData::h}};
constexpr Field kProjectObsFields[] = {
    {"station", FieldKind::kName, "0"},
    {"target", FieldKind::kName, "0"},
    {"direction", FieldKind::kAngle, "-1", nullptr, &ObsData::direction},
    {"distance", FieldKind::kNumber, "0", nullptr, &ObsData::distance},
    {"height difference", FieldKind::kNumber, "0", nullptr, &ObsData::heightDiff},
    {"azimuth", FieldKind::kAngle, "-1", nullptr, &ObsData::azimuth}};
// An empty direction is one of 0 here: every line has a direction.
constexpr Field kStationObsFields[] = {
    {"station", FieldKind::kName, "0"},
    {"target", FieldKind::kName, "0"},
    {"direction", FieldKind::kAngle, "0", nullptr, &ObsData::direction},
    {"distance", FieldKind::kNumber, "0", nullptr, &ObsData::distance},
    {"height difference", FieldKind::kNumber, "0", nullptr, &ObsData::heightDiff}};

constexpr Grammar kProject = {FileKind::kProject,
                              {"[PARAM]", "[PT]", "[OBS]"},
                              kProjectKeys,
                              // The last field may be left out.
                              {kPointFields, 4, 5},
                              {kProjectObsFields, 5, 6},
                              true};
constexpr Grammar kStation = {
    FileKind::kStation,   {"[PARA]", "[STATION]", "[OBSER]"}, kStationKeys,
    {kPointFields, 2, 0}, {kStationObsFields, 5, 0},          false};

}  // namespace

const Grammar& ProjectGrammar() { return kProject; }
const Grammar& StationGrammar() { return kStation; }

Section Grammar::SectionOf(std::string_view line) const {
  const auto found = std::find(headers.begin(), headers.end(), line);
  return found == headers.end() ? Section::kNone
                                : static_cast<Section>(found - headers.begin() + 1);
}

const ParamKey* Grammar::FindKey(std::string_view key) const {
  const auto found = std::find_if(keys.begin(), keys.end(),
                                  [key](const ParamKey& known) { return known.key == key; });
  return found == keys.end() ? nullptr : &*found;
}

void SetParam(AdjParam& param, const ParamKey& key, std::string_view value) {
  if (key.real != nullptr) {
    param.*key.real = ParseDouble(value);
    return;
  }
  param.*key.whole = ParseInt(value);
  if (key.limit != nullptr) param.*key.limit = key.limitOfGrade(param.*key.whole);
}

void AppendParameters(std::string& out, const Grammar& grammar, const AdjParam& param) {
  for (const ParamKey& key : grammar.keys) {
    out += key.key;
    out += ':';
    if (key.real != nullptr) {
      AppendGeneral(out, param.*key.real);
    } else {
      AppendInt(out, param.*key.whole);
    }
    out += '\n';
  }
}

}  // namespace brenu
