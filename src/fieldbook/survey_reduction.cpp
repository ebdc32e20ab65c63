#include "fieldbook/survey_reduction.h"

#include <algorithm>
#include <cmath>

#include "core/angles.h"

namespace brenu {

void SurveyReduction::Add(FieldBook& book, ReductionLog* log) {
  Spread spread;
  ReductionNotes notes = {m_names, book.findings, spread, {log, {}}};
  notes.log.place.book = m_books;
  for (const Setup& setup : book.setups) {
    if (setup.sights.empty()) continue;
    const auto [place, isNew] = m_places.try_emplace(setup.station.Number(), m_stations.size());
    if (isNew) {
      m_stations.emplace_back(setup.station);
    } else if (!m_options.joinSetups) {
      continue;
    }
    const std::vector<TargetMeans> means = ReduceSetup(setup, m_options, notes);
    m_stations[place->second].Add(means, setup.line, notes);
  }
  for (Finding& finding : spread.Outliers(m_names)) book.findings.push_back(std::move(finding));
  m_spread.Add(spread);
  if (book.aPriori && !m_aPriori) m_aPriori = book.aPriori;
  for (const HeightLine& line : LevelLinesOf(book, m_names, book.findings, notes.log)) {
    m_lines.push_back(line);
  }
  m_lines.insert(m_lines.end(), book.heightLines.begin(), book.heightLines.end());
  ++m_books;
}

std::vector<HeightLine> SurveyReduction::LevelLines(ReductionLog* log) const {
  return MeanLines(m_lines, {log, {}});
}

// The error of a height difference: that of the zenith angle, and of the two heights over the
// points.
std::vector<HeightLine> SurveyReduction::TrigonometricLines(Findings& findings) const {
  constexpr double kHeightOverPoint = 0.001;  // metres
  constexpr double kKilometre = 1000.0;
  const double zenithError = APrioriErrors().direction / kRho;
  std::vector<HeightLine> lines;
  Finding missing;
  for (const StationMeans& station : m_stations) {
    for (const TargetMeans& target : station.Targets()) {
      if (!target.height.value) {
        if (!target.lacksHeights) continue;
        if (missing.code == BRENU_NOTHING) {
          missing = Warning(BRENU_HEIGHTS_OF_INSTRUMENT_MISSING,
                            {m_names[station.Station()], m_names[target.target]}, {-1.0});
        }
        missing.values[0] += 1.0;
        continue;
      }
      const double ofAngle = *target.slopeDistance * zenithError;
      const double variance = ofAngle * ofAngle + 2.0 * kHeightOverPoint * kHeightOverPoint;
      lines.push_back({target.line, station.Station(), target.target, *target.height.value,
                       variance / (kLevelError * kLevelError) * kKilometre});
    }
  }
  if (missing.code != BRENU_NOTHING) findings.push_back(missing);
  return lines;
}

}  // namespace brenu
