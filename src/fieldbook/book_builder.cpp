#include "fieldbook/book_builder.h"

#include <algorithm>
#include <utility>

#include "core/text_number.h"

namespace brenu {

void BookBuilder::Doubt(Code code, std::vector<std::string> names, std::string_view excerpt,
                        Severity severity) {
  m_book.findings.push_back({code, severity, m_line, std::string(excerpt), std::move(names), {}});
}

void BookBuilder::LeaveOut(Code code, std::vector<std::string> names, std::string_view excerpt,
                           Severity severity) {
  Doubt(code, std::move(names), excerpt, severity);
  Became(LineRole::kLeftOut, code);
}

void BookBuilder::BeginSetup(std::string_view station) {
  m_book.setups.push_back({m_line, Name(station), {}});
  Became(LineRole::kSetup);
}

bool BookBuilder::Accept(std::string_view target, BookSight& sight) {
  sight.line = m_line;
  sight.target = Name(target);
  for (std::optional<double>* distance : {&sight.slope, &sight.horizontal}) {
    if (distance->value_or(1.0) > 0.0) continue;
    if (**distance < 0.0) {
      std::string text;
      AppendShortest(text, **distance);
      Doubt(BRENU_VALUE_NOT_READ, {"distance"}, text);
    }
    distance->reset();
  }
  const bool isEmpty = !sight.direction && !sight.slope && !sight.horizontal && !sight.azimuth;
  if (target.empty()) {
    LeaveOut(BRENU_SIGHT_WITHOUT_TARGET);
  } else if (isEmpty) {
    LeaveOut(BRENU_SIGHT_WITHOUT_VALUES, {std::string(target)});
  } else {
    Became(LineRole::kSight);
    return true;
  }
  return false;
}

void BookBuilder::Keep(BookSight sight) {
  if (!HasSetup()) m_book.setups.push_back({m_line, {}, {}});
  CurrentSetup().sights.push_back(std::move(sight));
}

void BookBuilder::Withdraw(std::int32_t line, Code code, std::vector<std::string> names,
                           Severity severity) {
  auto note = std::lower_bound(m_book.notes.begin(), m_book.notes.end(), line,
                               [](const LineNote& n, std::int32_t l) { return n.line < l; });
  for (; note != m_book.notes.end() && note->line == line; ++note) {
    if (note->role != LineRole::kSight) continue;
    *note = {line, LineRole::kLeftOut, code};
    break;
  }
  StartLine(line);
  Doubt(code, std::move(names), {}, severity);
}

void BookBuilder::BeginLevelLine(int readingsEach) {
  m_book.levelLines.push_back({m_line, readingsEach, {}});
  Became(LineRole::kLevelLine);
}

void BookBuilder::EnterReading(LevelReading reading) {
  reading.line = m_line;
  CurrentLevelLine().readings.push_back(reading);
  Became(LineRole::kReading);
}

void BookBuilder::EnterHeightLine(HeightLine line) {
  line.line = m_line;
  m_book.heightLines.push_back(line);
  Became(LineRole::kHeightDifference);
}

void BookBuilder::EnterPoint(BookPoint point) {
  point.line = m_line;
  Became(point.kind == BookPointKind::kControl ? LineRole::kControl : LineRole::kCoordinates);
  m_book.points.push_back(point);
}

void BookBuilder::Finish() {
  std::stable_sort(m_book.notes.begin(), m_book.notes.end(),
                   [](const LineNote& a, const LineNote& b) { return a.line < b.line; });
  for (Setup& setup : m_book.setups) {
    std::erase_if(setup.sights, [&](const BookSight& sight) {
      const bool noStation = setup.station.IsNone();
      if (!noStation && sight.target != setup.station) return false;
      Withdraw(sight.line, noStation ? BRENU_SIGHT_WITHOUT_SETUP : BRENU_SIGHT_OF_STATION,
               {m_names[sight.target]});
      return true;
    });
  }
  std::erase_if(m_book.setups, [](const Setup& setup) { return setup.station.IsNone(); });
  std::stable_sort(m_book.findings.begin(), m_book.findings.end(),
                   [](const Finding& a, const Finding& b) { return a.line < b.line; });
}

}  // namespace brenu
