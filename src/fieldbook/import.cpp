#include "fieldbook/import.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

#include "fieldbook/book_format.h"
#include "fieldbook/job_writer.h"
#include "fieldbook/point_list.h"

namespace brenu {

void FieldImport::EnterPoint(const BookPoint& point, bool isControl, Findings& findings) {
  constexpr double kSame = 0.0005;  // metres
  if (point.name.IsNone()) return;
  KnownPlace& place = m_places[point.name];
  double difference = 0.0;
  if (point.x && point.y) {
    if (!place.isPlaneKnown) {
      place.x = point.x;
      place.y = point.y;
      place.isPlaneKnown = isControl;
    } else if (isControl) {
      difference = std::hypot(*point.x - *place.x, *point.y - *place.y);
    }
  }
  if (point.h) {
    if (!place.isHeightKnown) {
      place.h = point.h;
      place.isHeightKnown = isControl;
    } else if (isControl) {
      difference = std::max(difference, std::fabs(*point.h - *place.h));
    }
  }
  if (difference <= kSame) return;
  findings.push_back({BRENU_CONTROL_CONFLICT,
                      Severity::kWarning,
                      point.line,
                      {},
                      {m_names[point.name]},
                      {difference}});
}

void FieldImport::AddControl(const Store& store) {
  Findings none;
  for (const auto& [index, point] : store.Points()) {
    BookPoint known;
    known.name = m_names.Enter(NameOf(point));
    m_places[known.name].isListed = true;
    const bool hasPlace = point.x != 0.0 || point.y != 0.0;
    if (hasPlace || IsPlaneControl(point)) {
      known.x = point.x;
      known.y = point.y;
      EnterPoint(known, IsPlaneControl(point), none);
      known.x = known.y = std::nullopt;
    }
    if (point.h == 0.0 && !IsHeightControl(point)) continue;
    known.h = point.h;
    EnterPoint(known, IsHeightControl(point), none);
  }
}

Outcome FieldImport::AddControl(std::string_view text) {
  Outcome outcome;
  if (FormatOfBook(text) != BookFormat::kUnknown) {
    FieldBook book;
    outcome = ReadBook(text, m_options.reading, m_names, book);
    EnterBookPoints(book, true, outcome.findings);
    return outcome;
  }
  std::vector<ListedPoint> points;
  outcome = ReadPointList(text, points);
  for (const ListedPoint& point : points) {
    BookPoint known;
    known.line = point.line;
    known.name = m_names.Enter(point.name);
    known.x = point.x;
    known.y = point.y;
    known.h = point.h;
    EnterPoint(known, true, outcome.findings);
    m_places[known.name].isListed = true;
  }
  return outcome;
}

void FieldImport::EnterBookPoints(const FieldBook& book, bool isList, Findings& findings) {
  for (const BookPoint& point : book.points) {
    const bool isControl =
        point.kind == BookPointKind::kControl || (isList && point.kind == BookPointKind::kListed);
    EnterPoint(point, isControl, findings);
    if (book.format == BookFormat::kGkf && !point.name.IsNone()) m_places[point.name].isKept = true;
    if (isList && !point.name.IsNone()) m_places[point.name].isListed = true;
  }
}

Outcome FieldImport::AddBook(std::string name, std::string_view text, bool withLog) {
  FieldBook book;
  Outcome outcome = ReadBook(text, m_options.reading, m_names, book);
  if (!outcome.ok) return outcome;
  EnterBookPoints(book, false, book.findings);
  m_survey.Add(book, withLog ? &m_log : nullptr);
  std::stable_sort(book.findings.begin(), book.findings.end(),
                   [](const Finding& a, const Finding& b) { return a.line < b.line; });
  m_books.push_back({std::move(name), std::move(book)});
  return outcome;
}

void FieldImport::Finish(ImportedJob& job, ImportedJob& heights, Findings& findings) {
  std::vector<HeightLine> lines = m_survey.LevelLines(&m_log);
  if (m_options.reduction.trigonometricHeights) {
    std::vector<HeightLine> trigonometric = m_survey.TrigonometricLines(findings);
    std::set<std::pair<NameNo, NameNo>> levelled;
    for (const HeightLine& line : lines) {
      levelled.insert({{line.from, line.to}, {line.to, line.from}});
    }
    std::erase_if(trigonometric, [&](const HeightLine& line) {
      return levelled.contains({line.from, line.to});
    });
    lines.insert(lines.end(), trigonometric.begin(), trigonometric.end());
  }
  JobWriter writer(m_survey, m_names, m_places, findings);
  const bool hasPlane = std::any_of(m_survey.Stations().begin(), m_survey.Stations().end(),
                                    [](const StationMeans& s) { return !s.Targets().empty(); });
  if (hasPlane) writer.WritePlane(job);
  const bool areShared = hasPlane && !lines.empty() && writer.JoinHeights(lines, job);
  if (!lines.empty() && !areShared) writer.WriteHeights(lines, hasPlane ? heights : job);
  if (!hasPlane && lines.empty()) {
    writer.WritePoints(job);
    if (m_places.empty()) findings.push_back(Warning(BRENU_NOTHING_IMPORTED));
  }
  if (hasPlane && !lines.empty() && !areShared) findings.push_back(Note(BRENU_HEIGHTS_APART));
}

}  // namespace brenu
