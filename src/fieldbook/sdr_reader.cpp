#include <algorithm>
#include <cmath>
#include <utility>

#include "core/angles.h"
#include "core/text_number.h"
#include "fieldbook/book_lines.h"
#include "fieldbook/readers.h"
#include "fieldbook/sdr_fields.h"
#include "fieldbook/units.h"

namespace brenu {

namespace {

// Records without a part in the network.
struct OtherRecord {
  std::string_view type;
  LineRole role;
};
constexpr OtherRecord kOtherRecords[] = {{"04", LineRole::kInstrument},
                                         {"05", LineRole::kHeights},
                                         {"06", LineRole::kHeights},
                                         {"10", LineRole::kHeader},
                                         {"11", LineRole::kResult}};

// A set that the observer has marked as bad: its targets, as many as the record says.
struct BadSet {
  std::size_t count = 0;  // 0 outside such a set
  std::vector<std::string_view> targets;

  bool Takes(std::string_view target) {
    const bool isOld = std::find(targets.begin(), targets.end(), target) != targets.end();
    if (!isOld && targets.size() == count) count = 0;
    if (count == 0) return false;
    if (!isOld) targets.push_back(target);
    return true;
  }
};

class SdrReader {
 public:
  explicit SdrReader(BookBuilder& book) : m_book(book) {}

  void Read(std::string_view text);

 private:
  void ReadRecord(std::string_view record);
  void ReadHeader(std::string_view record);
  void ReadStation(std::string_view record);
  void ReadPoint(std::string_view record);
  void ReadSight(std::string_view record);
  void ReadSet(std::string_view record);
  void ReadNote(std::string_view record);
  void BeginSetup(std::string_view station, std::optional<double> instrumentHeight);
  // Means count where nothing else was measured in the setup.
  void EndSetup();
  std::optional<double> Number(std::string_view field, const char* what);
  std::optional<double> Length(std::string_view field, const char* what);
  std::optional<double> ZenithAngle(std::string_view field);

  BookBuilder& m_book;
  SdrUnits m_units;
  std::string_view m_station;  // of the last station record
  std::optional<double> m_stationHeight, m_instrumentHeight, m_targetHeight;
  std::vector<BookSight> m_means;  // of the current setup
  BadSet m_badSet;
};

void SdrReader::Read(std::string_view text) {
  m_units = UnitsOfSdrHeader({});
  BookLines lines(text);
  while (lines.Next()) {
    m_book.StartLine(lines.Number());
    if (lines.IsBlank()) continue;
    if (lines.IsTransferEnd()) {
      m_book.Became(LineRole::kTransfer);
    } else {
      ReadRecord(lines.Text());
    }
  }
  m_book.Book().lineCount = lines.Number();
  EndSetup();
}

void SdrReader::ReadRecord(std::string_view record) {
  const std::string_view type = SdrType(record);
  if (type == "00") return ReadHeader(record);
  if (type == "01") {
    m_units.isFromHorizon = CountsFromHorizon(record);
    return m_book.Became(LineRole::kInstrument);
  }
  if (type == "02") return ReadStation(record);
  if (type == "03") {
    m_targetHeight = Length(SdrFields(record, m_units.layout).Number(), "height of the target");
    return m_book.Became(LineRole::kHeights);
  }
  if (type == "07") return m_book.Became(LineRole::kOrientation);
  if (type == "08") return ReadPoint(record);
  if (type == "09") return ReadSight(record);
  if (type == "12") return ReadSet(record);
  if (type == "13") return ReadNote(record);
  for (const OtherRecord& other : kOtherRecords) {
    if (type == other.type) return m_book.Became(other.role);
  }
  const bool isRecord = type.size() == 2 && type.find_first_not_of("0123456789") == type.npos;
  if (isRecord) return m_book.PassOver(type);
  m_book.LeaveOut(BRENU_LINE_NOT_OF_FORMAT, {"SDR"}, record);
}

void SdrReader::ReadHeader(std::string_view record) {
  const bool isFromHorizon = m_units.isFromHorizon;
  m_units = UnitsOfSdrHeader(record);
  m_units.isFromHorizon = isFromHorizon;
  if (!m_units.isComplete) m_book.Doubt(BRENU_HEADER_WITHOUT_UNITS);
  m_book.Became(LineRole::kHeader);
}

std::optional<double> SdrReader::Number(std::string_view field, const char* what) {
  if (field.empty()) return std::nullopt;
  const ParsedDouble number = ParseWholeDouble(field);
  if (number.isWhole && std::isfinite(number.value)) return number.value;
  m_book.Doubt(BRENU_VALUE_NOT_READ, {what}, field);
  return std::nullopt;
}

std::optional<double> SdrReader::Length(std::string_view field, const char* what) {
  std::optional<double> length = Number(field, what);
  if (length) *length *= m_units.length;
  return length;
}

std::optional<double> SdrReader::ZenithAngle(std::string_view field) {
  std::optional<double> angle = Number(field, "vertical angle");
  if (!angle) return angle;
  *angle *= m_units.angle;
  return FullCircle(m_units.isFromHorizon ? kPi / 2.0 - *angle : *angle);
}

void SdrReader::BeginSetup(std::string_view station, std::optional<double> instrumentHeight) {
  EndSetup();
  m_book.BeginSetup(station);
  m_instrumentHeight = instrumentHeight;
}

void SdrReader::EndSetup() {
  const std::int32_t line = m_book.Line();
  const bool isUsed = !m_book.HasSetup() || m_book.CurrentSetup().sights.empty();
  for (BookSight& mean : m_means) {
    if (isUsed) {
      m_book.Keep(std::move(mean));
    } else {
      m_book.Withdraw(mean.line, BRENU_SIGHT_IS_MEAN, {m_book.NameOf(mean.target)},
                      Severity::kNote);
    }
  }
  m_means.clear();
  m_badSet.count = 0;
  m_book.StartLine(line);
}

void SdrReader::ReadStation(std::string_view record) {
  SdrFields fields(record, m_units.layout);
  m_station = fields.Name();
  for (int coordinate = 0; coordinate < 3; ++coordinate) fields.Number();
  m_stationHeight = Length(fields.Number(), "height of the instrument");
  BeginSetup(m_station, m_stationHeight);
}

// Entered coordinates, and those taken over from another job, are control.
void SdrReader::ReadPoint(std::string_view record) {
  const std::string_view origin = SdrOrigin(record);
  if (origin != "KI" && origin != "CO" && origin != "XD") {
    return m_book.Became(LineRole::kCoordinates);
  }
  SdrFields fields(record, m_units.layout);
  BookPoint point;
  point.name = m_book.Name(fields.Name());
  std::optional<double>& first = m_units.isEastFirst ? point.y : point.x;
  std::optional<double>& second = m_units.isEastFirst ? point.x : point.y;
  first = Length(fields.Number(), "coordinate");
  second = Length(fields.Number(), "coordinate");
  point.h = Length(fields.Number(), "height");
  m_book.EnterPoint(point);
}

void SdrReader::ReadSight(std::string_view record) {
  SdrFields fields(record, m_units.layout);
  const std::string_view origin = SdrOrigin(record);
  const std::string_view station = fields.Name();
  const std::string_view target = fields.Name();
  const bool isMean = origin == "MC";
  if (!isMean && origin != "F1" && origin != "F2" && origin != "MD") {
    return m_book.PassOver(record.substr(0, 4));
  }
  if (!station.empty() && m_book.Name(station) != m_book.Station()) {
    const bool isKnown = station == m_station;
    BeginSetup(station, isKnown ? m_stationHeight : std::nullopt);
  }
  if (m_badSet.Takes(target)) {
    return m_book.LeaveOut(BRENU_SIGHT_OF_BAD_SET, {std::string(target)});
  }
  BookSight sight;
  sight.slope = Length(fields.Number(), "slope distance");
  sight.zenith = ZenithAngle(fields.Number());
  sight.direction = Number(fields.Number(), "horizontal angle");
  if (sight.direction) *sight.direction *= m_units.angle;
  if (sight.direction && m_units.isCounterClockwise && !isMean) {
    sight.direction = FullCircle(kTwoPi - *sight.direction);
  }
  sight.face = origin == "F1" ? Face::kOne : origin == "F2" ? Face::kTwo : FaceOf(sight.zenith);
  sight.instrumentHeight = m_instrumentHeight;
  sight.targetHeight = m_targetHeight;
  if (!isMean) return m_book.EnterSight(target, std::move(sight));
  if (m_book.Accept(target, sight)) m_means.push_back(std::move(sight));
}

void SdrReader::ReadSet(std::string_view record) {
  SdrFields fields(record, m_units.layout);
  fields.Name();
  m_badSet.count = 0;
  m_badSet.targets.clear();
  const std::int32_t count = ParseInt(fields.Take(3));
  fields.Take(3);  // the number of the set
  const bool isBad = m_units.layout.name == kWideSdr.name && fields.Take(1) == "2";
  if (isBad && count > 0) m_badSet.count = static_cast<std::size_t>(count);
  m_book.Became(LineRole::kNote);
}

void SdrReader::ReadNote(std::string_view record) {
  const std::string_view kind = SdrOrigin(record);
  if (kind == "DU" && Columns(record, 5, 1) == "3") m_units.length = kSurveyFoot;
  if (kind == "F1" || kind == "F2" || kind == "MD" || kind == "MC") {
    return m_book.LeaveOut(BRENU_NOTE_LIKE_SIGHT, {}, record, Severity::kNote);
  }
  m_book.Became(LineRole::kNote);
}

}  // namespace

void ReadSdr(std::string_view text, BookBuilder& book) { SdrReader(book).Read(text); }

}  // namespace brenu
