#include "field_check.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <span>

#include "core/text_number.h"
#include "format.h"
#include "io/text_line.h"

namespace brenu::tool {

namespace {

constexpr auto kProjectKeys = std::to_array<std::string_view>(
    {"MO", "MS", "MR", "Lvl1", "Lvl2", "Lvl1Limit", "Lvl2Limit", "Limit", "format"});
constexpr auto kStationKeys =
    std::to_array<std::string_view>({"MO", "MS", "MR", "Level1", "Level", "Limit", "Format"});

// The field without the blanks around it.
std::string_view Trimmed(std::string_view field) {
  constexpr std::string_view kBlanks = " \t";
  const std::size_t start = field.find_first_not_of(kBlanks);
  if (start == std::string_view::npos) return {};
  return field.substr(start, field.find_last_not_of(kBlanks) + 1 - start);
}

bool IsNumber(std::string_view text) {
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  double value = 0.0;
  const char* const end = text.data() + text.size();
  return !text.empty() && std::from_chars(text.data(), end, value).ptr == end;
}

// Degrees, minutes and seconds as one writes them.  60 seconds come from rounding, -1 means none.
bool IsAngle(double dms) {
  if (dms == -1.0) return true;
  if (!(dms >= 0.0 && dms <= 360.0)) return false;
  constexpr double kRounding = 1e-7;
  const double minutes = (dms - std::floor(dms)) * 100.0 + kRounding;
  const double seconds = (minutes - std::floor(minutes)) * 100.0;
  return minutes < 60.0 && seconds < 60.0 + 1e-3;
}

std::string Quoted(std::string_view text) {
  constexpr std::size_t kLongest = 40;
  return '"' + Printable(text.substr(0, kLongest)) + (text.size() > kLongest ? "...\"" : "\"");
}

}  // namespace

void FieldCheck::Look(FileKind kind, SectionKind section, std::size_t number,
                      std::string_view line) {
  m_number = number;
  if (section == SectionKind::kParameters) LookAtParameter(kind, line);
  if (section == SectionKind::kPoints) LookAtPoint(kind, line);
  if (section == SectionKind::kObservations) LookAtObservation(kind, line);
}

std::vector<std::string> FieldCheck::Doubts() const {
  std::vector<std::string> doubts = m_doubts;
  if (m_others > 0) {
    doubts.push_back(std::to_string(m_others) + " more fields are in doubt like these; correct " +
                     "the lines named and run the program again");
  }
  return doubts;
}

void FieldCheck::LookAtParameter(FileKind kind, std::string_view line) {
  const auto pieces = Split(line, ':');
  if (kind == FileKind::kStation && pieces.size() != 2) return;  // for the reader to refuse
  const std::string_view key = pieces.empty() ? std::string_view() : pieces[0];
  const std::span<const std::string_view> keys =
      kind == FileKind::kProject ? std::span<const std::string_view>(kProjectKeys) : kStationKeys;
  if (std::find(keys.begin(), keys.end(), key) == keys.end()) {
    std::string known;
    for (const std::string_view one : keys) known += (known.empty() ? "" : ", ") + std::string(one);
    Add(Quoted(line) + " gives no known parameter and is skipped; the keys are " + known +
        ", each with a colon and a value");
  } else if (pieces.size() < 2) {
    Add("the parameter " + std::string(key) + " has no value; give it one after a colon");
  } else {
    LookAtNumber(pieces[1]);
  }
}

void FieldCheck::LookAtPoint(FileKind kind, std::string_view line) {
  auto pieces = Split(line, ',');
  if (pieces.size() < (kind == FileKind::kProject ? 4U : 2U)) return;  // for the reader to refuse
  pieces.resize(5);
  const std::string_view type = pieces[1];
  if (LookAtNumber(type)) {
    const std::int32_t value = ParseInt(type);
    if (value != 0 && value != 1 && value != 10 && value != 11) {
      Add("the point type " + Quoted(type) +
          " is none of 00, 01, 10 and 11 and counts as that of a new point; correct it");
    }
    const bool knownPlane = value == 10 || value == 11;
    const bool knownHeight = value == 1 || value == 11;
    if ((knownPlane && (pieces[2].empty() || pieces[3].empty())) ||
        (knownHeight && pieces[4].empty())) {
      Add("the type " + Quoted(type) + " of the point " + Printable(pieces[0]) +
          " says that a value is known which the line does not give, so that it is taken for 0; "
          "give it, in the order name,type,X,Y,H");
    }
  }
  for (std::size_t i = 2; i < 5; ++i) LookAtNumber(pieces[i]);
}

void FieldCheck::LookAtObservation(FileKind kind, std::string_view line) {
  auto pieces = Split(line, ',');
  if (pieces.size() < 5) return;  // for the reader to refuse
  pieces.resize(6);
  LookAtAngle(pieces[2]);
  LookAtNumber(pieces[3]);
  LookAtNumber(pieces[4]);
  if (kind == FileKind::kProject) LookAtAngle(pieces[5]);
}

// Whether the field is empty or a number.
bool FieldCheck::LookAtNumber(std::string_view field) {
  if (field.empty() || IsNumber(Trimmed(field))) return true;
  std::string value;
  AppendGeneral(value, ParseDouble(field));
  Add(Quoted(field) + " is no number and is read as " + value +
      "; correct it, with a point for the decimals");
  return false;
}

void FieldCheck::LookAtAngle(std::string_view field) {
  if (!LookAtNumber(field) || IsAngle(ParseDouble(field))) return;
  Add(Quoted(field) + " is no angle dd.mmss between 0 and 360 degrees; correct it");
}

void FieldCheck::Add(const std::string& doubt) {
  if (m_doubts.size() < kMostShown) {
    m_doubts.push_back("line " + std::to_string(m_number) + ": " + doubt);
  } else {
    ++m_others;
  }
}

}  // namespace brenu::tool
