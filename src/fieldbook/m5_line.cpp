#include "fieldbook/m5_line.h"

#include <algorithm>
#include <cmath>

#include "core/angles.h"
#include "core/text_number.h"
#include "fieldbook/book_lines.h"
#include "fieldbook/units.h"

namespace brenu {

namespace {

// Takes the first word off the front.
std::string_view TakeWord(std::string_view& text) {
  text = Trimmed(text);
  const std::string_view word = text.substr(0, text.find_first_of(" \t"));
  text.remove_prefix(word.size());
  return word;
}

struct Number {
  double value;
  std::string_view unit;
};

std::optional<Number> NumberIn(std::string_view text) {
  const ParsedDouble parsed = ParseWholeDouble(TakeWord(text));
  if (!parsed.isWhole || !std::isfinite(parsed.value)) return std::nullopt;
  return Number{parsed.value, TakeWord(text)};
}

// The next piece up to a bar, which is taken off, too.
std::string_view TakePiece(std::string_view& line) {
  const std::string_view piece = line.substr(0, line.find('|'));
  line.remove_prefix(std::min(piece.size() + 1, line.size()));
  return piece;
}

constexpr std::size_t kTypeWidth = 2;

}  // namespace

std::optional<double> M5Value::Length() const {
  const std::optional<Number> number = NumberIn(text);
  if (!number) return std::nullopt;
  if (number->unit == "m") return number->value;
  return number->unit == "ft" ? std::optional(number->value * kFoot) : std::nullopt;
}

std::optional<double> M5Value::Angle() const {
  const std::optional<Number> number = NumberIn(text);
  if (!number) return std::nullopt;
  const auto [value, unit] = *number;
  if (unit == "DMS") return DmsToRad(value);
  if (unit == "gon" || unit == "grd") return value * kGon;
  if (unit == "deg") return value * kDegree;
  return unit == "mil" ? std::optional(value * kMil) : std::nullopt;
}

bool M5Line::IsEmpty() const {
  return std::all_of(values.begin(), values.end(),
                     [](const M5Value& value) { return value.type.empty(); });
}

const M5Value* M5Line::Find(std::string_view type) const {
  const auto found = std::find_if(values.begin(), values.end(),
                                  [type](const M5Value& value) { return value.type == type; });
  return found == values.end() ? nullptr : &*found;
}

const M5Value* M5Line::FindOneOf(std::string_view type, std::string_view other) const {
  const M5Value* found = Find(type);
  return found == nullptr ? Find(other) : found;
}

std::string M5Line::Words() const {
  std::string words;
  std::string_view rest = information;
  for (std::string_view word = TakeWord(rest); !word.empty(); word = TakeWord(rest)) {
    if (!words.empty()) words += ' ';
    words += word;
  }
  return words;
}

std::optional<M5Line> CutM5Line(std::string_view line) {
  if (!line.starts_with("For M5|") && !line.starts_with("For_M5|")) return std::nullopt;
  TakePiece(line);
  TakePiece(line);  // the address
  M5Line cut;
  std::string_view piece = TakePiece(line);
  constexpr std::size_t kKindWidth = 4;
  cut.kind = Trimmed(piece.substr(0, kKindWidth));
  cut.information = piece.substr(std::min(kKindWidth, piece.size()));
  for (M5Value& value : cut.values) {
    piece = TakePiece(line);
    value.type = Trimmed(piece.substr(0, kTypeWidth));
    value.text = piece.substr(std::min(kTypeWidth, piece.size()));
  }
  cut.isFaulty = Trimmed(line).starts_with('e');
  return cut;
}

std::string_view M5Columns::Of(std::string_view information) const {
  return Trimmed(Columns(information, first, last + 1 - first));
}

}  // namespace brenu
