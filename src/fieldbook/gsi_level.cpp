#include "fieldbook/gsi_level.h"

#include <string>

namespace brenu {

namespace {

struct ReadingKind {
  int index;
  Staff staff;
  std::uint8_t repeat;
};
constexpr ReadingKind kReadings[] = {{331, Staff::kBack, 1},
                                     {332, Staff::kFore, 1},
                                     {333, Staff::kIntermediate, 1},
                                     {335, Staff::kBack, 2},
                                     {336, Staff::kFore, 2}};
constexpr int kHeightDifferences[] = {571, 572, 573, 574};
// A reading without a line, and one to stake out by.
constexpr int kOtherReadings[] = {330, 334};

constexpr int kPoint = 11;
constexpr int kDistance = 32;
constexpr int kHeight = 83;

// Readings of each staff in a setup by the methods BF, BFFB, aBF and aBFFB; 0 for others.
int ReadingsOf(std::string_view method) {
  if (method == "1" || method == "3") return 1;
  return method == "2" || method == "4" ? 2 : 0;
}

template <std::size_t N>
bool HasOneOf(const GsiBlock& block, const int (&indices)[N]) {
  for (const int index : indices) {
    if (block.Has(index)) return true;
  }
  return false;
}

}  // namespace

bool GsiLevel::IsLineStart(const GsiWord& code) { return code.Name().starts_with('?'); }

void GsiLevel::Begin(const GsiWord& code) {
  const std::string_view method = code.Name().substr(code.Name().find_last_of("?.") + 1);
  const int readings = ReadingsOf(method);
  m_isOpen = readings > 0;
  m_isPassing = !m_isOpen;
  m_isAssumed = false;
  if (m_isOpen) return m_book.BeginLevelLine(readings);
  m_book.LeaveOut(BRENU_LEVEL_METHOD_NOT_READ, {std::string(method)}, {}, Severity::kNote);
}

bool GsiLevel::Enter(const GsiBlock& block) {
  for (const ReadingKind& kind : kReadings) {
    if (const GsiWord* word = block.Find(kind.index)) {
      EnterReading(block, *word);
      return true;
    }
  }
  if (HasOneOf(block, kOtherReadings)) {
    m_book.PassOver("330 or 334, a reading outside a line");
    return true;
  }
  if (HasOneOf(block, kHeightDifferences)) {
    m_book.Became(LineRole::kResult);
    return true;
  }
  const GsiWord* height = block.Find(kHeight);
  if (height == nullptr || block.Has(81) || block.Has(82) || !(m_isOpen || m_isPassing)) {
    return false;
  }
  EnterHeight(block, *height);
  return true;
}

void GsiLevel::EnterReading(const GsiBlock& block, const GsiWord& word) {
  if (m_isPassing) return m_book.PassOver("a reading of a check");
  const std::optional<double> value = word.Length();
  if (!value) {
    return m_book.LeaveOut(BRENU_VALUE_NOT_READ, {std::to_string(word.index)}, word.text);
  }
  if (!m_isOpen) {
    m_book.Doubt(BRENU_READING_WITHOUT_LINE);
    m_book.BeginLevelLine(1);
    m_isOpen = true;
    m_isAssumed = true;
  }
  LevelReading reading;
  for (const ReadingKind& kind : kReadings) {
    if (kind.index != word.index) continue;
    reading.staff = kind.staff;
    reading.repeat = kind.repeat;
  }
  if (const GsiWord* point = block.Find(kPoint)) reading.point = m_book.Name(point->Name());
  if (const GsiWord* distance = block.Find(kDistance)) reading.distance = distance->Length();
  if (m_isAssumed && reading.repeat == 2) m_book.CurrentLevelLine().readingsEach = 2;
  reading.reading = *value;
  m_book.EnterReading(reading);
}

// At the start of a line the height of its first point, elsewhere a result.
void GsiLevel::EnterHeight(const GsiBlock& block, const GsiWord& height) {
  const std::optional<double> value = height.Length();
  const GsiWord* name = block.Find(kPoint);
  const bool isStart = m_isOpen && m_book.CurrentLevelLine().readings.empty();
  // 0 stands for nothing entered.
  if (!isStart || !height.IsEntered() || value.value_or(0.0) == 0.0 || name == nullptr) {
    return m_book.Became(LineRole::kResult);
  }
  BookPoint point;
  point.name = m_book.Name(name->Name());
  point.h = value;
  m_book.EnterPoint(point);
}

}  // namespace brenu
