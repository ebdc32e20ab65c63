// Whole networks adjusted with the packed and with the sparse normal matrix.
#include <gtest/gtest.h>

#include "bench/grid_network.h"
#include "level/level_net.h"
#include "plane/plane_net.h"
#include "support/fill_net.h"

namespace brenu::testing {
namespace {

constexpr std::int32_t kAlwaysSparse = -1;
constexpr std::int32_t kAlwaysPacked = 1000000;
constexpr double kSameValue = 1e-9;      // relative
constexpr double kSamePrecision = 1e-7;  // relative

struct Shape {
  std::int32_t rows, columns;
  PointOrder order;
};
constexpr Shape kShapes[] = {{2, 2, PointOrder::kByRows},     {1, 40, PointOrder::kByRows},
                             {1, 300, PointOrder::kShuffled}, {3, 70, PointOrder::kShuffled},
                             {10, 10, PointOrder::kByRows},   {10, 10, PointOrder::kShuffled},
                             {14, 20, PointOrder::kShuffled}};

void ExpectSame(double expected, double actual, double relative, const std::string& what) {
  ASSERT_NEAR(expected, actual, relative * std::fabs(expected)) << what;
}

void ExpectSamePlaneResults(const PlaneNet& packed, const PlaneNet& sparse,
                            const GeneratedNetwork& network, bool directions) {
  ExpectSame(packed.Sigma0(), sparse.Sigma0(), kSamePrecision, "sigma0");
  for (const PointData& p : network.points) {
    const PlaneResult a = packed.ResultOfPoint(p.name).value();
    const PlaneResult b = sparse.ResultOfPoint(p.name).value();
    ExpectSame(a.x, b.x, kSameValue, p.name);
    ExpectSame(a.y, b.y, kSameValue, p.name);
    ExpectSame(a.mx, b.mx, kSamePrecision, p.name);
    ExpectSame(a.my, b.my, kSamePrecision, p.name);
    ExpectSame(a.e, b.e, kSamePrecision, p.name);
  }
  for (const auto& line : network.lines) {
    const char* from = network.points[static_cast<std::size_t>(line.station)].name;
    const char* to = network.points[static_cast<std::size_t>(line.target)].name;
    if (directions) {
      const double a = packed.ResultOfDirection(from, to).value().residual;
      ASSERT_NEAR(a, sparse.ResultOfDirection(from, to).value().residual, 1e-5) << from << to;
    }
    const auto a = packed.PrecisionOfLine(from, to);
    const auto b = sparse.PrecisionOfLine(from, to);
    ASSERT_EQ(a.has_value(), b.has_value());
    if (!a) continue;
    ExpectSame(a->azimuthError, b->azimuthError, kSamePrecision, from);
    ExpectSame(a->lengthError, b->lengthError, kSamePrecision, from);
  }
}

TEST(NetworkComparison, PlaneAdjustmentsAgree) {
  for (const Shape& shape : kShapes) {
    SCOPED_TRACE(::testing::Message() << shape.rows << " x " << shape.columns);
    const GeneratedNetwork network = GridNetwork(shape.rows, shape.columns, shape.order).Plane();
    PlaneNet packed(kAlwaysPacked);
    PlaneNet sparse(kAlwaysSparse);
    FillNet(packed, network);
    FillNet(sparse, network);
    ASSERT_TRUE(packed.Adjust());
    ASSERT_TRUE(sparse.Adjust());
    ExpectSamePlaneResults(packed, sparse, network, true);
    // Without orientations and with other unknowns, on the same object.
    ASSERT_EQ(packed.AdjustDistances(), sparse.AdjustDistances());
    ExpectSamePlaneResults(packed, sparse, network, false);
  }
}

// Pairs without an observation in use still have a precision.
TEST(NetworkComparison, StoredPairsWithoutObservationAgree) {
  GeneratedNetwork network = GridNetwork(8, 8, PointOrder::kByRows).Plane();
  for (std::int32_t i = 0; i + 20 < 64; i += 3)
    network.lines.push_back({i, i + 20, {0, -1, 0, -1}});
  PlaneNet packed(kAlwaysPacked);
  PlaneNet sparse(kAlwaysSparse);
  FillNet(packed, network);
  FillNet(sparse, network);
  ASSERT_TRUE(packed.Adjust());
  ASSERT_TRUE(sparse.Adjust());
  ExpectSamePlaneResults(packed, sparse, network, false);
}

TEST(NetworkComparison, LevellingAdjustmentsAgree) {
  for (const Shape& shape : kShapes) {
    SCOPED_TRACE(::testing::Message() << shape.rows << " x " << shape.columns);
    const GeneratedNetwork network =
        GridNetwork(shape.rows, shape.columns, shape.order).Levelling();
    LevelNet packed(kAlwaysPacked);
    LevelNet sparse(kAlwaysSparse);
    FillNet(packed, network);
    FillNet(sparse, network);
    ASSERT_TRUE(packed.LevelAdjust());
    ASSERT_TRUE(sparse.LevelAdjust());
    for (const PointData& p : network.points) {
      const VerticalResult a = packed.ResultOfPoint(p.name).value();
      const VerticalResult b = sparse.ResultOfPoint(p.name).value();
      ExpectSame(a.height, b.height, kSameValue, p.name);
      ExpectSame(a.sigma, b.sigma, kSamePrecision, p.name);
    }
    for (const auto& line : network.lines) {
      const char* from = network.points[static_cast<std::size_t>(line.station)].name;
      const char* to = network.points[static_cast<std::size_t>(line.target)].name;
      ExpectSame(packed.ResultOfObs(from, to).value().sigma,
                 sparse.ResultOfObs(from, to).value().sigma, kSamePrecision, from);
    }
  }
}

}  // namespace
}  // namespace brenu::testing
