#include "fieldbook/m5_level.h"

#include <string>

namespace brenu {

namespace {

constexpr M5Columns kPoint = {1, 8};

struct ReadingType {
  std::string_view type, german;
  Staff staff;
};
constexpr ReadingType kReadings[] = {
    {"Rb", "Lr", Staff::kBack}, {"Rf", "Lv", Staff::kFore}, {"Rz", "Lz", Staff::kIntermediate}};

// One reading of each staff with BF and aBF, two with all others.
int ReadingsOf(std::string_view method) {
  if (method.starts_with('a')) method.remove_prefix(1);
  return method.empty() || method == "BF" ? 1 : 2;
}

// The method is the second word of "Start-Line BFFB 1".
std::string_view MethodIn(std::string_view words) {
  const std::size_t blank = words.find(' ');
  if (blank == words.npos) return {};
  const std::string_view method = words.substr(blank + 1);
  const std::string_view word = method.substr(0, method.find(' '));
  return word.find_first_of("BF") == word.npos ? std::string_view{} : word;
}

}  // namespace

bool M5Level::Enter(const M5Line& line) {
  if (line.kind == "TO") {
    EnterText(line);
    return true;
  }
  if (!line.kind.starts_with("KD") && !line.kind.starts_with("KN")) return false;
  EnterPoint(line);
  return true;
}

void M5Level::EnterText(const M5Line& line) {
  const std::string words = line.Words();
  const bool continues = words.starts_with("Cont-Line");
  if (words.starts_with("Start-Line") || (continues && !m_isOpen)) {
    m_isOpen = true;
    return m_book.BeginLevelLine(ReadingsOf(MethodIn(words)));
  }
  const bool isMark = continues || words.starts_with("End-Line");
  m_book.Became(isMark ? LineRole::kLevelLine : LineRole::kNote);
}

void M5Level::EnterPoint(const M5Line& line) {
  if (line.information.find("#####") != line.information.npos) {
    return m_book.LeaveOut(BRENU_READING_STRUCK_OUT, {}, {}, Severity::kNote);
  }
  for (const auto& [type, german, staff] : kReadings) {
    if (const M5Value* value = line.FindOneOf(type, german)) {
      return EnterReading(line, staff, *value);
    }
  }
  const M5Value* height = line.Find("Z");
  if (height == nullptr) return m_book.Became(LineRole::kResult);
  EnterHeight(line, *height);
}

void M5Level::EnterReading(const M5Line& line, Staff staff, const M5Value& value) {
  LevelReading reading;
  const std::optional<double> length = value.Length();
  if (!length) return m_book.LeaveOut(BRENU_VALUE_NOT_READ, {std::string(value.type)}, value.text);
  if (!m_isOpen) {
    m_book.Doubt(BRENU_READING_WITHOUT_LINE);
    m_book.BeginLevelLine(1);
    m_isOpen = true;
  }
  reading.staff = staff;
  reading.point = m_book.Name(kPoint.Of(line.information));
  reading.reading = *length;
  if (const M5Value* distance = line.FindOneOf("HD", "E")) reading.distance = distance->Length();
  m_book.EnterReading(reading);
}

// Before the first reading of a line the height was entered, elsewhere it is a result.
void M5Level::EnterHeight(const M5Line& line, const M5Value& height) {
  const bool isStart = m_isOpen && m_book.CurrentLevelLine().readings.empty();
  BookPoint point;
  point.name = m_book.Name(kPoint.Of(line.information));
  point.h = height.Length();
  // 0 stands for nothing entered.
  if (!isStart || point.name.IsNone() || point.h.value_or(0.0) == 0.0) {
    return m_book.Became(LineRole::kResult);
  }
  m_book.EnterPoint(point);
}

}  // namespace brenu
