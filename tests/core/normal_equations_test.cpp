// The packed and the sparse normal matrix against each other.
#include "core/normal_equations.h"

#include <gtest/gtest.h>

#include <random>

#include "support/patterns.h"

namespace brenu::testing {
namespace {

constexpr std::int32_t kAlwaysSparse = -1;
constexpr std::int32_t kAlwaysPacked = 1000000;

// The unknowns that meet: those of every group, and those of both groups of every connection.
std::vector<std::vector<std::int32_t>> Meetings(const UnknownPattern& pattern) {
  std::vector<std::vector<std::int32_t>> meetings(static_cast<std::size_t>(pattern.groupCount));
  for (std::int32_t i = 0; i < pattern.UnknownCount(); ++i) {
    const std::int32_t group = pattern.groupOfUnknown[static_cast<std::size_t>(i)];
    meetings[static_cast<std::size_t>(group)].push_back(i);
  }
  for (const auto& [a, b] : pattern.connections) {
    std::vector<std::int32_t> both = meetings[static_cast<std::size_t>(a)];
    const auto& other = meetings[static_cast<std::size_t>(b)];
    if (a != b) both.insert(both.end(), other.begin(), other.end());
    meetings.push_back(std::move(both));
  }
  return meetings;
}

// Equations with coefficients as they occur: some unknowns held hard, some determined weakly.
void Fill(NormalEquations& normal, const UnknownPattern& pattern, std::uint32_t seed) {
  std::minstd_rand random(seed);
  const auto coefficient = [&] { return static_cast<double>(random() % 2001) / 100.0 - 10.0; };
  std::vector<Term> equation;
  normal.Reset();
  for (const auto& unknowns : Meetings(pattern)) {
    for (int repeat = 0; repeat < 2; ++repeat) {
      equation.clear();
      for (const std::int32_t u : unknowns) equation.push_back({u, coefficient()});
      normal.Add(equation, 11.0 + coefficient(), coefficient());
    }
  }
  for (std::int32_t u = 0; u < pattern.UnknownCount(); ++u) normal.Hold(u, 1.0);
  if (pattern.UnknownCount() > 2) {
    normal.Hold(0, 1e20);
    normal.ReplaceDiagonal(pattern.UnknownCount() / 2, 1e30);
  }
}

TEST(NormalEquations, PackedAndSparseAgreeForEveryShape) {
  for (const auto& [name, pattern] : PatternsOfManyShapes()) {
    SCOPED_TRACE(name);
    NormalEquations packed(kAlwaysPacked);
    NormalEquations sparse(kAlwaysSparse);
    packed.SetPattern(pattern);
    sparse.SetPattern(pattern);
    // The second round works on the analysis of the first.
    for (const std::uint32_t seed : {1U, 2U}) {
      double largest = 0.0;
      for (NormalEquations* normal : {&packed, &sparse}) {
        Fill(*normal, pattern, seed);
        ASSERT_TRUE(normal->Solve());
      }
      for (const double x : packed.Solution()) largest = std::max(largest, std::fabs(x));
      for (std::size_t i = 0; i < packed.Solution().size(); ++i) {
        ASSERT_NEAR(sparse.Solution()[i], packed.Solution()[i], 1e-10 * largest) << i;
      }
      for (const auto& unknowns : Meetings(pattern)) {
        for (const std::int32_t i : unknowns) {
          for (const std::int32_t j : unknowns) {
            const double scale = std::sqrt(packed.Cofactor(i, i) * packed.Cofactor(j, j));
            ASSERT_NEAR(sparse.Cofactor(i, j), packed.Cofactor(i, j), 1e-10 * scale) << i << j;
          }
        }
      }
    }
  }
}

TEST(NormalEquations, OneUnknownTwiceInAnEquationCountsBothCrossProducts) {
  UnknownPattern pattern = PointPattern(2, 1);
  pattern.Connect(0, 1);
  for (const std::int32_t mostPacked : {kAlwaysPacked, kAlwaysSparse}) {
    NormalEquations normal(mostPacked);
    normal.SetPattern(pattern);
    normal.Reset();
    const Term equation[] = {{0, 2.0}, {1, 0.0}, {0, 3.0}};
    normal.Add(equation, 4.0, 1.0);
    normal.Hold(1, 1.0);
    ASSERT_TRUE(normal.Solve());
    EXPECT_DOUBLE_EQ(normal.Cofactor(0, 0), 1.0 / 100.0);
    EXPECT_DOUBLE_EQ(normal.Solution()[0], -20.0 / 100.0);
  }
}

TEST(NormalEquations, UnknownWithoutEquationIsSingularWhereverItStands) {
  const UnknownPattern pattern = GridPattern(8, 8, 2);
  for (const std::int32_t mostPacked : {kAlwaysPacked, kAlwaysSparse}) {
    NormalEquations normal(mostPacked);
    normal.SetPattern(pattern);
    for (std::int32_t missing = 0; missing < pattern.UnknownCount(); ++missing) {
      normal.Reset();
      for (std::int32_t u = 0; u < pattern.UnknownCount(); ++u) {
        // A pivot is tested against 1.0 and not against its matrix.
        normal.Hold(u, u == missing ? 1e-17 : 1e-15);
      }
      EXPECT_FALSE(normal.Solve()) << missing;
      EXPECT_FALSE(normal.IsSolved());
    }
    // A failure leaves nothing behind.
    Fill(normal, pattern, 3);
    EXPECT_TRUE(normal.Solve());
    normal.Reset();
    EXPECT_FALSE(normal.IsSolved());
  }
}

// Neighbours differ by 1 and the first is 1; nothing is known of the last.
TEST(NormalEquations, WhatIsDeterminedDoesNotDependOnTheUnitOfWeights) {
  NormalEquations normal(kAlwaysSparse);
  constexpr std::int32_t kCount = 70;
  normal.SetPattern(PatternOfShape("path", kCount));
  for (const double weight : {1.0, 1e-25, 1e25}) {
    normal.Reset();
    const Term first[] = {{0, 1.0}};
    normal.Add(first, weight, -1.0);
    for (std::int32_t u = 1; u < kCount - 1; ++u) {
      const Term step[] = {{u, 1.0}, {u - 1, -1.0}};
      normal.Add(step, weight, -1.0);
    }
    EXPECT_EQ(normal.SolveDetermined(), std::vector{kCount - 1}) << weight;
    EXPECT_NEAR(normal.Solution()[kCount - 2], kCount - 1, 1e-9) << weight;
    EXPECT_NEAR(normal.Cofactor(5, 5) * weight, 6.0, 1e-9) << weight;
  }
}

}  // namespace
}  // namespace brenu::testing
