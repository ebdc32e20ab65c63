#include "fieldbook/gsi_block.h"

#include <algorithm>
#include <cmath>

#include "fieldbook/book_lines.h"
#include "fieldbook/units.h"

namespace brenu {

namespace {

constexpr std::size_t kHead = 7;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool AreDigits(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), IsDigit);
}

bool IsHead(std::string_view head) {
  return head.size() == kHead && IsDigit(head[0]) && IsDigit(head[1]) &&
         (head[6] == '+' || head[6] == '-');
}

// Of measurements and codes, whose word has the running number in it.
bool IsNumbered(std::string_view head) { return head.starts_with("11") || head.starts_with("41"); }

GsiWord WordOf(std::string_view text, std::size_t width, bool isFirst) {
  GsiWord word;
  word.text = text;
  word.index = (text[0] - '0') * 10 + (text[1] - '0');
  word.isNegative = text[6] == '-';
  word.data = text.substr(kHead);
  word.isComplete = word.data.size() == width;
  if (isFirst && IsNumbered(text)) return word;
  if (IsDigit(text[2])) word.index = word.index * 10 + (text[2] - '0');
  word.source = text[4];
  word.unit = text[5];
  return word;
}

}  // namespace

std::optional<double> GsiWord::Figures() const {
  const std::string_view figures = Trimmed(data);
  if (!isComplete || !AreDigits(figures)) return std::nullopt;
  double value = 0.0;
  for (const char c : figures) value = value * 10.0 + (c - '0');
  return isNegative ? -value : value;
}

std::optional<double> GsiWord::Length() const {
  const std::optional<double> figures = Figures();
  if (!figures) return std::nullopt;
  switch (unit) {
    case '.':
    case '0':
      return *figures / 1e3;
    case '1':
      return *figures / 1e3 * kFoot;
    case '6':
      return *figures / 1e4;
    case '7':
      return *figures / 1e4 * kFoot;
    case '8':
      return *figures / 1e5;
    default:
      return std::nullopt;
  }
}

std::optional<double> GsiWord::Angle() const {
  const std::optional<double> figures = Figures();
  if (!figures) return std::nullopt;
  switch (unit) {
    case '2':
      return *figures / 1e5 * kGon;
    case '3':
      return *figures / 1e5 * kDegree;
    case '4': {  // DDDMMSSs
      const double amount = std::abs(*figures);
      const double degrees = std::floor(amount / 1e5);
      const double minutes = std::floor((amount - degrees * 1e5) / 1e3);
      const double tenths = amount - degrees * 1e5 - minutes * 1e3;
      const double angle = (degrees + minutes / 60.0 + tenths / 36000.0) * kDegree;
      return *figures < 0.0 ? -angle : angle;
    }
    case '5':
      return *figures / 1e4 * kMil;
    default:
      return std::nullopt;
  }
}

std::string_view GsiWord::Name() const {
  const std::string_view name = Trimmed(data);
  if (name.empty()) return name;
  const std::size_t start = name.find_first_not_of("0 ");
  return start == name.npos ? name.substr(name.size() - 1) : name.substr(start);
}

const GsiWord* GsiBlock::Find(int index) const {
  const auto found = std::find_if(words.begin(), words.end(),
                                  [index](const GsiWord& word) { return word.index == index; });
  return found == words.end() ? nullptr : &*found;
}

void CutGsiLine(std::string_view line, GsiBlock& block) {
  block.words.clear();
  block.number.reset();
  block.damage = {};
  line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
  const bool isWide = line.starts_with('*');
  if (isWide) line.remove_prefix(1);
  const std::size_t width = isWide ? 16 : 8;
  for (std::size_t at = 0; at < line.size(); at += kHead + width + 1) {
    const std::string_view text = line.substr(at, kHead + width);
    if (Trimmed(text).empty()) break;
    const std::size_t behind = at + kHead + width;
    const bool isCutOff = behind < line.size() && line[behind] != ' ' && line[behind] != '\t';
    if (!IsHead(text.substr(0, kHead)) || isCutOff) {
      block.damage = line.substr(at);
      return;
    }
    block.words.push_back(WordOf(text, width, at == 0));
  }
  if (block.words.empty() || !IsNumbered(line)) return;
  const std::string_view number = line.substr(2, 4);
  if (!AreDigits(number)) return;
  block.number = 0;
  for (const char c : number) *block.number = *block.number * 10 + (c - '0');
}

}  // namespace brenu
