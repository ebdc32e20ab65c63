#include <cmath>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "core/angles.h"
#include "core/text_number.h"
#include "fieldbook/gkf_axes.h"
#include "fieldbook/readers.h"
#include "fieldbook/units.h"
#include "fieldbook/xml_text.h"

namespace brenu {

namespace {

constexpr double kSecondsPerCc = 0.324;  // of 1e-4 gon
constexpr double kKilometre = 1000.0;

enum class Kind : std::uint8_t { kDirection, kDistance, kSlope, kZenith, kAzimuth };
struct Element {
  std::string_view name;
  Kind kind;
};
constexpr Element kElements[] = {{"direction", Kind::kDirection},
                                 {"distance", Kind::kDistance},
                                 {"s-distance", Kind::kSlope},
                                 {"z-angle", Kind::kZenith},
                                 {"azimuth", Kind::kAzimuth}};

std::optional<double>& PartOf(BookSight& sight, Kind kind) {
  switch (kind) {
    case Kind::kDirection:
      return sight.direction;
    case Kind::kDistance:
      return sight.horizontal;
    case Kind::kSlope:
      return sight.slope;
    case Kind::kZenith:
      return sight.zenith;
    default:
      return sight.azimuth;
  }
}

// The observed values of a cluster from one station, put together by target.
struct Cluster {
  struct Entry {
    std::string target;
    BookSight sight;
  };
  std::string station;
  std::int32_t line = 0;
  std::vector<Entry> entries;
  std::unordered_map<std::string, std::size_t> last;  // sight of a target

  // The last sight of the target if it lacks such a value, else a new one.
  BookSight& Lacking(const std::string& to, Kind kind, std::int32_t at) {
    const auto [place, isNew] = last.try_emplace(to, entries.size());
    if (!isNew && !PartOf(entries[place->second].sight, kind)) return entries[place->second].sight;
    place->second = entries.size();
    entries.push_back({to, {}});
    entries.back().sight.line = at;
    return entries.back().sight;
  }
};

// Those of an obs element, of its own station first.
struct Clusters {
  std::vector<Cluster> all;
  std::unordered_map<std::string, std::size_t> places;

  Cluster& From(const std::string& station, std::int32_t line) {
    const auto [place, isNew] = places.try_emplace(station, all.size());
    if (isNew) all.push_back({station, line, {}, {}});
    return all[place->second];
  }
};

class GkfReader {
 public:
  GkfReader(std::string_view text, BookBuilder& book) : m_book(book), m_xml(text, book) {}

  void Read();

 private:
  void ReadNetwork(const pugi::xml_node& network);
  void ReadParameters(const pugi::xml_node& parameters);
  void ReadObservations(const pugi::xml_node& observations);
  void ReadPoint(const pugi::xml_node& point);
  void ReadCluster(const pugi::xml_node& obs);
  void ReadValue(const pugi::xml_node& value, Kind kind, Clusters& clusters);
  void ReadHeights(const pugi::xml_node& heights);
  void ReadHeight(const pugi::xml_node& dh, std::optional<double> stdev);
  void EnterCoordinates(const pugi::xml_node& point, BookPointKind kind, bool plane, bool height);
  void CannotKeep(const pugi::xml_node& element, std::string_view what);
  void Start(const pugi::xml_node& node) { m_book.StartLine(m_xml.LineOf(node)); }
  std::optional<double> Number(const pugi::xml_node& node, const char* name) {
    return XmlNumber(m_book, AttributeOf(node, name), name);
  }
  std::optional<double> Value(const pugi::xml_node& node, Kind kind);

  BookBuilder& m_book;
  XmlText m_xml;
  GkfAxes m_axes;
  bool m_isCounterClockwise = false;
  double m_sigmaApr = 10.0;
  APriori m_aPriori;
};

void GkfReader::CannotKeep(const pugi::xml_node& element, std::string_view what) {
  Start(element);
  m_book.LeaveOut(BRENU_CANNOT_BE_KEPT, {std::string(what)});
}

void GkfReader::Read() {
  for (const pugi::xml_node& part : m_xml.Root().children()) {
    if (std::string_view(part.name()) == "network") ReadNetwork(part);
  }
  m_book.Book().lineCount = m_xml.LastLine();
  const bool hasPriori = m_aPriori.direction > 0.0 || m_aPriori.distance > 0.0;
  if (hasPriori) m_book.Book().aPriori = m_aPriori;
}

void GkfReader::ReadNetwork(const pugi::xml_node& network) {
  Start(network);
  const std::string_view axes = AttributeOf(network, "axes-xy");
  const std::optional<GkfAxes> known = GkfAxesOf(axes.empty() ? "ne" : axes);
  if (!known) m_book.Doubt(BRENU_VALUE_NOT_READ, {"axes-xy"}, axes);
  m_axes = known.value_or(GkfAxes{});
  m_isCounterClockwise = AttributeOf(network, "angles") == "right-handed";
  m_book.Became(LineRole::kHeader);
  for (const pugi::xml_node& part : network.children("parameters")) ReadParameters(part);
  for (const pugi::xml_node& part : network.children()) {
    const std::string_view name = part.name();
    if (name == "points-observations") {
      ReadObservations(part);
    } else if (name != "parameters" && part.type() == pugi::node_element) {
      Start(part);
      m_book.Became(LineRole::kNote);
    }
  }
}

void GkfReader::ReadParameters(const pugi::xml_node& parameters) {
  Start(parameters);
  const double sigma = Number(parameters, "sigma-apr").value_or(m_sigmaApr);
  if (sigma > 0.0) m_sigmaApr = sigma;
  m_book.Became(LineRole::kHeader);
}

// Of "5 3 1", the constant part in mm, mm/km and the exponent of the length, what a job knows.
void GkfReader::ReadObservations(const pugi::xml_node& observations) {
  Start(observations);
  m_book.Became(LineRole::kHeader);
  m_aPriori.direction = Number(observations, "direction-stdev").value_or(0.0) * kSecondsPerCc;
  const std::string_view distance = AttributeOf(observations, "distance-stdev");
  const std::size_t blank = distance.find(' ');
  m_aPriori.distance = ParseDouble(distance) / 1e3;
  if (blank != distance.npos) m_aPriori.distanceRatio = ParseDouble(distance.substr(blank)) / 1e6;
  for (const pugi::xml_node& part : observations.children()) {
    if (part.type() != pugi::node_element) continue;
    const std::string_view name = part.name();
    if (name == "point") {
      ReadPoint(part);
    } else if (name == "obs") {
      ReadCluster(part);
    } else if (name == "height-differences") {
      ReadHeights(part);
    } else {
      CannotKeep(part, name);
    }
  }
}

void GkfReader::ReadPoint(const pugi::xml_node& point) {
  Start(point);
  const std::string_view fix = AttributeOf(point, "fix");
  const std::string_view adj = AttributeOf(point, "adj");
  const bool isPlaneFixed = fix.find_first_of("xyXY") != fix.npos;
  const bool isHeightFixed = fix.find_first_of("zZ") != fix.npos;
  if (adj.find_first_of("XYZ") != adj.npos) {
    m_book.Doubt(BRENU_CONSTRAINT_NOT_KEPT, {std::string(AttributeOf(point, "id"))});
  }
  EnterCoordinates(point, BookPointKind::kControl, isPlaneFixed, isHeightFixed);
  EnterCoordinates(point, BookPointKind::kApproximate, !isPlaneFixed, !isHeightFixed);
}

void GkfReader::EnterCoordinates(const pugi::xml_node& point, BookPointKind kind, bool plane,
                                 bool height) {
  BookPoint entered;
  entered.kind = kind;
  entered.name = m_book.Name(AttributeOf(point, "id"));
  if (plane) {
    entered.x = Number(point, m_axes.isSwapped ? "y" : "x");
    entered.y = Number(point, m_axes.isSwapped ? "x" : "y");
  }
  if (height) entered.h = Number(point, "z");
  const bool isEmpty = !entered.x && !entered.y && !entered.h;
  if (!isEmpty || kind == BookPointKind::kApproximate) m_book.EnterPoint(entered);
}

void GkfReader::ReadCluster(const pugi::xml_node& obs) {
  Start(obs);
  Clusters clusters;
  clusters.From(std::string(AttributeOf(obs, "from")), m_book.Line());
  for (const pugi::xml_node& value : obs.children()) {
    if (value.type() != pugi::node_element) continue;
    const std::string_view name = value.name();
    bool isKnown = false;
    for (const Element& element : kElements) {
      if (name != element.name) continue;
      ReadValue(value, element.kind, clusters);
      isKnown = true;
    }
    if (name == "cov-mat") {
      CannotKeep(value, "cov-mat of directions and distances");
    } else if (!isKnown) {
      CannotKeep(value, name);
    }
  }
  for (Cluster& cluster : clusters.all) {
    m_book.StartLine(cluster.line);
    m_book.BeginSetup(cluster.station);
    for (auto& [target, sight] : cluster.entries) {
      m_book.StartLine(sight.line);
      m_book.EnterSight(target, std::move(sight));
    }
  }
}

std::optional<double> GkfReader::Value(const pugi::xml_node& node, Kind kind) {
  const std::string_view text = AttributeOf(node, "val");
  if (kind == Kind::kDistance || kind == Kind::kSlope) {
    return XmlNumber(m_book, text, node.name());
  }
  std::optional<double> angle = GkfAngle(text);
  if (!angle) m_book.Doubt(BRENU_VALUE_NOT_READ, {node.name()}, text);
  if (angle && kind == Kind::kDirection && m_isCounterClockwise) *angle = -*angle;
  if (angle && kind == Kind::kAzimuth) *angle -= m_axes.bearing;
  return angle ? std::optional(PositiveAngle(FullCircle(*angle))) : std::nullopt;
}

void GkfReader::ReadValue(const pugi::xml_node& value, Kind kind, Clusters& clusters) {
  Start(value);
  const std::string_view own = AttributeOf(value, "from");
  const std::string from = own.empty() ? clusters.all.front().station : std::string(own);
  const std::string to(AttributeOf(value, "to"));
  const std::optional<double> number = Value(value, kind);
  if (!number) return m_book.Became(LineRole::kLeftOut, BRENU_VALUE_NOT_READ);
  BookSight& sight = clusters.From(from, m_book.Line()).Lacking(to, kind, m_book.Line());
  PartOf(sight, kind) = number;
  if (kind != Kind::kSlope && kind != Kind::kZenith) return;
  if (const auto height = Number(value, "from_dh")) sight.instrumentHeight = height;
  if (const auto height = Number(value, "to_dh")) sight.targetHeight = height;
}

// The diagonal of the covariance matrix, in the order of the differences, beats their own stdev.
void GkfReader::ReadHeights(const pugi::xml_node& heights) {
  std::vector<double> variances;
  if (const pugi::xml_node matrix = heights.child("cov-mat")) {
    Start(matrix);
    const std::int32_t dim = ParseInt(AttributeOf(matrix, "dim"));
    const std::int32_t band = ParseInt(AttributeOf(matrix, "band"));
    std::string_view text = matrix.text().get();
    // Row i holds the elements from the diagonal up to the band or the last column.
    for (std::int32_t row = 0; row < dim && !text.empty(); ++row) {
      const std::int32_t others = std::min(band, dim - 1 - row);
      for (std::int32_t column = 0; column <= others; ++column) {
        text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
        if (text.empty()) break;
        if (column == 0) variances.push_back(ParseDouble(text));
        text.remove_prefix(std::min(text.find_first_of(" \t\r\n"), text.size()));
      }
    }
    if (band > 0) {
      CannotKeep(matrix, "covariances of height differences");
    } else {
      m_book.Became(LineRole::kHeader);
    }
  }
  std::size_t count = 0;
  for (const pugi::xml_node& dh : heights.children()) {
    if (dh.type() != pugi::node_element || std::string_view(dh.name()) == "cov-mat") continue;
    if (std::string_view(dh.name()) != "dh") {
      CannotKeep(dh, dh.name());
      continue;
    }
    Start(dh);
    std::optional<double> stdev = Number(dh, "stdev");
    if (count < variances.size()) stdev = std::sqrt(std::max(variances[count], 0.0));
    ++count;
    ReadHeight(dh, stdev);
  }
}

// The weight of a line of 1 km is that of the a-priori standard error.
void GkfReader::ReadHeight(const pugi::xml_node& dh, std::optional<double> stdev) {
  HeightLine line;
  const std::string from(AttributeOf(dh, "from"));
  const std::string to(AttributeOf(dh, "to"));
  const std::optional<double> difference = Number(dh, "val");
  if (from.empty() || to.empty() || !difference) {
    return m_book.LeaveOut(BRENU_SIGHT_WITHOUT_VALUES, {to});
  }
  line.from = m_book.Name(from);
  line.to = m_book.Name(to);
  line.difference = *difference;
  const double distance = Number(dh, "dist").value_or(0.0);
  if (distance > 0.0) {
    line.length = distance * kKilometre;
  } else if (stdev.value_or(0.0) > 0.0) {
    line.length = std::pow(*stdev / m_sigmaApr, 2) * kKilometre;
  } else {
    m_book.Doubt(BRENU_LENGTH_ASSUMED, {from, to});
    line.length = kKilometre;
  }
  m_book.EnterHeightLine(line);
}

}  // namespace

void ReadGkf(std::string_view text, BookBuilder& book) { GkfReader(text, book).Read(); }

}  // namespace brenu
