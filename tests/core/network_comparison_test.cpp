// Whole networks adjusted with the packed and with the sparse normal matrix.
#include <gtest/gtest.h>

#include "bench/grid_network.h"
#include "level/level_adjustment.h"
#include "plane/plane_adjustment.h"
#include "support/fill_net.h"

namespace brenu::testing {
namespace {

constexpr std::int32_t kAlwaysSparse = -1;
constexpr std::int32_t kAlwaysPacked = 1000000;

// What a network answers after an adjustment, and how far the two answers may be apart.
struct Figure {
  double value, tolerance;
};
using Figures = std::vector<Figure>;

void AddRelative(Figures& figures, std::initializer_list<double> values, double tolerance) {
  for (const double v : values) figures.push_back({v, tolerance * std::fabs(v)});
}

void AddPoint(Figures& figures, const PlaneAdjustment& net, const char* name) {
  const PlaneResult r = net.ResultOfPoint(name).value();
  AddRelative(figures, {r.x, r.y}, 1e-9);
  AddRelative(figures, {r.mx, r.my, r.e, net.Sigma0()}, 1e-7);
}
void AddLine(Figures& figures, const PlaneAdjustment& net, const char* from, const char* to) {
  if (const auto r = net.ResultOfDirection(from, to)) figures.push_back({r->residual, 1e-5});
  const auto line = net.PrecisionOfLine(from, to);
  if (line) AddRelative(figures, {line->azimuthError, line->lengthError}, 1e-7);
}
void AddPoint(Figures& figures, const LevelAdjustment& net, const char* name) {
  const VerticalResult r = net.ResultOfPoint(name).value();
  AddRelative(figures, {r.height}, 1e-9);
  AddRelative(figures, {r.sigma}, 1e-7);
}
void AddLine(Figures& figures, const LevelAdjustment& net, const char* from, const char* to) {
  AddRelative(figures, {net.ResultOfObs(from, to).value().sigma}, 1e-7);
}

// After each of the adjustments in turn on the same object.
template <typename Net, typename Adjustment>
void ExpectAgreement(const GeneratedNetwork& network,
                     const std::vector<Outcome (*)(Adjustment&)>& adjustments) {
  const auto net = MakeNet<Net>(network);
  Adjustment packed(net, kAlwaysPacked);
  Adjustment sparse(net, kAlwaysSparse);
  const auto name = [&](std::int32_t i) {
    return network.points[static_cast<std::size_t>(i)].name;
  };
  for (const auto adjust : adjustments) {
    Figures figures[2];
    for (Adjustment* each : {&packed, &sparse}) {
      ASSERT_TRUE(adjust(*each).ok);
      Figures& own = figures[each == &packed ? 0 : 1];
      for (const PointData& p : network.points) AddPoint(own, *each, p.name);
      for (const auto& line : network.lines) {
        AddLine(own, *each, name(line.station), name(line.target));
      }
    }
    ASSERT_EQ(figures[0].size(), figures[1].size());
    for (std::size_t i = 0; i < figures[0].size(); ++i) {
      const auto& [value, tolerance] = figures[0][i];
      ASSERT_NEAR(value, figures[1][i].value, tolerance) << i;
    }
  }
}

constexpr auto kAdjustPlane = +[](PlaneAdjustment& net) { return net.Adjust(); };

TEST(NetworkComparison, AdjustmentsAgree) {
  const struct {
    std::int32_t rows, columns;
    PointOrder order;
  } kShapes[] = {{2, 2, PointOrder::kByRows},     {1, 40, PointOrder::kByRows},
                 {1, 300, PointOrder::kShuffled}, {3, 70, PointOrder::kShuffled},
                 {10, 10, PointOrder::kByRows},   {14, 20, PointOrder::kShuffled}};
  for (const auto& shape : kShapes) {
    SCOPED_TRACE(::testing::Message() << shape.rows << " x " << shape.columns);
    GridNetwork grid(shape.rows, shape.columns, shape.order);
    // Distances alone have other unknowns, and cannot hold a single row.
    std::vector<Outcome (*)(PlaneAdjustment&)> adjustments = {kAdjustPlane};
    if (shape.rows > 1) {
      adjustments.push_back([](PlaneAdjustment& net) { return net.AdjustDistances(net.Param()); });
    }
    ExpectAgreement<PlaneNet, PlaneAdjustment>(grid.Plane(), adjustments);
    ExpectAgreement<LevelNet, LevelAdjustment>(
        grid.Levelling(), {[](LevelAdjustment& net) { return net.LevelAdjust(); }});
  }
}

// Pairs without an observation in use still have a precision.
TEST(NetworkComparison, StoredPairsWithoutObservationAgree) {
  GeneratedNetwork network = GridNetwork(8, 8, PointOrder::kByRows).Plane();
  for (std::int32_t i = 0; i + 20 < 64; i += 3) {
    network.lines.push_back({i, i + 20, {0, -1, 0, -1}});
  }
  ExpectAgreement<PlaneNet, PlaneAdjustment>(network, {kAdjustPlane});
}

}  // namespace
}  // namespace brenu::testing
