#include "core/parallel.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <cstring>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

#include "bench/grid_network.h"
#include "core/sparse/dense_product.h"
#include "io/text_pieces.h"
#include "level/level_adjustment.h"
#include "level/level_closures.h"
#include "plane/plane_adjustment.h"
#include "support/fill_net.h"

namespace brenu::testing {
namespace {

class Parallel : public ::testing::Test {
 protected:
  ~Parallel() override { SetThreadCount(0); }
};

template <typename Record>
void Append(std::string& bytes, const Record& record) {
  bytes.append(reinterpret_cast<const char*>(&record), sizeof record);
}

// Everything a plane network answers, as bytes.
std::string Answers(const GeneratedNetwork& network, const PlaneAdjustment& net) {
  std::string bytes;
  Append(bytes, net.Sigma0());
  for (const PointData& p : network.points) Append(bytes, net.ResultOfPoint(p.name).value());
  const auto name = [&](std::int32_t i) {
    return network.points[static_cast<std::size_t>(i)].name;
  };
  for (const auto& line : network.lines) {
    const char* const from = name(line.station);
    const char* const to = name(line.target);
    const auto direction = net.ResultOfDirection(from, to).value();
    Append(bytes, direction.residual);
    Append(bytes, direction.removed);
    if (const auto distance = net.ResultOfDistance(from, to)) Append(bytes, distance->residual);
    if (const auto precision = net.PrecisionOfLine(from, to)) {
      Append(bytes, precision->azimuthError);
      Append(bytes, precision->lengthError);
    }
  }
  return bytes;
}

TEST_F(Parallel, ResultsDoNotDependOnTheNumberOfThreads) {
  GeneratedNetwork plane = GridNetwork(36, 36, PointOrder::kShuffled).Plane();
  for (std::size_t k = 700; k < plane.lines.size(); k += 3000) {
    plane.lines[k].obs.direction += 0.00007;
  }
  const GeneratedNetwork levelling = GridNetwork(40, 40, PointOrder::kShuffled).Levelling();
  std::vector<std::string> expected;
  for (const std::size_t threads : {1U, 2U, 3U, 8U}) {
    SetThreadCount(threads);
    std::vector<std::string> actual;
    PlaneAdjustment classic(MakeNet<PlaneNet>(plane));
    ASSERT_TRUE(classic.DataSnooping(1e-7).ok);
    actual.push_back(Answers(plane, classic));
    PlaneAdjustment textbook(MakeNet<PlaneNet>(plane), RuleSet::kTextbook);
    ASSERT_TRUE(textbook.SnoopAsTextbook(1e-7).ok);
    EXPECT_EQ(textbook.AllTakenOut().size(), 3U);
    actual.push_back(Answers(plane, textbook));

    const auto net = MakeNet<LevelNet>(levelling);
    LevelAdjustment level(net);
    ASSERT_TRUE(level.LevelAdjust().ok);
    std::string& bytes = actual.emplace_back();
    for (const PointData& p : levelling.points) {
      const VerticalResult result = level.ResultOfPoint(p.name).value();
      Append(bytes, result.height);
      Append(bytes, result.sigma);
    }
    if (expected.empty()) expected = actual;
    EXPECT_TRUE(actual == expected) << threads << " threads";
  }
}

// In strips by rows and by columns; of a lower part nothing is said above the diagonal.
TEST_F(Parallel, ProductsDoNotDependOnTheirStrips) {
  constexpr std::ptrdiff_t kDepth = 100;
  const auto productOf = [](std::ptrdiff_t rows, std::ptrdiff_t columns, DenseProduct::Part part) {
    const auto at = [](std::ptrdiff_t count) {
      std::vector<double> values;
      for (std::ptrdiff_t k = 0; k < count; ++k)
        values.push_back(std::sin(static_cast<double>(k * k)));
      return values;
    };
    const auto a = at(rows * kDepth);
    const auto b = at(columns * kDepth);
    std::vector<double> c(static_cast<std::size_t>(rows * columns), 1.0);
    DenseProduct product;
    const ThreadTeam team;
    product.Add({{a.data(), 1, rows}, {b.data(), 1, columns}, nullptr, -1.0, rows, columns, kDepth},
                c.data(), rows, part);
    for (std::ptrdiff_t k = 0; part == DenseProduct::Part::kLower && k < rows * columns; ++k) {
      if (k % rows < k / rows) c[static_cast<std::size_t>(k)] = 0.0;
    }
    return c;
  };
  using enum DenseProduct::Part;
  for (const auto& [rows, columns, part] :
       {std::tuple(405, 301, kWhole), std::tuple(301, 405, kWhole), std::tuple(401, 401, kLower),
        std::tuple(501, 307, kLower)}) {
    SetThreadCount(1);
    const auto expected = productOf(rows, columns, part);
    for (const std::size_t threads : {2U, 3U, 8U}) {
      SetThreadCount(threads);
      EXPECT_TRUE(productOf(rows, columns, part) == expected) << rows << " x " << columns;
    }
  }
}

TEST_F(Parallel, ExceptionsComeOutAndInnerCallsDoTheirWorkThemselves) {
  SetThreadCount(4);
  const ThreadTeam team;
  std::atomic<int> done = 0;
  ForEach(40, [&](std::size_t, std::size_t worker) {
    EXPECT_LT(worker, 4U);
    const ThreadTeam inner;
    EXPECT_EQ(WorkerCount(), 1U);
    ForEach(10, [&](std::size_t, std::size_t) { ++done; });
  });
  EXPECT_EQ(done, 400);
  EXPECT_THROW(ForEach(40,
                       [](std::size_t item, std::size_t) {
                         if (item == 7) throw std::runtime_error("seven");
                       }),
               std::runtime_error);
  ForEachPart(1000, 16,
              [&](std::size_t begin, std::size_t end) { done += static_cast<int>(end - begin); });
  EXPECT_EQ(done, 1400);
}

// Beyond what is written at a time, and with an end inside of a part.
TEST_F(Parallel, RowsOfATextStandInTheirOrder) {
  constexpr std::size_t kRows = 70000;
  std::string expected;
  for (std::size_t k = 0; k < kRows; ++k) expected += std::to_string(k) + '\n';
  for (const std::size_t threads : {1, 3}) {
    SetThreadCount(threads);
    const ThreadTeam team;
    const std::string text = WholeText([](const TextSink& sink) {
      PassRows(kRows, sink, [](std::string& out, std::size_t begin, std::size_t end) {
        for (std::size_t k = begin; k < end; ++k) out += std::to_string(k) + '\n';
      });
    });
    EXPECT_TRUE(text == expected) << threads << " threads";
  }
}

}  // namespace
}  // namespace brenu::testing
