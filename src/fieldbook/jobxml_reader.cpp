#include <algorithm>
#include <map>
#include <string>
#include <utility>

#include "core/angles.h"
#include "fieldbook/readers.h"
#include "fieldbook/units.h"
#include "fieldbook/xml_text.h"

namespace brenu {

namespace {

struct Target {
  double prismConstant = 0.0;
  std::optional<double> height;
};
struct Station {
  std::size_t setup = 0;
  std::optional<double> instrumentHeight;
  double ppm = 0.0;
};

// What the other records say.
struct OtherRecord {
  std::string_view name;
  LineRole role;
};
constexpr OtherRecord kOtherRecords[] = {
    {"AtmosphereRecord", LineRole::kInstrument},
    {"BackBearingRecord", LineRole::kOrientation},
    {"CoordinateSystemRecord", LineRole::kHeader},
    {"CorrectionsRecord", LineRole::kHeader},
    {"DatumRecord", LineRole::kHeader},
    {"EllipsoidRecord", LineRole::kHeader},
    {"FeatureCodingRecord", LineRole::kHeader},
    {"HorizontalAdjustmentRecord", LineRole::kHeader},
    {"InstrumentRecord", LineRole::kInstrument},
    {"InstrumentTiltCompensatorStatusRecord", LineRole::kInstrument},
    {"JobPropertiesRecord", LineRole::kHeader},
    {"LinkedFilesRecord", LineRole::kHeader},
    {"ActiveMapFilesRecord", LineRole::kHeader},
    {"NoteRecord", LineRole::kNote},
    {"ProjectionRecord", LineRole::kHeader},
    {"TargetRecord", LineRole::kHeights},
    {"TimeZoneRecord", LineRole::kHeader},
    {"UnitsRecord", LineRole::kHeader},
    {"VerticalAdjustmentRecord", LineRole::kHeader},
};

std::string Key(std::string_view id) { return std::string(id); }

class JobXmlReader {
 public:
  JobXmlReader(std::string_view text, BookBuilder& book) : m_book(book), m_xml(text, book) {}

  void Read();

 private:
  void ReadStations(const pugi::xml_node& fieldBook);
  void ReadRecord(const pugi::xml_node& record);
  void ReadPoint(const pugi::xml_node& record);
  void ReadSight(const pugi::xml_node& record, const pugi::xml_node& circle);
  void ReadCoordinates(const pugi::xml_node& record, const pugi::xml_node& grid);
  Target ReadTarget(const pugi::xml_node& record);
  std::optional<double> Number(const pugi::xml_node& node, const char* child) {
    return XmlNumber(m_book, TextOf(node, child), child);
  }
  std::optional<double> Angle(const pugi::xml_node& node, const char* child) {
    std::optional<double> angle = Number(node, child);
    if (angle) *angle *= kDegree;
    return angle;
  }

  BookBuilder& m_book;
  XmlText m_xml;
  std::map<std::string, double, std::less<>> m_ppm;  // by ID of the atmosphere
  std::map<std::string, Station, std::less<>> m_stations;
  std::map<std::string, Target, std::less<>> m_targets;
  bool m_hasPoints = false, m_hasCircles = false;
};

// Records name those that they need; these may stand behind them.
void JobXmlReader::Read() {
  for (const pugi::xml_node& part : m_xml.Root().children()) {
    m_book.StartLine(m_xml.LineOf(part));
    const std::string_view name = part.name();
    if (name == "FieldBook") {
      ReadStations(part);
      for (const pugi::xml_node& record : part.children()) {
        m_book.StartLine(m_xml.LineOf(record));
        ReadRecord(record);
      }
    } else if (name == "Reductions") {
      m_book.LeaveOut(BRENU_RECORD_IS_RESULT, {"Reductions"}, {}, Severity::kNote);
    } else if (part.type() == pugi::node_element) {
      m_book.Became(LineRole::kHeader);
    }
  }
  m_book.Book().lineCount = m_xml.LastLine();
  if (!m_hasPoints || m_hasCircles || m_xml.IsDamaged()) return;
  m_book.StartLine(0);
  m_book.Doubt(BRENU_FIELD_BOOK_SATELLITES);
}

void JobXmlReader::ReadStations(const pugi::xml_node& fieldBook) {
  for (const pugi::xml_node& record : fieldBook.children("AtmosphereRecord")) {
    m_book.StartLine(m_xml.LineOf(record));
    const bool isRaw = TextOf(record, "ApplyPPMToRawDistances") == "true";
    const double ppm = Number(record, "PPM").value_or(0.0);
    m_ppm[Key(AttributeOf(record, "ID"))] = isRaw ? ppm : 0.0;
  }
  for (const pugi::xml_node& record : fieldBook.children("TargetRecord")) {
    m_book.StartLine(m_xml.LineOf(record));
    m_targets.emplace(AttributeOf(record, "ID"), ReadTarget(record));
  }
  for (const pugi::xml_node& record : fieldBook.children("StationRecord")) {
    m_book.StartLine(m_xml.LineOf(record));
    if (TextOf(record, "Deleted") == "true") continue;
    m_book.BeginSetup(TextOf(record, "StationName"));
    const auto ppm = m_ppm.find(TextOf(record, "AtmosphereID"));
    m_stations[Key(AttributeOf(record, "ID"))] = {m_book.LastSetup(),
                                                  Number(record, "TheodoliteHeight"),
                                                  ppm == m_ppm.end() ? 0.0 : ppm->second};
  }
}

Target JobXmlReader::ReadTarget(const pugi::xml_node& record) {
  return {Number(record, "PrismConstant").value_or(0.0), Number(record, "TargetHeight")};
}

void JobXmlReader::ReadRecord(const pugi::xml_node& record) {
  if (record.type() != pugi::node_element) return;
  const std::string_view name = record.name();
  if (name == "PointRecord") return ReadPoint(record);
  if (name == "TargetRecord") m_targets[Key(AttributeOf(record, "ID"))] = ReadTarget(record);
  if (name == "StationRecord") {
    if (TextOf(record, "Deleted") != "true") return;  // entered already
    return m_book.LeaveOut(BRENU_SIGHT_DELETED, {std::string(TextOf(record, "StationName"))}, {},
                           Severity::kNote);
  }
  for (const OtherRecord& other : kOtherRecords) {
    if (name == other.name) return m_book.Became(other.role);
  }
  m_book.PassOver(name);
}

void JobXmlReader::ReadPoint(const pugi::xml_node& record) {
  m_hasPoints = true;
  const std::string_view name = TextOf(record, "Name");
  const std::string_view method = TextOf(record, "Method");
  if (TextOf(record, "Deleted") == "true") {
    return m_book.LeaveOut(BRENU_SIGHT_DELETED, {std::string(name)}, {}, Severity::kNote);
  }
  if (method == "MeanTurnedAngle" || record.child("MTA")) {
    return m_book.LeaveOut(BRENU_RECORD_IS_RESULT, {"MeanTurnedAngle"}, {}, Severity::kNote);
  }
  if (const pugi::xml_node circle = record.child("Circle")) return ReadSight(record, circle);
  if (const pugi::xml_node grid = record.child("Grid")) return ReadCoordinates(record, grid);
  m_book.LeaveOut(BRENU_RECORD_NOT_USED, {"PointRecord " + std::string(method)}, {},
                  Severity::kNote);
}

void JobXmlReader::ReadSight(const pugi::xml_node& record, const pugi::xml_node& circle) {
  m_hasCircles = true;
  const std::string_view target = TextOf(record, "Name");
  const auto station = m_stations.find(TextOf(record, "StationID"));
  if (station == m_stations.end()) {
    return m_book.LeaveOut(BRENU_SIGHT_WITHOUT_SETUP, {std::string(target)});
  }
  BookSight sight;
  sight.direction = Angle(circle, "HorizontalCircle");
  sight.zenith = Angle(circle, "VerticalCircle");
  sight.slope = Number(circle, "EDMDistance");
  const std::string_view face = TextOf(circle, "Face");
  sight.face = face == "Face1" ? Face::kOne : face == "Face2" ? Face::kTwo : FaceOf(sight.zenith);
  sight.ppm = station->second.ppm;
  sight.instrumentHeight = station->second.instrumentHeight;
  const auto prism = m_targets.find(TextOf(record, "TargetID"));
  if (prism != m_targets.end()) {
    sight.prismConstant = prism->second.prismConstant;
    sight.targetHeight = prism->second.height;
  }
  sight.time = AttributeOf(record, "TimeStamp");
  m_book.EnterSight(station->second.setup, target, std::move(sight));
}

void JobXmlReader::ReadCoordinates(const pugi::xml_node& record, const pugi::xml_node& grid) {
  const std::string_view kind = TextOf(record, "Classification");
  const bool isControl = TextOf(record, "Method") == "Coordinates" &&
                         TextOf(record, "SurveyMethod") == "KeyedIn" &&
                         (kind == "Normal" || kind == "Control");
  if (!isControl) {
    return m_book.LeaveOut(BRENU_RECORD_IS_RESULT, {"coordinates " + std::string(kind)}, {},
                           Severity::kNote);
  }
  BookPoint point;
  point.name = m_book.Name(TextOf(record, "Name"));
  point.x = Number(grid, "North");
  point.y = Number(grid, "East");
  point.h = Number(grid, "Elevation");
  m_book.EnterPoint(point);
}

}  // namespace

void ReadJobXml(std::string_view text, BookBuilder& book) { JobXmlReader(text, book).Read(); }

}  // namespace brenu
