// How the two text formats are laid out: one table a format, which reader, writer and checks share.
// docs/files.md has both in words.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "core/records.h"

namespace brenu {

enum class Section : std::uint8_t { kNone, kParameters, kPoints, kObservations };

// A parameter: a real or a whole number, with a grade also the limit that belongs to it.
struct ParamKey {
  std::string_view key;
  double AdjParam::*real = nullptr;
  std::int32_t AdjParam::*whole = nullptr;
  std::int32_t AdjParam::*limit = nullptr;
  int (*limitOfGrade)(int) = nullptr;
};

enum class FieldKind : std::uint8_t { kName, kType, kNumber, kAngle };

// A field of a line.
struct Field {
  const char* name;  // as a person calls it
  FieldKind kind;
  std::string_view whenEmpty;  // what an empty field is read as
  double PointData::*ofPoint = nullptr;
  double ObsData::*ofObs = nullptr;
};

// The lines of a section: their fields, and how many pieces a line may have.  Missing ones are
// empty, those behind the last field are passed over.
struct LineRule {
  std::span<const Field> fields;
  std::size_t fewest;
  std::size_t most;  // 0 for any number
};

enum class FileKind : std::uint8_t { kUnknown, kProject, kStation };

struct Grammar {
  FileKind kind;
  std::array<std::string_view, 3> headers;  // of parameters, points and observations
  std::span<const ParamKey> keys;
  LineRule points, observations;
  // Project files: a section ends at an empty line only, a header may end in a carriage return,
  // points count from 0 in each section, parameter lines of another form are skipped.
  // Station and observation files: a header ends the section before it, and is none with a carriage
  // return; a parameter line is one key and one value.
  bool isProject;

  std::string_view HeaderOf(Section section) const {
    return headers[static_cast<std::size_t>(section) - 1];
  }
  // None for a line that is no header of this format.
  Section SectionOf(std::string_view line) const;
  // Null when there is no such key.
  const ParamKey* FindKey(std::string_view key) const;
};

const Grammar& ProjectGrammar();
const Grammar& StationGrammar();

// Enters the value of a parameter.
void SetParam(AdjParam& param, const ParamKey& key, std::string_view value);

// The lines of a section of parameters, by the keys of the format.
void AppendParameters(std::string& out, const Grammar& grammar, const AdjParam& param);

}  // namespace brenu
