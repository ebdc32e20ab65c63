#include <string>
#include <vector>

#include "core/text_number.h"
#include "io/record_entry.h"
#include "io/station_file.h"
#include "io/text_file.h"
#include "io/text_line.h"

namespace brenu {

namespace {

using Pieces = std::vector<std::string_view>;

void ReplaceAllEmpty(Pieces& pieces) {
  for (std::string_view& piece : pieces) {
    if (piece.empty()) piece = "0";
  }
}

const char* ReadParam(AdjParam& param, std::string_view line) {
  const Pieces pieces = Split(line, ':');
  if (pieces.size() != 2) return "a parameter line has the form key:value";
  EnterParam(param, {"Level1", "Level", "Format"}, pieces[0], pieces[1]);
  return nullptr;
}

const char* ReadStation(Store& store, std::int32_t index, std::string_view line) {
  Pieces pieces = Split(line, ',');
  if (pieces.size() < 2) return "a station line has at least a name and a type";
  if (pieces.size() < 5) pieces.resize(5);
  ReplaceAllEmpty(pieces);
  return EnterPoint(store, index, pieces);
}

const char* ReadObs(Store& store, std::string_view line) {
  Pieces pieces = Split(line, ',');
  if (pieces.size() < 5) {
    return "an observation line has the five fields "
           "station,target,direction,distance,height difference, the last one not empty";
  }
  ReplaceAllEmpty(pieces);
  ObsData obs{};
  obs.direction = ParseDouble(pieces[2]);
  obs.distance = ParseDouble(pieces[3]);
  obs.heightDiff = ParseDouble(pieces[4]);
  obs.azimuth = kAbsentAngle;
  return EnterObs(store, pieces[0], pieces[1], obs);
}

enum class Section { kNone, kParam, kStations, kObservations };

// Only the very text is a header: one followed by a carriage return is none.
Section SectionOf(std::string_view line) {
  if (line == "[PARA]") return Section::kParam;
  if (line == "[STATION]") return Section::kStations;
  if (line == "[OBSER]") return Section::kObservations;
  return Section::kNone;
}

}  // namespace

ReadOutcome ReadStationFile(AdjustmentContext& context, const char* path) {
  LineReader file(path);
  if (!file.IsOpen()) return {"the file cannot be opened", 0, {}};
  Section section = Section::kNone;
  std::int32_t nextPoint = 0;
  std::string text;
  for (std::size_t number = 1; file.Next(text); ++number) {
    if (number == 1 && text == "[PARAM]") return {"this is a project file", 0, {}};
    const std::string_view line = WithoutReturn(text);
    // Within the parameters only the other two headers count.
    Section header = SectionOf(text);
    if (section == Section::kParam && header == Section::kParam) header = Section::kNone;
    const char* fault = nullptr;
    if (line.empty() || header != Section::kNone) {
      section = header;
    } else if (section != Section::kNone && file.IsCut()) {
      fault = kLineTooLong;
    } else if (section == Section::kParam) {
      fault = ReadParam(context.param, line);
    } else if (section == Section::kStations) {
      fault = ReadStation(context.store, nextPoint++, line);
    } else if (section == Section::kObservations) {
      fault = ReadObs(context.store, line);
    }
    if (fault != nullptr) return {fault, number, std::string(line)};
  }
  if (file.HasFailed()) return {kReadFailed, 0, {}};
  return {};
}

}  // namespace brenu
