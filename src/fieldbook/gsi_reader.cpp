#include <algorithm>
#include <map>

#include "fieldbook/book_lines.h"
#include "fieldbook/gsi_block.h"
#include "fieldbook/gsi_level.h"
#include "fieldbook/readers.h"

namespace brenu {

namespace {

enum Word : int {
  kPoint = 11,
  kStation = 16,
  kDirection = 21,
  kZenith = 22,
  kSlope = 31,
  kHorizontal = 32,
  kCode = 41,
  kCodeStation = 42,
  kCodeHeight = 43,
  kTargetEast = 81,
  kTargetNorth = 82,
  kTargetHeightOfPoint = 83,
  kStationEast = 84,
  kStationNorth = 85,
  kStationHeightOfPoint = 86,
  kTargetHeight = 87,
  kInstrumentHeight = 88
};

// Words with a meaning here, used or not: measured values and their corrections, codes and remarks,
// coordinates and heights.
bool IsKnown(int index) {
  return index == kPoint || index == kStation || index == 21 || index == 22 ||
         (index >= 31 && index <= 33) || (index >= 41 && index <= 49) || index == 51 ||
         index == 58 || (index >= 71 && index <= 79) || (index >= 81 && index <= 88) ||
         (index >= 330 && index <= 336) || (index >= 390 && index <= 392) ||
         (index >= 571 && index <= 574);
}

class GsiReader {
 public:
  GsiReader(const std::vector<std::string>& stationCodes, BookBuilder& book)
      : m_stationCodes(stationCodes), m_book(book), m_level(book) {}

  void Read(std::string_view text);

 private:
  void ReadLine(std::string_view line);
  void ReadCode();
  void ReadMeasurement();
  bool ReadStation(const GsiWord& point, bool isSight);
  void BeginStation(std::string_view name);
  void KeepStationPoint();
  void ReadSight(const GsiWord& target);
  void ReadCoordinates(const GsiWord& name);
  void TakeHeights();
  void CheckNumber();
  void CheckWords();
  using Value = std::optional<double> (GsiWord::*)() const;
  // A value of the block; one that is cut off or has a unit of another kind is told of.
  std::optional<double> ValueOf(int index, Value value);
  std::optional<double> LengthOf(int index) { return ValueOf(index, &GsiWord::Length); }
  std::optional<double> AngleOf(int index) { return ValueOf(index, &GsiWord::Angle); }
  std::optional<double> EnteredLength(int index) const;
  void EnterStationPoints();

  const std::vector<std::string>& m_stationCodes;
  BookBuilder& m_book;
  GsiLevel m_level;
  GsiBlock m_block;
  // They hold until they change.
  std::optional<double> m_instrumentHeight, m_targetHeight;
  std::optional<int> m_lastNumber;
  std::int32_t m_firstGap = 0, m_gaps = 0;
  std::vector<BookPoint> m_stationPoints;  // as they stand under the stations
};

void GsiReader::Read(std::string_view text) {
  BookLines lines(text);
  while (lines.Next()) {
    m_book.StartLine(lines.Number());
    if (lines.IsBlank()) continue;
    if (lines.IsTransferEnd()) {
      m_book.Became(LineRole::kTransfer);
    } else {
      ReadLine(lines.Text());
    }
  }
  m_book.Book().lineCount = lines.Number();
  EnterStationPoints();
  if (m_gaps == 0) return;
  m_book.Book().findings.push_back(
      {BRENU_BLOCKS_MISSING, Severity::kNote, m_firstGap, {}, {}, {static_cast<double>(m_gaps)}});
}

void GsiReader::ReadLine(std::string_view line) {
  CutGsiLine(line, m_block);
  if (m_block.words.empty()) {
    return m_book.LeaveOut(BRENU_LINE_NOT_OF_FORMAT, {"GSI"}, line);
  }
  if (!m_block.damage.empty()) m_book.Doubt(BRENU_WORD_NOT_READ, {}, m_block.damage);
  CheckNumber();
  CheckWords();
  const int first = m_block.words.front().index;
  if (first == kPoint) return ReadMeasurement();
  if (first == kCode) return ReadCode();
  if (first >= 500 && first < 600) return m_book.Became(LineRole::kResult);
  m_book.PassOver("a block that begins with the word " + std::to_string(first));
}

// What was deleted on the instrument leaves a gap in the running numbers.
void GsiReader::CheckNumber() {
  if (m_block.number && m_lastNumber && *m_block.number > *m_lastNumber + 1) {
    if (m_gaps == 0) m_firstGap = m_book.Line();
    m_gaps += *m_block.number - *m_lastNumber - 1;
  }
  m_lastNumber = m_block.number;
}

void GsiReader::CheckWords() {
  for (const GsiWord& word : m_block.words) {
    if (IsKnown(word.index)) continue;
    m_book.Doubt(BRENU_WORD_NOT_USED, {std::to_string(word.index)}, word.text, Severity::kNote);
  }
}

std::optional<double> GsiReader::ValueOf(int index, Value value) {
  const GsiWord* word = m_block.Find(index);
  if (word == nullptr) return std::nullopt;
  const std::optional<double> found = (word->*value)();
  if (!found && (word->IsNumber() || !word->isComplete)) {
    m_book.Doubt(BRENU_VALUE_NOT_READ, {std::to_string(index)}, word->text);
  }
  return found;
}

std::optional<double> GsiReader::EnteredLength(int index) const {
  const GsiWord* word = m_block.Find(index);
  return word != nullptr && word->IsEntered() ? word->Length() : std::nullopt;
}

void GsiReader::ReadCode() {
  const GsiWord& code = m_block.words.front();
  if (GsiLevel::IsLineStart(code)) return m_level.Begin(code);
  const GsiWord* station = m_block.Find(kCodeStation);
  const bool begins =
      std::find(m_stationCodes.begin(), m_stationCodes.end(), code.Name()) != m_stationCodes.end();
  if (!begins || station == nullptr || station->Name().empty()) {
    return m_book.Became(LineRole::kCode);
  }
  if (const GsiWord* height = m_block.Find(kCodeHeight)) m_instrumentHeight = height->Length();
  m_book.BeginSetup(station->Name());
}

void GsiReader::ReadMeasurement() {
  if (m_level.Enter(m_block)) return;
  const GsiWord& point = m_block.words.front();
  TakeHeights();
  const bool isSight = m_block.Has(kDirection) || m_block.Has(kZenith) || m_block.Has(kSlope) ||
                       m_block.Has(kHorizontal);
  const bool isStation = ReadStation(point, isSight);
  if (isSight) return ReadSight(point);
  if (m_block.Has(kTargetEast) || m_block.Has(kTargetNorth) || m_block.Has(kTargetHeightOfPoint)) {
    return ReadCoordinates(point);
  }
  if (!isStation) m_book.Became(LineRole::kHeights);
}

// Coordinates of a station make the point of the block one, except beside a sight that has another
// station beside it; so does a new name of the station.
bool GsiReader::ReadStation(const GsiWord& point, bool isSight) {
  const GsiWord* station = m_block.Find(kStation);
  if (station != nullptr && station->Name().empty()) station = nullptr;
  const bool hasCoordinates = m_block.Has(kStationEast) || m_block.Has(kStationNorth);
  const bool isBeside = isSight && station != nullptr && station->Name() != point.Name();
  if (hasCoordinates && !isBeside) {
    BeginStation(point.Name());
    KeepStationPoint();
    return true;
  }
  if (station == nullptr || m_book.Name(station->Name()) == m_book.Station()) return false;
  BeginStation(station->Name());
  if (hasCoordinates) KeepStationPoint();
  return true;
}

void GsiReader::TakeHeights() {
  if (m_block.Has(kTargetHeight)) m_targetHeight = LengthOf(kTargetHeight);
  if (m_block.Has(kInstrumentHeight)) m_instrumentHeight = LengthOf(kInstrumentHeight);
}

// The result of a free station stands behind the sights that gave it.
void GsiReader::BeginStation(std::string_view name) {
  const auto isComputed = [&](int index) {
    const GsiWord* word = m_block.Find(index);
    return word != nullptr && word->source == '4';
  };
  const bool isFree = isComputed(kStationEast) || isComputed(kStationNorth);
  if (isFree && m_book.HasSetup() && m_book.Station().IsNone()) {
    m_book.NameStation(name);
    for (BookSight& sight : m_book.CurrentSetup().sights) {
      if (!sight.instrumentHeight) sight.instrumentHeight = m_instrumentHeight;
    }
    return m_book.BeginSetup(name);  // the circle may have been turned by the result
  }
  if (isFree && m_book.HasSetup() && !m_book.CurrentSetup().sights.empty()) {
    m_book.Doubt(BRENU_FREE_STATION_BEHIND_SIGHTS,
                 {std::string(name), m_book.NameOf(m_book.Station())});
  }
  m_book.BeginSetup(name);
}

void GsiReader::KeepStationPoint() {
  BookPoint point;
  point.line = m_book.Line();
  point.name = m_book.Station();
  point.kind = EnteredLength(kStationNorth) && EnteredLength(kStationEast)
                   ? BookPointKind::kListed
                   : BookPointKind::kApproximate;
  point.x = LengthOf(kStationNorth);
  point.y = LengthOf(kStationEast);
  point.h = LengthOf(kStationHeightOfPoint);
  if (!point.x || !point.y) return;
  if (*point.x == 0.0 && *point.y == 0.0) {
    return m_book.Doubt(BRENU_STATION_AT_ORIGIN, {m_book.NameOf(point.name)}, {}, Severity::kNote);
  }
  m_stationPoints.push_back(point);
}

void GsiReader::ReadSight(const GsiWord& target) {
  BookSight sight;
  sight.direction = AngleOf(kDirection);
  sight.zenith = AngleOf(kZenith);
  sight.slope = LengthOf(kSlope);
  sight.horizontal = LengthOf(kHorizontal);
  sight.instrumentHeight = m_instrumentHeight;
  sight.targetHeight = m_targetHeight;
  sight.face = FaceOf(sight.zenith);
  m_book.EnterSight(target.Name(), std::move(sight));
}

void GsiReader::ReadCoordinates(const GsiWord& name) {
  BookPoint point;
  point.name = m_book.Name(name.Name());
  point.x = LengthOf(kTargetNorth);
  point.y = LengthOf(kTargetEast);
  point.h = LengthOf(kTargetHeightOfPoint);
  const bool isEntered = EnteredLength(kTargetNorth) || EnteredLength(kTargetEast) ||
                         EnteredLength(kTargetHeightOfPoint);
  point.kind = isEntered ? BookPointKind::kListed : BookPointKind::kApproximate;
  if (!point.x && !point.y && !point.h) return m_book.Became(LineRole::kCoordinates);
  m_book.EnterPoint(point);
}

// The same coordinates under the names of several stations are what the instrument had in memory.
void GsiReader::EnterStationPoints() {
  std::map<std::pair<double, double>, std::vector<NameNo>> names;
  for (const BookPoint& p : m_stationPoints) names[{*p.x, *p.y}].push_back(p.name);
  for (const BookPoint& p : m_stationPoints) {
    const auto& same = names[{*p.x, *p.y}];
    const bool isMemory =
        std::any_of(same.begin(), same.end(), [&](NameNo name) { return name != p.name; });
    if (!isMemory) {
      m_book.Book().points.push_back(p);
      continue;
    }
    m_book.StartLine(p.line);
    m_book.Doubt(BRENU_STATION_COORDINATES_FROM_MEMORY, {m_book.NameOf(p.name)}, {},
                 Severity::kNote);
  }
}

}  // namespace

void ReadGsi(std::string_view text, const std::vector<std::string>& stationCodes,
             BookBuilder& book) {
  GsiReader(stationCodes, book).Read(text);
}

}  // namespace brenu
