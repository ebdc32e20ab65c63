#include "fieldbook/levelling.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "fieldbook/level_setups.h"

namespace brenu {

namespace {

// One setup on the way from a named point to the next.
struct Leg {
  std::int32_t line = 0;
  NameNo back, fore;
  double difference = 0.0, length = 0.0;
  double balance = 0.0;  // back minus fore distance
  bool hasLength = false;
};

class LineWalk {
 public:
  LineWalk(const std::set<NameNo>& ends, const PointNames& names, Findings& findings,
           std::vector<HeightLine>& lines, SetLog log)
      : m_ends(ends), m_names(names), m_findings(findings), m_lines(lines), m_log(log) {}

  void Walk(const std::vector<LevelSetup>& setups) {
    for (const LevelSetup& setup : setups) {
      Connect(setup);
      for (const LevelReading& reading : setup.intermediates) EnterIntermediate(setup, reading);
      if (!setup.fore) continue;
      m_legs.push_back(LegTo(setup, *setup.fore));
      LogSetup(setup);
      if (IsNamed(setup.fore->point)) EndAt(setup.fore->point);
    }
    if (!m_legs.empty()) BreakOff(m_legs.back().fore);
  }

 private:
  bool IsNamed(NameNo point) const {
    if (point.IsNone()) return false;
    return m_names[point].find_first_not_of("0123456789") != std::string::npos ||
           m_ends.contains(point);
  }

  static Leg LegTo(const LevelSetup& setup, const StaffMean& fore) {
    return {setup.line,
            setup.back.point,
            fore.point,
            setup.back.reading - fore.reading,
            setup.back.distance + fore.distance,
            setup.back.distance - fore.distance,
            setup.back.hasDistance && fore.hasDistance};
  }

  void Tell(Code code, Severity severity, std::int32_t line, std::vector<std::string> names) {
    m_findings.push_back({code, severity, line, {}, std::move(names), {}});
  }

  // A setup begins where the last one ended.  If it begins where one on the way began, that was
  // measured again; otherwise the line breaks off.
  void Connect(const LevelSetup& setup) {
    const NameNo back = setup.back.point;
    if (m_legs.empty()) {
      const bool isInside = !back.IsNone() && !IsNamed(back) && Holds(m_finished, back);
      const bool isLast = !m_finished.empty() && setup.fore && m_finished.back().back == back &&
                          m_finished.back().fore == setup.fore->point;
      if (isInside || isLast) ReopenLine();
    }
    if (m_legs.empty() || m_legs.back().fore == back) return;
    if (!Holds(m_legs, back)) return BreakOff(m_legs.back().fore);
    const auto again = std::find_if(m_legs.rbegin(), m_legs.rend(),
                                    [&](const Leg& leg) { return leg.back == back; });
    Tell(BRENU_LEVEL_SETUP_REPEATED, Severity::kWarning, again->line, {m_names[back]});
    m_legs.erase(again.base() - 1, m_legs.end());
  }

  static bool Holds(const std::vector<Leg>& legs, NameNo back) {
    return std::any_of(legs.begin(), legs.end(), [&](const Leg& leg) { return leg.back == back; });
  }

  // The last line, a setup of which is measured again.
  void ReopenLine() {
    m_legs.swap(m_finished);
    m_finished.clear();
    if (m_finishedLine < m_lines.size()) {
      m_lines.erase(m_lines.begin() + static_cast<std::ptrdiff_t>(m_finishedLine));
    }
  }

  void BreakOff(NameNo last) {
    Tell(BRENU_LEVEL_LINE_BROKEN, Severity::kWarning, m_legs.front().line,
         {m_names[m_legs.front().back], m_names[last]});
    m_legs.clear();
  }

  void EndAt(NameNo point) {
    std::vector<Leg>& legs = m_finished;
    legs.clear();
    legs.swap(m_legs);
    const std::size_t before = m_lines.size();
    EnterLine(legs, point);
    m_finishedLine = m_lines.size() > before ? before : kNoLine;
    double balance = 0.0;
    for (const Leg& leg : legs) balance += leg.balance;
    if (std::fabs(balance) <= kUnbalanced * static_cast<double>(legs.size())) return;
    m_findings.push_back({BRENU_LEVEL_BALANCE,
                          Severity::kNote,
                          legs.front().line,
                          {},
                          {m_names[legs.front().back], m_names[point]},
                          {balance}});
  }

  // A line of its own from the back point.  A turning point becomes a point of the job by another
  // one to it, while the line goes on through it: in other lines its number may be used again.  One
  // without number cannot; the way to it counts with the sight.
  void EnterIntermediate(const LevelSetup& setup, const LevelReading& reading) {
    if (reading.point.IsNone()) {
      return Tell(BRENU_SIGHT_WITHOUT_TARGET, Severity::kWarning, reading.line, {});
    }
    const NameNo back = setup.back.point;
    std::vector<Leg> legs;
    if (back.IsNone()) {
      legs = m_legs;
    } else if (!IsNamed(back) && !m_legs.empty() && m_kept.insert(back).second) {
      EnterLine(m_legs, back);
    }
    const double distance = reading.distance.value_or(0.0);
    legs.push_back(LegTo(setup, {reading.point, reading.reading, distance, distance > 0.0}));
    legs.back().line = reading.line;
    EnterLine(legs, reading.point);
  }

  void EnterLine(const std::vector<Leg>& legs, NameNo end) {
    HeightLine line;
    line.line = legs.back().line;
    line.from = legs.front().back;
    line.to = end;
    bool hasLength = true;
    for (const Leg& leg : legs) {
      line.difference += leg.difference;
      line.length += leg.length;
      hasLength = hasLength && leg.hasLength;
    }
    const std::string from = m_names[line.from];
    if (!IsNamed(line.from) && !m_kept.contains(line.from)) {
      return Tell(BRENU_LEVEL_LINE_BROKEN, Severity::kWarning, legs.front().line,
                  {from, m_names[end]});
    }
    if (line.from == line.to) {
      return Tell(BRENU_LEVEL_LINE_TO_ITSELF, Severity::kWarning, line.line, {from});
    }
    if (!hasLength) {
      Tell(BRENU_LEVEL_DISTANCES_MISSING, Severity::kWarning, line.line, {from, m_names[end]});
      if (line.length <= 0.0) line.length = kLengthAssumed * static_cast<double>(legs.size());
    }
    m_lines.push_back(line);
  }

  void LogSetup(const LevelSetup& setup) {
    m_log.place.line = setup.line;
    m_log.place.station = setup.back.point;
    m_log.place.target = setup.fore->point;
    m_log.Add(Step::kLevelSetup, setup.back.reading, -setup.fore->reading,
              setup.back.reading - setup.fore->reading);
  }

  static constexpr std::size_t kNoLine = static_cast<std::size_t>(-1);
  static constexpr double kUnbalanced = 2.0;      // metres a setup
  static constexpr double kLengthAssumed = 50.0;  // of a setup whose distances are not given

  const std::set<NameNo>& m_ends;
  const PointNames& m_names;
  Findings& m_findings;
  std::vector<HeightLine>& m_lines;
  SetLog m_log;
  std::vector<Leg> m_legs;      // since the last named point
  std::vector<Leg> m_finished;  // those of the last line
  std::size_t m_finishedLine = kNoLine;
  std::set<NameNo> m_kept;  // turning points that intermediate sights start from
};

void AddEnds(const std::vector<LevelSetup>& setups, std::set<NameNo>& ends) {
  if (setups.empty()) return;
  ends.insert(setups.front().back.point);
  if (setups.back().fore) ends.insert(setups.back().fore->point);
}

}  // namespace

std::vector<HeightLine> LevelLinesOf(const FieldBook& book, const PointNames& names,
                                     Findings& findings, SetLog log) {
  std::vector<std::vector<LevelSetup>> setups;
  std::set<NameNo> ends;
  for (const LevelLine& line : book.levelLines) {
    setups.push_back(LevelSetupsOf(line, names, findings));
    AddEnds(setups.back(), ends);
  }
  std::vector<HeightLine> lines;
  for (const auto& line : setups) LineWalk(ends, names, findings, lines, log).Walk(line);
  return lines;
}

std::vector<HeightLine> MeanLines(const std::vector<HeightLine>& lines, SetLog log) {
  struct Runs {
    HeightLine sum;
    double first = 0.0;
    double count = 0.0;
  };
  std::vector<Runs> all;
  std::map<std::pair<NameNo, NameNo>, std::size_t> places;
  for (const HeightLine& line : lines) {
    const auto [place, isNew] = places.try_emplace({line.from, line.to}, all.size());
    if (isNew) {
      all.push_back({line, line.difference, 1.0});
      continue;
    }
    Runs& runs = all[place->second];
    runs.sum.difference += line.difference;
    runs.sum.length += line.length;
    runs.count += 1.0;
  }
  std::vector<HeightLine> means;
  for (const Runs& runs : all) {
    HeightLine mean = runs.sum;
    mean.difference /= runs.count;
    mean.length /= runs.count * runs.count;
    log.place.line = mean.line;
    log.place.station = mean.from;
    log.place.target = mean.to;
    if (runs.count > 1.0) log.Add(Step::kLevelLine, runs.first, mean.difference);
    means.push_back(mean);
  }
  return means;
}

}  // namespace brenu
