// Random networks against what an adjustment means: the adjusted coordinates make the weighted sum
// of squared residuals least, and standard errors are what errors of the observations, one after
// the other, do to the results.
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

// The packed notation of an angle in degrees, to 0.0001".
double Packed(double degrees) {
  const long long units = std::llround(degrees * 36000000);
  return static_cast<double>(units / 36000000) +
         static_cast<double>(units / 600000 % 60 * 1000000 + units % 600000) / 1e8;
}

using Pair = std::array<double, 2>;  // X and Y, or what belongs to direction and distance
using Positions = std::vector<Pair>;

// Length and azimuth (radians) between two points.
struct Polar {
  double length, azimuth;
  Polar(const Positions& at, std::size_t from, std::size_t to)
      : length(std::hypot(at[to][0] - at[from][0], at[to][1] - at[from][1])),
        azimuth(std::atan2(at[to][1] - at[from][1], at[to][0] - at[from][0])) {}
};

struct Network {
  struct Line {
    std::size_t from, to;
    Pair obs, errors;  // of the direction (degrees) and the distance
  };
  static constexpr std::size_t kControl = 3;  // control points come first
  Positions truth;
  std::vector<Line> lines;

  static std::string Name(std::size_t i) { return {static_cast<char>('a' + i)}; }
  // Of the circle, in degrees; around 0 the differences of azimuths and readings would wrap.
  static double Orientation(std::size_t i) { return 20 + 12 * static_cast<double>(i); }

  // Points on a disturbed grid; every point sights its neighbours.
  explicit Network(std::size_t pointCount) {
    std::mt19937 random;
    const auto within = [&](double most) {
      return most * (static_cast<double>(random()) / 2147483648.0 - 1);
    };
    for (std::size_t i = 0; i < pointCount; ++i) {
      truth.push_back({4.5e6 + 400.0 * static_cast<double>(i / 4) + within(60),
                       5e5 + 400.0 * static_cast<double>(i % 4) + within(60)});
    }
    for (std::size_t a = 0; a < pointCount; ++a) {
      for (std::size_t b = 0; b < pointCount; ++b) {
        const Polar line(truth, a, b);
        if (a == b || line.length > 650) continue;
        const double reading = line.azimuth / kDegree - Orientation(a) + within(4) / 3600;
        const double distance = line.length + within(0.007);
        const Pair errors = {2.5 / 3600, 0.003 + 2e-6 * distance};
        lines.push_back({a, b, {std::fmod(reading + 720, 360), distance}, errors});
      }
    }
  }

  // Entered backwards.
  Job Enter() const {
    Job job({}, {}, Errors(2.5, 0.003, 2e-6));
    for (std::size_t i = truth.size(); i-- > 0;) {
      i < kControl ? job.Add(Name(i), 10, truth[i][0], truth[i][1]) : job.Add(Name(i));
    }
    for (std::size_t k = lines.size(); k-- > 0;) {
      const Line& l = lines[k];
      job.Observe(Name(l.from), Name(l.to), Direction(Packed(l.obs[0]), l.obs[1]));
    }
    return job;
  }

  Positions Adjust(const Job& job) const {
    EXPECT_TRUE(LeastSquareAdj(job));
    Positions adjusted;
    for (std::size_t i = 0; i < truth.size(); ++i) {
      const PlaneResult p = ReadPlane(job, Name(i));
      adjusted.push_back({p.x, p.y});
    }
    return adjusted;
  }

  // In degrees and metres.  The orientation of a station is the mean of what its directions say.
  std::vector<Pair> Residuals(const Positions& at) const {
    std::vector<Pair> v;
    std::vector<double> sum(truth.size(), 0), count(truth.size(), 0);
    for (const Line& l : lines) {
      const Polar line(at, l.from, l.to);
      const double turn = line.azimuth / kDegree - l.obs[0] - Orientation(l.from);
      v.push_back({std::remainder(turn, 360), line.length - l.obs[1]});
      sum[l.from] += v.back()[0];
      ++count[l.from];
    }
    for (std::size_t k = 0; k < lines.size(); ++k) {
      v[k][0] -= sum[lines[k].from] / count[lines[k].from];
    }
    return v;
  }
  double Pvv(const Positions& at) const {
    double sum = 0;
    const std::vector<Pair> v = Residuals(at);
    for (std::size_t k = 0; k < lines.size(); ++k) {
      for (std::size_t c = 0; c < 2; ++c) sum += std::pow(v[k][c] / lines[k].errors[c], 2);
    }
    return sum;
  }

  // What an error of each observation as large as its standard error does to the positions.
  std::vector<Positions> Changes() const {
    std::vector<Positions> changes;
    for (std::size_t k = 0; k < 2 * lines.size(); ++k) {
      Network changed = *this;
      const double error = lines[k / 2].errors[k % 2];
      changed.lines[k / 2].obs[k % 2] += error;
      Positions change = Adjust(changed.Enter());
      changed.lines[k / 2].obs[k % 2] -= 2 * error;
      const Positions opposite = Adjust(changed.Enter());
      for (std::size_t i = 0; i < truth.size(); ++i) {
        for (std::size_t c = 0; c < 2; ++c) change[i][c] = (change[i][c] - opposite[i][c]) / 2;
      }
      changes.push_back(change);
    }
    return changes;
  }
};

// Standard errors of one point against another, along an azimuth and across it, and the covariance.
struct Spread {
  double along = 0, across = 0, common = 0;
  Spread(const std::vector<Positions>& changes, std::size_t from, std::size_t to, double azimuth) {
    for (const Positions& change : changes) {
      const double dx = change[to][0] - change[from][0];
      const double dy = change[to][1] - change[from][1];
      const double a = dx * std::cos(azimuth) + dy * std::sin(azimuth);
      const double b = dy * std::cos(azimuth) - dx * std::sin(azimuth);
      along = std::hypot(along, a);
      across = std::hypot(across, b);
      common += a * b;
    }
  }
};

// With the packed and, from 21 points on, with the sparse normal matrix.
TEST(GeneratedNetwork, IsAdjustedAsItsMeaningSays) {
  for (const std::size_t pointCount : {12u, 24u}) {
    SCOPED_TRACE(pointCount);
    const Network net(pointCount);
    const Job job = net.Enter();
    const Positions adjusted = net.Adjust(job);
    const std::size_t unknowns = 2 * (pointCount - Network::kControl) + pointCount;
    const double m0 =
        std::sqrt(net.Pvv(adjusted) / static_cast<double>(2 * net.lines.size() - unknowns));
    const std::vector<Positions> changes = net.Changes();

    for (std::size_t i = Network::kControl; i < pointCount; ++i) {
      for (std::size_t c = 0; c < 2; ++c) {
        const auto pvvAt = [&](double shift) {
          Positions moved = adjusted;
          moved[i][c] += shift;
          return net.Pvv(moved);
        };
        // The lowest point of the parabola.
        const double low = pvvAt(-0.001);
        const double high = pvvAt(0.001);
        EXPECT_NEAR(0.0005 * (low - high) / (low - 2 * pvvAt(0) + high), 0, 1e-6);
      }
      const PlaneResult p = ReadPlane(job, Network::Name(i));
      const Spread north(changes, 0, i, 0);
      EXPECT_TRUE(Near({p.mx, p.my}, {m0 * north.along, m0 * north.across}, 1e-3 * p.mp));
      EXPECT_NEAR(std::hypot(p.e, p.f), p.mp, 1e-9);
      const double area = std::pow(north.along * north.across, 2) - std::pow(north.common, 2);
      EXPECT_NEAR(p.e * p.f / (m0 * m0 * std::sqrt(area)), 1, 1e-3);
    }

    const std::vector<Pair> v = net.Residuals(adjusted);
    for (std::size_t k = 0; k < net.lines.size(); ++k) {
      const auto& [from, to, obs, errors] = net.lines[k];
      const std::string station = Network::Name(from), target = Network::Name(to);
      EXPECT_NEAR(Read(GetDirAngleResult, job, station, target).residual, v[k][0] * 3600, 1e-3);
      EXPECT_NEAR(Read(GetLengthResult, job, station, target).residual, v[k][1], 1e-6);
      if (to < Network::kControl) continue;
      const Polar polar(adjusted, from, to);
      const Spread spread(changes, from, to, polar.azimuth);
      const LineResult line = ReadLine(job, station, target).value();
      EXPECT_NEAR(line.length, polar.length, 1e-6);
      EXPECT_NEAR(line.lengthError / (m0 * spread.along), 1, 1e-3);
      EXPECT_NEAR(line.azimuthError / 3600 * kDegree * line.length / (m0 * spread.across), 1, 1e-3);
    }
  }
}

}  // namespace
}  // namespace brenu::testing
