#include <algorithm>
#include <string>
#include <vector>

#include "core/text_number.h"
#include "io/project_file.h"
#include "io/record_entry.h"
#include "io/text_file.h"
#include "io/text_line.h"

namespace brenu {

namespace {

using Pieces = std::vector<std::string_view>;

void ReplaceEmpty(std::string_view& piece, std::string_view with) {
  if (piece.empty()) piece = with;
}

void ReadParam(AdjParam& param, std::string_view line) {
  const Pieces pieces = Split(line, ':');
  if (pieces.size() < 2) return;
  const std::string_view key = pieces[0];
  const std::string_view value = pieces[1];
  EnterParam(param, {"Lvl1", "Lvl2", "format"}, key, value);
  if (key == "Lvl1Limit") param.Lvl1Limit = ParseInt(value);
  if (key == "Lvl2Limit") param.Lvl2Limit = ParseInt(value);
}

const char* ReadPoint(Store& store, std::int32_t index, std::string_view line) {
  Pieces pieces = Split(line, ',');
  if (pieces.size() == 4) pieces.emplace_back();  // an empty height, dropped at the line's end
  if (pieces.size() != 5) return "a point line has the five fields name,type,X,Y,H";
  for (std::string_view& piece : pieces) ReplaceEmpty(piece, "0");
  return EnterPoint(store, index, pieces);
}

const char* ReadObs(Store& store, std::string_view line) {
  Pieces pieces = Split(line, ',');
  if (pieces.size() == 5) pieces.emplace_back();  // an empty azimuth, dropped at the line's end
  if (pieces.size() != 6) {
    return "an observation line has the six fields "
           "station,target,direction,distance,height difference,azimuth";
  }
  ReplaceEmpty(pieces[2], "-1");
  ReplaceEmpty(pieces[5], "-1");
  for (std::string_view& piece : pieces) ReplaceEmpty(piece, "0");
  ObsData obs{};
  obs.direction = ParseDouble(pieces[2]);
  obs.distance = ParseDouble(pieces[3]);
  obs.heightDiff = ParseDouble(pieces[4]);
  obs.azimuth = ParseDouble(pieces[5]);
  return EnterObs(store, pieces[0], pieces[1], obs);
}

enum class Section { kNone, kParam, kPoints, kObservations };

Section SectionOf(std::string_view header) {
  if (header == "[PARAM]") return Section::kParam;
  if (header == "[PT]") return Section::kPoints;
  if (header == "[OBS]") return Section::kObservations;
  return Section::kNone;
}

void KeepOriginalPoints(AdjustmentContext& context) {
  const auto& points = context.store.Points();
  const auto count = static_cast<std::int32_t>(points.size());
  for (auto place = points.lower_bound(0); place != points.end() && place->first < count; ++place) {
    context.originalPoints.insert_or_assign(place->first, place->second);
  }
}

}  // namespace

ReadOutcome ReadProjectFile(AdjustmentContext& context, const char* path) {
  LineReader file(path);
  if (!file.IsOpen()) return {"the file cannot be opened", 0, {}};
  Section section = Section::kNone;
  std::int32_t nextPoint = 0;
  std::string text;
  for (std::size_t number = 1; file.Next(text); ++number) {
    const std::string_view line = WithoutReturn(text);
    const char* fault = nullptr;
    if (line.empty()) {
      section = Section::kNone;
    } else if (section == Section::kNone) {
      section = SectionOf(line);
      if (section == Section::kPoints) nextPoint = 0;
    } else if (section == Section::kParam) {
      ReadParam(context.param, line);
    } else if (file.IsCut()) {
      fault = kLineTooLong;
    } else if (section == Section::kPoints) {
      fault = ReadPoint(context.store, nextPoint++, line);
    } else {
      fault = ReadObs(context.store, line);
    }
    if (fault != nullptr) return {fault, number, std::string(line)};
  }
  if (file.HasFailed()) return {kReadFailed, 0, {}};
  KeepOriginalPoints(context);
  return {};
}

}  // namespace brenu
