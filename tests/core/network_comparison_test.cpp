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

// What a network answers after an adjustment.
using Figures = std::vector<double>;

void AddPoint(Figures& figures, const PlaneAdjustment& net, const char* name) {
  const PlaneResult r = net.ResultOfPoint(name).value();
  figures.insert(figures.end(), {r.x, r.y, r.mx, r.my, r.e, net.Sigma0()});
}
void AddLine(Figures& figures, const PlaneAdjustment& net, const char* from, const char* to) {
  const auto line = net.PrecisionOfLine(from, to);
  if (line) figures.insert(figures.end(), {line->azimuthError, line->lengthError});
}
void AddPoint(Figures& figures, const LevelAdjustment& net, const char* name) {
  const VerticalResult r = net.ResultOfPoint(name).value();
  figures.insert(figures.end(), {r.height, r.sigma});
}
void AddLine(Figures& figures, const LevelAdjustment& net, const char* from, const char* to) {
  figures.push_back(net.ResultOfObs(from, to).value().sigma);
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
  const auto figuresOf = [&](const Adjustment& adjustment) {
    Figures figures;
    for (const PointData& p : network.points) AddPoint(figures, adjustment, p.name);
    for (const auto& l : network.lines) {
      AddLine(figures, adjustment, name(l.station), name(l.target));
    }
    return figures;
  };
  for (const auto adjust : adjustments) {
    ASSERT_TRUE(adjust(packed).ok);
    ASSERT_TRUE(adjust(sparse).ok);
    const Figures expected = figuresOf(packed);
    const Figures actual = figuresOf(sparse);
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i) {
      ASSERT_NEAR(actual[i], expected[i], 1e-7 * std::fabs(expected[i])) << i;
    }
  }
}

constexpr auto kAdjustPlane = +[](PlaneAdjustment& net) { return net.Adjust(); };
constexpr auto kAdjustDistances =
    +[](PlaneAdjustment& net) { return net.AdjustDistances(net.Param()); };
constexpr auto kAdjustLevel = +[](LevelAdjustment& net) { return net.LevelAdjust(); };

TEST(NetworkComparison, AdjustmentsAgree) {
  for (const auto& [rows, columns] : {std::pair(2, 2), {1, 300}, {3, 70}, {14, 20}}) {
    SCOPED_TRACE(::testing::Message() << rows << " x " << columns);
    GridNetwork grid(rows, columns, PointOrder::kShuffled);
    // Distances alone have other unknowns, and cannot hold a single row.
    std::vector<Outcome (*)(PlaneAdjustment&)> adjustments = {kAdjustPlane};
    if (rows > 1) adjustments.push_back(kAdjustDistances);
    ExpectAgreement<PlaneNet, PlaneAdjustment>(grid.Plane(), adjustments);
    ExpectAgreement<LevelNet, LevelAdjustment>(grid.Levelling(), {kAdjustLevel});
  }
  // Pairs without an observation in use still have a precision.
  GeneratedNetwork network = GridNetwork(8, 8, PointOrder::kByRows).Plane();
  for (std::int32_t i = 0; i + 20 < 64; i += 3) {
    network.lines.push_back({i, i + 20, {0, -1, 0, -1}});
  }
  ExpectAgreement<PlaneNet, PlaneAdjustment>(network, {kAdjustPlane});
}

}  // namespace
}  // namespace brenu::testing
