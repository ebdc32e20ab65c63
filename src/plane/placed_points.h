#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "plane/circles.h"
#include "plane/plane_net.h"

namespace brenu {

// What is measured from one placed point.
struct NamedCircle {
  const char* name;
  Circle circle;
};

// A point that can be placed by trilateration.
struct Placement {
  Slot slot;                  // of its name
  NamedCircle first, second;  // names live as long as the network
  double quality;             // sine of the angle at which the circles meet
};

// Where the points of a network stand between the computations: as stored after the network build,
// then as approximate coordinates or trilateration placed them.
//
// In trilateration the new points of a distance-only network are placed one by one, each where two
// circles around placed points meet; a point with X within 1e-7 of 0 is not placed.
class PlacedPoints {
 public:
  explicit PlacedPoints(std::shared_ptr<const PlaneNet> net = std::make_shared<PlaneNet>());

  const PlaneNet& Net() const { return *m_net; }
  const Table<PointNo, Position>& Positions() const { return m_positions; }
  void SetPositions(Table<PointNo, Position> positions);
  // The point with that number; -1 is what was placed under a name that no point has.  Empty when
  // there is none.
  std::optional<PointData> FindPoint(std::int32_t number) const;

  // Takes all new points back to (0, 0).
  void UnplacePoints();
  bool IsPlaced(PointNo point) const;
  // Places a point on the right or left of the line from the first to the second centre; false
  // when the circles do not meet there.
  bool PlacePoint(bool right, const NamedCircle& first, const NamedCircle& second,
                  std::string_view name);
  // How many are left to place, which wraps when a point was placed twice.
  std::uint32_t UnplacedCount() const { return static_cast<std::uint32_t>(m_unplacedCount); }
  // The named point, or without name the one whose circles meet nearest to a right angle (then name
  // order), with the best two of its circles.  Empty when there is none.
  std::optional<Placement> NextPlacement(std::string_view name);
  // Of an unplaced new point; empty when no two circles around placed points meet in it.
  std::optional<Placement> BestPlacement(Slot slot) const;
  // The points that share a distance with this one, ascending; repeats are possible.
  std::vector<PointNo> Neighbours(Slot slot) const;

 private:
  std::vector<NamedCircle> CirclesThrough(Slot slot) const;
  void MoveTo(PointNo point, const Position& position);
  void Rank(PointNo point);

  std::shared_ptr<const PlaneNet> m_net;
  Table<PointNo, Position> m_positions;
  std::int32_t m_unplacedCount = 0;  // new points less those placed since the network build
  std::optional<Position> m_stray;   // what was placed under a name that no point has

  // The unplaced points that can be placed, the best first; made when first asked for.
  using Ranked = std::pair<double, Slot>;  // quality, name
  struct BetterFirst {
    bool operator()(const Ranked& a, const Ranked& b) const {
      return a.first != b.first ? a.first > b.first : a.second < b.second;
    }
  };
  bool m_isRanked = false;
  Table<PointNo, double> m_quality;  // 0 for points without a rank
  std::set<Ranked, BetterFirst> m_ranking;
};

}  // namespace brenu
