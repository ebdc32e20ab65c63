#include "placing.h"

#include <cmath>
#include <map>
#include <tuple>
#include <utility>
#include <vector>

#include "job/adjustment_context.h"
#include "format.h"
#include "network_view.h"
#include "plane/circles.h"

namespace brenu::tool {

namespace {

enum Side : std::uint8_t { kLeft = 0, kRight = 1 };

// The circles that meet in a point, and the places where they do.
struct Crossing {
  CircleRecord first, second;
  Position left, right;
  double quality;  // sine of the angle at which the circles meet
};

// Points nearer than this to X = 0 count as not placed.
constexpr double kNotPlaced = 1e-7;

std::string ExplainZero(const std::string& point) {
  return point + " lies at X = 0, which stands for not placed; add a constant to all X";
}

Circle CircleOf(const CircleRecord& record) { return {{record.x, record.y}, record.radius}; }

double Distance(const Position& a, const Position& b) { return std::hypot(b.x - a.x, b.y - a.y); }

class Placing {
 public:
  explicit Placing(AdjustmentContext& context);

  std::optional<std::string> Run();

 private:
  // Points that cross at a better angle than 30 degrees are placed at once, in the order of the
  // file; of others only the best one, when nothing else is left.
  static constexpr double kGoodAngle = 0.5;

  bool PlaceGoodPoints();
  bool PlaceBestPoint();
  bool Place(const PointData& point, const Crossing& crossing, Side side);
  std::optional<Crossing> CrossingOf(const PointData& point);
  std::optional<Side> SideOf(const PointData& point, const Crossing& crossing) const;
  // The sum of (misfit / a-priori error)^2 of the other distances to placed points.
  double Misfit(const PointData& point, const Crossing& crossing, const Position& place) const;
  std::string ExplainRest();

  AdjustmentContext& m_context;
  std::vector<PointData> m_open;  // not yet placed, in the order of the file
  std::map<std::string, Position, std::less<>> m_placed;
  // By point: the other end and the length of its measured lines.
  std::map<std::string, std::vector<std::pair<std::string, double>>, std::less<>> m_lines;
};

Placing::Placing(AdjustmentContext& context) : m_context(context) {
  for (const PointData& point : PointsOf(context)) {
    if (IsControl(point, Network::kPlane)) {
      m_placed[point.name] = {point.x, point.y};
    } else {
      m_open.push_back(point);
    }
  }
  for (const Observation& o : ObservationsOf(context)) {
    if (!HasDistance(o.data)) continue;
    m_lines[o.stationName].emplace_back(o.target, o.data.distance);
    m_lines[o.target].emplace_back(o.stationName, o.data.distance);
  }
}

std::optional<std::string> Placing::Run() {
  for (const auto& [name, place] : m_placed) {
    if (std::fabs(place.x) < kNotPlaced) return ExplainZero("the control point " + Printable(name));
  }
  if (!JudgeTrilateration(&m_context) || !InitializeDataTrilateration(&m_context)) {
    return "the network of distances cannot be set up; check that the points have observations";
  }
  while (!m_open.empty()) {
    if (!PlaceGoodPoints() && !PlaceBestPoint()) return ExplainRest();
  }
  if (TrilaterationDirection(&m_context)) return std::nullopt;
  return ExplainZero("a new point");
}

bool Placing::PlaceGoodPoints() {
  return std::erase_if(m_open, [this](const PointData& point) {
           const auto crossing = CrossingOf(point);
           if (!crossing || crossing->quality < kGoodAngle) return false;
           const auto side = SideOf(point, *crossing);
           return side && Place(point, *crossing, *side);
         }) > 0;
}

bool Placing::PlaceBestPoint() {
  auto best = m_open.end();
  double quality = 0.0;
  for (auto point = m_open.begin(); point != m_open.end(); ++point) {
    const auto crossing = CrossingOf(*point);
    if (!crossing || crossing->quality <= quality || !SideOf(*point, *crossing)) continue;
    best = point;
    quality = crossing->quality;
  }
  if (best == m_open.end()) return false;
  const auto crossing = CrossingOf(*best);  // once more: the names hold until the next call only
  if (!crossing || !Place(*best, *crossing, *SideOf(*best, *crossing))) return false;
  m_open.erase(best);
  return true;
}

bool Placing::Place(const PointData& point, const Crossing& crossing, Side side) {
  std::uint32_t left = 0;
  const std::size_t before = m_open.size();
  if (!CalcTrilaterationpPoint(&m_context, side, crossing.first, crossing.second, point.name,
                               &left) ||
      left >= before) {
    return false;
  }
  m_placed[point.name] = side == kLeft ? crossing.left : crossing.right;
  return true;
}

std::optional<Crossing> Placing::CrossingOf(const PointData& point) {
  Crossing crossing{};
  char text[255] = {};
  NameOf(point).copy(text, sizeof(text) - 1);
  if (GetTrilaterationDirection(&m_context, &crossing.first, &crossing.second, text) == 0) {
    return std::nullopt;
  }
  const Circle first = CircleOf(crossing.first);
  const Circle second = CircleOf(crossing.second);
  const auto places = Intersect(first, second);
  if (!places) return std::nullopt;
  std::tie(crossing.right, crossing.left) = *places;
  crossing.quality = IntersectionQuality(first, second);
  return crossing;
}

std::optional<Side> Placing::SideOf(const PointData& point, const Crossing& crossing) const {
  if (point.x != 0.0 && point.y != 0.0) {
    const Position given = {point.x, point.y};
    return Distance(given, crossing.left) < Distance(given, crossing.right) ? kLeft : kRight;
  }
  const double left = Misfit(point, crossing, crossing.left);
  const double right = Misfit(point, crossing, crossing.right);
  // Decided when one side fits three times as well and the other is off by three a-priori errors.
  const auto isFarBetter = [](double one, double other) {
    return other > 9.0 * std::fmax(1.0, one);
  };
  if (isFarBetter(left, right)) return kLeft;
  if (isFarBetter(right, left)) return kRight;
  return std::nullopt;
}

double Placing::Misfit(const PointData& point, const Crossing& crossing,
                       const Position& place) const {
  const auto lines = m_lines.find(NameOf(point));
  if (lines == m_lines.end()) return 0.0;
  double sum = 0.0;
  for (const auto& [name, length] : lines->second) {
    const auto other = m_placed.find(name);
    if (other == m_placed.end() || name == crossing.first.name || name == crossing.second.name) {
      continue;
    }
    const AdjParam& param = m_context.param;
    const double misfit =
        (Distance(place, other->second) - length) / (param.MS + param.MR * length);
    sum += misfit * misfit;
  }
  return sum;
}

std::string Placing::ExplainRest() {
  for (const PointData& point : m_open) {
    const auto crossing = CrossingOf(point);
    if (!crossing) continue;
    return "the side of the point " + Printable(point.name) + " on the line " +
           Line(crossing->first.name, crossing->second.name) +
           " is undetermined; give approximate X and Y of it in the file, or a distance to a third "
           "point that is known or placed before it";
  }
  std::vector<std::string_view> names;
  for (const PointData& point : m_open) names.push_back(NameOf(point));
  return "no place can be found for " + Points(names) +
         "; measure each from two points that are known or placed before it, and check distances "
         "that do not meet";
}

}  // namespace

std::optional<std::string> PlacePoints(AdjustmentContext& context) {
  return Placing(context).Run();
}

}  // namespace brenu::tool
