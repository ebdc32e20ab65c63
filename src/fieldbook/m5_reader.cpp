#include <cctype>
#include <string>
#include <utility>
#include <vector>

#include "core/angles.h"
#include "core/text_number.h"
#include "fieldbook/book_lines.h"
#include "fieldbook/m5_level.h"
#include "fieldbook/m5_line.h"
#include "fieldbook/readers.h"

namespace brenu {

namespace {

constexpr std::size_t kInformationWidth = 27;

// Where an eccentric prism stood: in front, behind, right, left of its point.
struct EccentricType {
  std::string_view type;
  double Eccentric::*side;
  double sign;
};
constexpr EccentricType kEccentric[] = {{"Tv", &Eccentric::front, 1.0},
                                        {"Th", &Eccentric::front, -1.0},
                                        {"Tr", &Eccentric::right, 1.0},
                                        {"Tl", &Eccentric::right, -1.0}};

class M5Reader {
 public:
  explicit M5Reader(BookBuilder& book) : m_book(book), m_level(book) {}

  void Read(std::string_view text);

 private:
  void ReadLine(const M5Line& line);
  void ReadText(const M5Line& line);
  void ReadLayout(const M5Line& line);
  void ReadPoint(const M5Line& line);
  void ReadStation(const M5Line& line, std::string_view point);
  void ReadSight(const M5Line& line, std::string_view point);
  bool TakeHeights(const M5Line& line);
  bool TakeEccentric(const M5Line& line, std::string_view point);
  void BeginStationing(bool isKnown);
  void EndStationing();
  std::string_view PartOf(const M5Line& line, M5Columns columns) const;
  std::optional<double> LengthOf(const M5Line& line, std::string_view type);
  std::optional<double> AngleOf(const M5Line& line, std::string_view type);

  BookBuilder& m_book;
  M5Level m_level;
  M5Columns m_code = {11, 15}, m_point = {16, 27};
  bool m_isInHeader = false;
  // From KN STAT or UN STAT to POLAR circle readings lack the orientation, which may stand behind
  // them, and the station has perhaps no name yet.
  bool m_isStationing = false;
  bool m_isKnownStation = false;
  double m_orientation = 0.0;
  std::optional<double> m_instrumentHeight, m_targetHeight;
  bool m_isHeightOld = false;  // the instrument's is that of another setup
  std::string m_eccentricPoint;
  Eccentric m_eccentric;  // of the next sight of that point
};

void M5Reader::Read(std::string_view text) {
  BookLines lines(text);
  while (lines.Next()) {
    m_book.StartLine(lines.Number());
    if (lines.IsBlank()) continue;
    if (lines.IsTransferEnd() || Trimmed(lines.Text()) == "END") {
      m_book.Became(LineRole::kTransfer);
    } else if (const std::optional<M5Line> line = CutM5Line(lines.Text())) {
      ReadLine(*line);
    } else {
      m_book.LeaveOut(BRENU_LINE_NOT_OF_FORMAT, {"M5"}, lines.Text());
    }
  }
  m_book.Book().lineCount = lines.Number();
  EndStationing();
}

void M5Reader::ReadLine(const M5Line& line) {
  if (line.isFaulty) return m_book.LeaveOut(BRENU_LINE_MARKED_FAULTY);
  if (m_level.Enter(line)) return;
  if (m_isInHeader || line.kind == "TI") return ReadText(line);
  if (line.kind.starts_with("PI")) return ReadPoint(line);
  m_book.PassOver(line.kind);
}

void M5Reader::ReadText(const M5Line& line) {
  const std::string words = line.Words();
  if (words == "START" || words == "END") {
    m_isInHeader = words == "START";
    ReadLayout(line);
    return m_book.Became(LineRole::kHeader);
  }
  if (m_isInHeader) {
    ReadLayout(line);
    return m_book.Became(LineRole::kHeader);
  }
  const bool hasHeights = TakeHeights(line);
  const bool isKnown = words.starts_with("KN STAT");
  if (isKnown || words.starts_with("UN STAT")) return BeginStationing(isKnown);
  if (line.Find("Om") != nullptr) {
    m_orientation = AngleOf(line, "Om").value_or(0.0);
    return m_book.Became(LineRole::kOrientation);
  }
  if (words.starts_with("POLAR")) EndStationing();
  m_book.Became(hasHeights ? LineRole::kHeights : LineRole::kNote);
}

// Other columns of the information: two numbers, first and last or first and width.
void M5Reader::ReadLayout(const M5Line& line) {
  for (const M5Value& value : line.values) {
    M5Columns* const columns = value.type == "21"   ? &m_code
                               : value.type == "22" ? &m_point
                                                    : nullptr;
    if (columns == nullptr) continue;
    std::vector<std::size_t> numbers;
    bool inNumber = false;
    for (const char c : value.text) {
      const bool isDigit = c >= '0' && c <= '9';
      if (isDigit && !inNumber) numbers.push_back(0);
      if (isDigit && numbers.back() < 1000) {
        numbers.back() = numbers.back() * 10 + static_cast<std::size_t>(c - '0');
      }
      inNumber = isDigit;
    }
    if (numbers.size() == 1 && numbers[0] > 100) numbers = {numbers[0] / 100, numbers[0] % 100};
    if (numbers.size() < 2) continue;
    const std::size_t first = numbers[0];
    const std::size_t last = numbers[1] >= first ? numbers[1] : first + numbers[1] - 1;
    if (first >= 1 && last <= kInformationWidth && last >= first) *columns = {first, last};
  }
}

void M5Reader::BeginStationing(bool isKnown) {
  EndStationing();
  m_book.BeginSetup({});
  m_isStationing = true;
  m_isKnownStation = isKnown;
  m_orientation = 0.0;
  m_isHeightOld = true;
}

// Turns the circle readings before this line into those of the circle behind it.
void M5Reader::EndStationing() {
  if (!m_isStationing) return;
  m_isStationing = false;
  for (BookSight& sight : m_book.CurrentSetup().sights) {
    if (sight.direction) *sight.direction = FullCircle(*sight.direction + m_orientation);
  }
}

// In an information of another width the point is its last word, the code the one before.
std::string_view M5Reader::PartOf(const M5Line& line, M5Columns columns) const {
  if (line.information.size() == kInformationWidth) return columns.Of(line.information);
  const std::string_view words = Trimmed(line.information);
  const std::size_t blank = words.find_last_of(' ');
  const bool isPoint = columns.first == m_point.first;
  if (blank == words.npos) return isPoint ? words : std::string_view{};
  if (isPoint) return words.substr(blank + 1);
  const std::string_view before = Trimmed(words.substr(0, blank));
  const std::size_t start = before.find_last_of(' ');
  return start == before.npos ? before : before.substr(start + 1);
}

std::optional<double> M5Reader::LengthOf(const M5Line& line, std::string_view type) {
  const M5Value* value = line.Find(type);
  if (value == nullptr || Trimmed(value->text).empty()) return std::nullopt;
  const std::optional<double> length = value->Length();
  if (!length) m_book.Doubt(BRENU_VALUE_NOT_READ, {std::string(type)}, value->text);
  return length;
}

std::optional<double> M5Reader::AngleOf(const M5Line& line, std::string_view type) {
  const M5Value* value = line.Find(type);
  if (value == nullptr || Trimmed(value->text).empty()) return std::nullopt;
  const std::optional<double> angle = value->Angle();
  if (!angle) m_book.Doubt(BRENU_VALUE_NOT_READ, {std::string(type)}, value->text);
  return angle;
}

// Whether the line gives one; that of the instrument holds for all sights of a setup.
bool M5Reader::TakeHeights(const M5Line& line) {
  const bool hasTarget = line.Find("th") != nullptr;
  const bool hasInstrument = line.Find("ih") != nullptr;
  if (hasTarget) m_targetHeight = LengthOf(line, "th");
  if (!hasInstrument) return hasTarget;
  m_instrumentHeight = LengthOf(line, "ih");
  if (m_isHeightOld && m_book.HasSetup()) {
    for (BookSight& sight : m_book.CurrentSetup().sights)
      sight.instrumentHeight = m_instrumentHeight;
  }
  m_isHeightOld = false;
  return true;
}

bool M5Reader::TakeEccentric(const M5Line& line, std::string_view point) {
  bool isOne = false;
  for (const EccentricType& kind : kEccentric) {
    if (line.Find(kind.type) == nullptr) continue;
    if (m_eccentricPoint != point) m_eccentric = {};
    m_eccentricPoint = point;
    m_eccentric.*kind.side += kind.sign * LengthOf(line, kind.type).value_or(0.0);
    isOne = true;
  }
  return isOne;
}

void M5Reader::ReadPoint(const M5Line& line) {
  const std::string_view point = PartOf(line, m_point);
  const bool hasHeights = TakeHeights(line);
  const bool isEccentric = TakeEccentric(line, point);
  if (PartOf(line, m_code) == "S" && line.Find("Hz") == nullptr) return ReadStation(line, point);
  const bool isSight = line.Find("Hz") != nullptr || line.FindOneOf("SD", "HD") != nullptr;
  if (isSight) return ReadSight(line, point);
  if (line.IsEmpty()) return m_book.LeaveOut(BRENU_SIGHT_WITHOUT_VALUES, {std::string(point)});
  m_book.Became(isEccentric || hasHeights ? LineRole::kHeights : LineRole::kResult);
}

// Of a known station the coordinates are control, of others a result.
void M5Reader::ReadStation(const M5Line& line, std::string_view point) {
  if (m_isStationing) {
    m_book.NameStation(point);
    m_book.Became(LineRole::kSetup);
  } else if (m_book.Name(point) != m_book.Station()) {
    m_book.BeginSetup(point);
    m_isHeightOld = true;
  } else {
    return m_book.Became(LineRole::kHeights);
  }
  BookPoint station;
  station.name = m_book.Station();
  station.x = LengthOf(line, "X");
  station.y = LengthOf(line, "Y");
  station.h = LengthOf(line, "Z");
  if (!m_isStationing || !station.x || !station.y) return;
  const bool isAtOrigin = *station.x == 0.0 && *station.y == 0.0;
  if (!m_isKnownStation) {
    station.kind = BookPointKind::kApproximate;
    if (isAtOrigin) return;
  }
  if (isAtOrigin) {
    return m_book.Doubt(BRENU_STATION_AT_ORIGIN, {std::string(point)}, {}, Severity::kNote);
  }
  m_book.EnterPoint(station);
}

void M5Reader::ReadSight(const M5Line& line, std::string_view point) {
  BookSight sight;
  sight.direction = AngleOf(line, "Hz");
  sight.zenith = AngleOf(line, "V1");
  if (line.Find("V3") != nullptr) {
    const std::optional<double> elevation = AngleOf(line, "V3");
    if (elevation) sight.zenith = FullCircle(kPi / 2.0 - *elevation);
  }
  sight.slope = LengthOf(line, "SD");
  sight.horizontal = LengthOf(line, "HD");
  sight.face = FaceOf(sight.zenith);
  sight.instrumentHeight = m_instrumentHeight;
  sight.targetHeight = m_targetHeight;
  if (!m_eccentricPoint.empty() && m_eccentricPoint == point) sight.eccentric = m_eccentric;
  m_eccentricPoint.clear();
  m_eccentric = {};
  m_book.EnterSight(point, std::move(sight));
}

}  // namespace

void ReadM5(std::string_view text, BookBuilder& book) { M5Reader(book).Read(text); }

}  // namespace brenu
