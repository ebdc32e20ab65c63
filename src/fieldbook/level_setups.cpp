#include "fieldbook/level_setups.h"

#include <algorithm>
#include <utility>

namespace brenu {

namespace {

StaffMean MeanOf(const std::vector<LevelReading>& readings) {
  StaffMean mean;
  mean.point = readings.front().point;
  mean.hasDistance = true;
  double distances = 0.0;
  for (const LevelReading& r : readings) {
    mean.reading += r.reading;
    distances += r.distance.value_or(0.0);
    mean.hasDistance = mean.hasDistance && r.distance.value_or(0.0) > 0.0;
  }
  const auto count = static_cast<double>(readings.size());
  mean.reading /= count;
  mean.distance = distances / count;
  return mean;
}

class Grouping {
 public:
  Grouping(const LevelLine& line, const PointNames& names, Findings& findings)
      : m_each(static_cast<std::size_t>(line.readingsEach)), m_names(names), m_findings(findings) {
    for (const LevelReading& reading : line.readings) Enter(reading);
    if (!IsEmpty()) CloseUnfinished();
  }

  std::vector<LevelSetup> Take() { return std::move(m_setups); }

 private:
  bool IsEmpty() const { return m_back.empty() && m_fore.empty(); }

  void Enter(const LevelReading& reading) {
    if (reading.staff == Staff::kIntermediate) return EnterIntermediate(reading);
    std::vector<LevelReading>* const side = reading.staff == Staff::kBack ? &m_back : &m_fore;
    if (IsRepeated(*side, reading)) CloseUnfinished();
    side->push_back(reading);
    if (m_back.size() == m_each && m_fore.size() == m_each) Close();
  }

  bool IsRepeated(const std::vector<LevelReading>& side, const LevelReading& reading) const {
    return side.size() == m_each ||
           std::any_of(side.begin(), side.end(), [&](const LevelReading& before) {
             return before.point != reading.point ||
                    (reading.repeat != 0 && before.repeat == reading.repeat);
           });
  }

  // Behind a complete setup it belongs to that.
  void EnterIntermediate(const LevelReading& reading) {
    if (!m_back.empty()) {
      m_intermediates.push_back(reading);
    } else if (m_fore.empty() && !m_setups.empty()) {
      m_setups.back().intermediates.push_back(reading);
    } else {
      m_findings.push_back({BRENU_READING_WITHOUT_BACK_SIGHT,
                            Severity::kWarning,
                            reading.line,
                            {},
                            {m_names[reading.point]},
                            {}});
    }
  }

  void Close() {
    LevelSetup setup;
    setup.line = std::min(m_back.front().line, m_fore.front().line);
    setup.back = MeanOf(m_back);
    setup.fore = MeanOf(m_fore);
    setup.intermediates = std::move(m_intermediates);
    m_setups.push_back(std::move(setup));
    Clear();
  }

  // What was read before the setup began anew; intermediate sights over its back point count.
  void CloseUnfinished() {
    if (!m_intermediates.empty() && !m_back.empty()) {
      m_setups.push_back(
          {m_back.front().line, MeanOf(m_back), std::nullopt, std::move(m_intermediates)});
    } else {
      const LevelReading& first = m_back.empty() ? m_fore.front() : m_back.front();
      m_findings.push_back({BRENU_LEVEL_SETUP_INCOMPLETE,
                            Severity::kWarning,
                            first.line,
                            {},
                            {m_names[first.point]},
                            {}});
    }
    Clear();
  }

  void Clear() {
    m_back.clear();
    m_fore.clear();
    m_intermediates.clear();
  }

  std::size_t m_each;
  const PointNames& m_names;
  Findings& m_findings;
  std::vector<LevelReading> m_back, m_fore, m_intermediates;
  std::vector<LevelSetup> m_setups;
};

}  // namespace

std::vector<LevelSetup> LevelSetupsOf(const LevelLine& line, const PointNames& names,
                                      Findings& findings) {
  return Grouping(line, names, findings).Take();
}

}  // namespace brenu
