#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fieldbook/field_book.h"

namespace brenu {

// Fills a field book from the lines of a file and keeps account of what each became.  What is wrong
// with a sight in any format is found here.
class BookBuilder {
 public:
  BookBuilder(FieldBook& book, PointNames& names) : m_book(book), m_names(names) {}

  // What follows is about this line.
  void StartLine(std::int32_t line) { m_line = line; }
  std::int32_t Line() const { return m_line; }
  NameNo Name(std::string_view name) { return m_names.Enter(name); }
  const std::string& NameOf(NameNo name) const { return m_names[name]; }

  void Became(LineRole role, Code why = BRENU_NOTHING) {
    m_book.notes.push_back({m_line, role, why});
  }
  // The line, or a value in it, is not used; `excerpt` is what stands there.
  void LeaveOut(Code code, std::vector<std::string> names = {}, std::string_view excerpt = {},
                Severity severity = Severity::kWarning);
  // A doubt about a line that is used.
  void Doubt(Code code, std::vector<std::string> names = {}, std::string_view excerpt = {},
             Severity severity = Severity::kWarning);
  // A line of a kind that plays no part, such as "12 set"; worth a note only.
  void PassOver(std::string_view what) {
    LeaveOut(BRENU_RECORD_NOT_USED, {std::string(what)}, {}, Severity::kNote);
  }

  // Setups.  The station of one may be named after its first sights.
  void BeginSetup(std::string_view station);
  void NameStation(std::string_view station) { CurrentSetup().station = Name(station); }
  bool HasSetup() const { return !m_book.setups.empty(); }
  Setup& CurrentSetup() { return m_book.setups.back(); }
  // None before the first setup.
  NameNo Station() const { return HasSetup() ? m_book.setups.back().station : NameNo(); }
  // Gives a sight its line and target.  A distance of 0 stands for what was not measured.  A sight
  // without target, or with nothing measured that can be used, is left out: false.
  bool Accept(std::string_view target, BookSight& sight);
  // Enters an accepted sight from the current setup.  Before the first one a setup without station
  // takes it.
  void Keep(BookSight sight);
  void EnterSight(std::string_view target, BookSight sight) {
    if (Accept(target, sight)) Keep(std::move(sight));
  }
  // Leaves out a line that was taken for a sight.
  void Withdraw(std::int32_t line, Code code, std::vector<std::string> names,
                Severity severity = Severity::kWarning);

  // The same for formats whose sights name their setup: its number, counted from 0.
  std::size_t LastSetup() const { return m_book.setups.size() - 1; }
  void EnterSight(std::size_t setup, std::string_view target, BookSight sight) {
    if (Accept(target, sight)) m_book.setups[setup].sights.push_back(std::move(sight));
  }

  // Level lines.
  void BeginLevelLine(int readingsEach);
  bool HasLevelLine() const { return !m_book.levelLines.empty(); }
  LevelLine& CurrentLevelLine() { return m_book.levelLines.back(); }
  void EnterReading(LevelReading reading);

  void EnterHeightLine(HeightLine line);
  void EnterPoint(BookPoint point);

  FieldBook& Book() { return m_book; }

  // After the last line: leaves out the sights without a station and those of the station itself,
  // and brings the findings into the order of the lines.
  void Finish();

 private:
  FieldBook& m_book;
  PointNames& m_names;
  std::int32_t m_line = 0;
};

}  // namespace brenu
