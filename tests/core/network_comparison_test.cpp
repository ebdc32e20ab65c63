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

struct Shape {
  std::int32_t rows, columns;
  PointOrder order;
};
constexpr Shape kShapes[] = {{2, 2, PointOrder::kByRows},     {1, 40, PointOrder::kByRows},
                             {1, 300, PointOrder::kShuffled}, {3, 70, PointOrder::kShuffled},
                             {10, 10, PointOrder::kByRows},   {10, 10, PointOrder::kShuffled},
                             {14, 20, PointOrder::kShuffled}};

// All that a network answers after an adjustment.
struct Figures {
  std::vector<double> values, precisions, residuals;

  Figures(const PlaneAdjustment& net, const GeneratedNetwork& network) : precisions{net.Sigma0()} {
    for (const PointData& p : network.points) {
      const PlaneResult r = net.ResultOfPoint(p.name).value();
      values.insert(values.end(), {r.x, r.y});
      precisions.insert(precisions.end(), {r.mx, r.my, r.e});
    }
    for (const auto& [from, to] : NamesOfLines(network)) {
      if (const auto r = net.ResultOfDirection(from, to)) residuals.push_back(r->residual);
      const auto line = net.PrecisionOfLine(from, to);
      if (line) precisions.insert(precisions.end(), {line->azimuthError, line->lengthError});
    }
  }

  Figures(const LevelAdjustment& net, const GeneratedNetwork& network) {
    for (const PointData& p : network.points) {
      const VerticalResult r = net.ResultOfPoint(p.name).value();
      values.push_back(r.height);
      precisions.push_back(r.sigma);
    }
    for (const auto& [from, to] : NamesOfLines(network)) {
      precisions.push_back(net.ResultOfObs(from, to).value().sigma);
    }
  }

 private:
  static std::vector<std::pair<std::string, std::string>> NamesOfLines(
      const GeneratedNetwork& network) {
    std::vector<std::pair<std::string, std::string>> names;
    for (const auto& line : network.lines) {
      names.emplace_back(network.points[static_cast<std::size_t>(line.station)].name,
                         network.points[static_cast<std::size_t>(line.target)].name);
    }
    return names;
  }
};

void ExpectNear(const std::vector<double>& a, const std::vector<double>& b, double relative,
                double absolute) {
  ASSERT_EQ(a.size(), b.size());
  for (std::size_t i = 0; i < a.size(); ++i) {
    ASSERT_NEAR(a[i], b[i], relative * std::fabs(a[i]) + absolute) << i;
  }
}

// With both matrices, after each of the adjustments in turn on the same object.
template <typename Net, typename Adjustment>
void ExpectAgreement(const GeneratedNetwork& network,
                     const std::vector<Outcome (*)(Adjustment&)>& adjustments) {
  const auto net = MakeNet<Net>(network);
  Adjustment packed(net, kAlwaysPacked);
  Adjustment sparse(net, kAlwaysSparse);
  for (const auto adjust : adjustments) {
    ASSERT_TRUE(adjust(packed).ok);
    ASSERT_TRUE(adjust(sparse).ok);
    const Figures a(packed, network);
    const Figures b(sparse, network);
    ExpectNear(a.values, b.values, 1e-9, 0.0);
    ExpectNear(a.precisions, b.precisions, 1e-7, 0.0);
    ExpectNear(a.residuals, b.residuals, 0.0, 1e-5);
  }
}

constexpr auto kAdjustPlane = +[](PlaneAdjustment& net) { return net.Adjust(); };

TEST(NetworkComparison, AdjustmentsAgree) {
  for (const Shape& shape : kShapes) {
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
  for (std::int32_t i = 0; i + 20 < 64; i += 3)
    network.lines.push_back({i, i + 20, {0, -1, 0, -1}});
  ExpectAgreement<PlaneNet, PlaneAdjustment>(network, {kAdjustPlane});
}

}  // namespace
}  // namespace brenu::testing
