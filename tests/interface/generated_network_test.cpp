// Random networks against what an adjustment means: the adjusted values make the weighted sum of
// squared residuals least, and standard errors are what errors of the observations, one after the
// other, do to the results.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "support/job.h"

namespace brenu::testing {
namespace {

constexpr double kDegree = 3.14159265358979323846 / 180;

// Between degrees and their packed notation, to 0.0001".
double Packed(double degrees) {
  const long long units = std::llround(degrees * 36000000);
  return static_cast<double>(units / 36000000) +
         static_cast<double>(units / 600000 % 60 * 1000000 + units % 600000) / 1e8;
}
double Unpacked(double dms) {
  const long long units = std::llround(dms * 1e8);
  return static_cast<double>(units / 100000000) +
         static_cast<double>(units / 1000000 % 100 * 600000 + units % 1000000) / 36000000;
}

using Triple = std::array<double, 3>;  // X, Y, H; or what belongs to the three observations
using Positions = std::vector<Triple>;

struct Network {
  struct Line {
    std::size_t from, to;
    Triple obs;     // direction (degrees), distance, height difference
    Triple errors;  // their standard errors, of the height difference for 1 m in a kilometre
  };
  static constexpr std::size_t kPoints = 12, kControl = 3;  // control points come first
  Positions truth;
  std::vector<Line> lines;

  static std::string Name(std::size_t i) { return {static_cast<char>('a' + i)}; }
  // Of the circle, in degrees; around 0 the differences of azimuths and readings would wrap.
  static double Orientation(std::size_t i) { return 20 + 25 * static_cast<double>(i); }

  // Points on a disturbed grid; every point sights its neighbours.
  explicit Network(std::uint32_t seed) {
    std::mt19937 random(seed);
    const auto within = [&](double most) {
      return most * (static_cast<double>(random()) / 2147483648.0 - 1);
    };
    for (std::size_t i = 0; i < kPoints; ++i) {
      truth.push_back({4.5e6 + 400.0 * static_cast<double>(i / 4) + within(60),
                       5e5 + 400.0 * static_cast<double>(i % 4) + within(60), 50 + within(40)});
    }
    for (std::size_t a = 0; a < kPoints; ++a) {
      for (std::size_t b = 0; b < kPoints; ++b) {
        const double dx = truth[b][0] - truth[a][0];
        const double dy = truth[b][1] - truth[a][1];
        const double s = std::hypot(dx, dy);
        if (a == b || s > 650) continue;
        const double reading = std::atan2(dy, dx) / kDegree - Orientation(a) + within(4) / 3600;
        const double distance = s + within(0.007);
        lines.push_back(
            {a,
             b,
             {std::fmod(reading + 720, 360), distance, truth[b][2] - truth[a][2] + within(0.004)},
             {2.5 / 3600, 0.003 + 2e-6 * distance, std::sqrt(distance / 1000)}});
      }
    }
  }

  // Entered backwards.
  Job Enter() const {
    Job job({}, {}, Errors(2.5, 0.003, 2e-6));
    for (std::size_t i = kPoints; i-- > 0;) {
      const auto& [x, y, h] = truth[i];
      i < kControl ? job.Add(Name(i), 11, x, y, h) : job.Add(Name(i));
    }
    for (std::size_t k = lines.size(); k-- > 0;) {
      const auto& [reading, distance, rise] = lines[k].obs;
      job.Observe(Name(lines[k].from), Name(lines[k].to), {distance, Packed(reading), rise, -1});
    }
    return job;
  }

  static Positions Adjust(const Job& job) {
    EXPECT_TRUE(LeastSquareAdj(job));
    Positions adjusted;
    for (std::size_t i = 0; i < kPoints; ++i) {
      const PlaneResult plane = ReadPlane(job, Name(i));
      adjusted.push_back({plane.x, plane.y, ReadHeight(job, Name(i)).height});
    }
    return adjusted;
  }

  // In degrees and metres.  The orientation of a station is the mean of what its directions say.
  std::vector<Triple> Residuals(const Positions& at) const {
    std::vector<Triple> v;
    double sum[kPoints] = {}, count[kPoints] = {};
    for (const Line& l : lines) {
      const double dx = at[l.to][0] - at[l.from][0];
      const double dy = at[l.to][1] - at[l.from][1];
      const double turn = std::atan2(dy, dx) / kDegree - l.obs[0] - Orientation(l.from);
      v.push_back({std::remainder(turn, 360), std::hypot(dx, dy) - l.obs[1],
                   at[l.to][2] - at[l.from][2] - l.obs[2]});
      sum[l.from] += v.back()[0];
      ++count[l.from];
    }
    for (std::size_t k = 0; k < lines.size(); ++k) {
      v[k][0] -= sum[lines[k].from] / count[lines[k].from];
    }
    return v;
  }
  // [pvv] of the plane and of the heights.
  std::array<double, 2> Sums(const Positions& at) const {
    std::array<double, 2> sums{};
    const std::vector<Triple> v = Residuals(at);
    for (std::size_t k = 0; k < lines.size(); ++k) {
      for (std::size_t c = 0; c < 3; ++c) sums[c / 2] += std::pow(v[k][c] / lines[k].errors[c], 2);
    }
    return sums;
  }

  // What an error of each observation as large as its standard error does to the positions.
  std::vector<Positions> Changes() const {
    std::vector<Positions> changes;
    Network changed = *this;
    for (Line& line : changed.lines) {
      for (std::size_t c = 0; c < 3; ++c) {
        line.obs[c] += line.errors[c];
        Positions change = Adjust(changed.Enter());
        line.obs[c] -= 2 * line.errors[c];
        const Positions opposite = Adjust(changed.Enter());
        line.obs[c] += line.errors[c];
        for (std::size_t i = 0; i < kPoints; ++i) {
          for (std::size_t j = 0; j < 3; ++j) change[i][j] = (change[i][j] - opposite[i][j]) / 2;
        }
        changes.push_back(change);
      }
    }
    return changes;
  }
};

// Standard errors of one point against another: along an azimuth and across it, of the height; and
// what the first two have in common.
struct Spread {
  double along = 0, across = 0, height = 0, common = 0;
  Spread(const std::vector<Positions>& changes, std::size_t from, std::size_t to, double azimuth) {
    for (const Positions& change : changes) {
      const double dx = change[to][0] - change[from][0];
      const double dy = change[to][1] - change[from][1];
      const double a = dx * std::cos(azimuth) + dy * std::sin(azimuth);
      const double b = dy * std::cos(azimuth) - dx * std::sin(azimuth);
      along = std::hypot(along, a);
      across = std::hypot(across, b);
      height = std::hypot(height, change[to][2] - change[from][2]);
      common += a * b;
    }
  }
};

TEST(GeneratedNetwork, IsAdjustedAsItsMeaningSays) {
  for (const std::uint32_t seed : {1u, 2u}) {
    SCOPED_TRACE(seed);
    const Network net(seed);
    const Job job = net.Enter();
    const Positions adjusted = Network::Adjust(job);
    const auto [planeSum, heightSum] = net.Sums(adjusted);
    constexpr double kNew = Network::kPoints - Network::kControl;
    const auto redundancy = static_cast<double>(2 * net.lines.size() - Network::kPoints) - 2 * kNew;
    const double m0 = std::sqrt(planeSum / redundancy);
    const double sigma0 = std::sqrt(heightSum / kNew);  // by the rule over the new heights
    const std::vector<Positions> changes = net.Changes();

    for (std::size_t i = Network::kControl; i < Network::kPoints; ++i) {
      for (std::size_t c = 0; c < 3; ++c) {
        const auto sumAt = [&](double shift) {
          Positions moved = adjusted;
          moved[i][c] += shift;
          return net.Sums(moved)[c / 2];
        };
        // The lowest point of the parabola.
        const double low = sumAt(-0.001);
        const double high = sumAt(0.001);
        EXPECT_NEAR(0.0005 * (low - high) / (low - 2 * sumAt(0) + high), 0, 1e-6);
      }
      const PlaneResult p = ReadPlane(job, Network::Name(i));
      const Spread north(changes, 0, i, 0);
      const Spread axes(changes, 0, i, Unpacked(p.t) * kDegree);
      EXPECT_TRUE(Near({p.mx, p.my, p.e, p.f},
                       {m0 * north.along, m0 * north.across, m0 * axes.along, m0 * axes.across},
                       1e-3 * p.mp));
      EXPECT_NEAR(p.mp, std::hypot(p.mx, p.my), 1e-9);
      EXPECT_NEAR(axes.common / (axes.along * axes.across), 0, 1e-3);
      EXPECT_TRUE(p.e >= p.f && p.t >= 0 && p.t < 180);
      EXPECT_NEAR(ReadHeight(job, Network::Name(i)).sigma, sigma0 * north.height, 1e-8);
    }

    const std::vector<Triple> v = net.Residuals(adjusted);
    for (std::size_t k = 0; k < net.lines.size(); ++k) {
      const std::size_t from = net.lines[k].from, to = net.lines[k].to;
      const std::string station = Network::Name(from), target = Network::Name(to);
      EXPECT_NEAR(Read(GetDirAngleResult, job, station, target).residual, v[k][0] * 3600, 1e-3);
      EXPECT_NEAR(Read(GetLengthResult, job, station, target).residual, v[k][1], 1e-6);
      const HeightObs height = ReadHeightObs(job, station, target).value();
      EXPECT_NEAR(height.residual, v[k][2], 1e-8);
      if (to < Network::kControl) continue;
      const double dx = adjusted[to][0] - adjusted[from][0];
      const double dy = adjusted[to][1] - adjusted[from][1];
      const Spread spread(changes, from, to, std::atan2(dy, dx));
      EXPECT_NEAR(height.sigma, sigma0 * spread.height, 1e-8);
      const LineResult line = ReadLine(job, station, target).value();
      EXPECT_NEAR(line.length, std::hypot(dx, dy), 1e-6);
      EXPECT_NEAR(line.lengthError / (m0 * spread.along), 1, 1e-3);
      EXPECT_NEAR(line.azimuthError * kDegree / 3600 * line.length / (m0 * spread.across), 1, 1e-3);
    }
  }
}

}  // namespace
}  // namespace brenu::testing
