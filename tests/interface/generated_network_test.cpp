// Random networks against what an adjustment means: the adjusted coordinates make the weighted sum
// of squared residuals least, and standard errors are what errors of the observations, one after
// the other, do to the results.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <complex>
#include <random>
#include <string>
#include <vector>

#include "support/job.h"

namespace brenu::testing {
namespace {

using Vector = std::complex<double>;  // X + iY: its argument is an azimuth
using Positions = std::vector<Vector>;
using Pair = std::array<double, 2>;  // what belongs to a direction and a distance

constexpr double kDegree = 3.14159265358979323846 / 180;

// The packed notation of an angle in degrees, to 0.0001".
double Packed(double degrees) {
  const long long units = std::llround(degrees * 36000000);
  return static_cast<double>(units / 36000000) +
         static_cast<double>(units / 600000 % 60 * 1000000 + units % 600000) / 1e8;
}

struct Network {
  struct Line {
    std::size_t from, to;
    Pair obs, errors;  // degrees and metres
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
      const Vector place(static_cast<double>(i / 4), static_cast<double>(i % 4));
      truth.push_back(Vector(4.5e6 + within(60), 5e5 + within(60)) + 400.0 * place);
    }
    for (std::size_t a = 0; a < pointCount; ++a) {
      for (std::size_t b = 0; b < pointCount; ++b) {
        const Vector line = truth[b] - truth[a];
        if (a == b || std::abs(line) > 650) continue;
        const double reading = std::arg(line) / kDegree - Orientation(a) + within(4) / 3600;
        const double distance = std::abs(line) + within(0.007);
        const Pair errors = {2.5 / 3600, 0.003 + 2e-6 * distance};
        lines.push_back({a, b, {std::fmod(reading + 720, 360), distance}, errors});
      }
    }
  }

  // Enters the network backwards, adjusts it and gives the positions.
  Positions Adjust(Job& job) const {
    SetAdjParam(job, Errors(2.5, 0.003, 2e-6));
    for (std::size_t i = truth.size(); i-- > 0;) {
      const bool known = i < kControl;
      job.Add(Name(i), known ? 10 : 0, known ? truth[i].real() : 0, known ? truth[i].imag() : 0);
    }
    for (auto l = lines.rbegin(); l != lines.rend(); ++l) {
      job.Observe(Name(l->from), Name(l->to), Direction(Packed(l->obs[0]), l->obs[1]));
    }
    EXPECT_TRUE(LeastSquareAdj(job));
    Positions adjusted;
    for (std::size_t i = 0; i < truth.size(); ++i) {
      const PlaneResult p = ReadPlane(job, Name(i));
      adjusted.emplace_back(p.x, p.y);
    }
    return adjusted;
  }

  // In units of the standard errors.  The orientation of a station is the mean of what its
  // directions say.
  std::vector<Pair> Residuals(const Positions& at) const {
    std::vector<Pair> v;
    std::vector<double> sum(truth.size(), 0), count(truth.size(), 0);
    for (const auto& [from, to, obs, errors] : lines) {
      const Vector line = at[to] - at[from];
      const double turn =
          std::remainder(std::arg(line) / kDegree - obs[0] - Orientation(from), 360);
      v.push_back({turn / errors[0], (std::abs(line) - obs[1]) / errors[1]});
      sum[from] += v.back()[0];
      ++count[from];
    }
    for (std::size_t k = 0; k < v.size(); ++k) v[k][0] -= sum[lines[k].from] / count[lines[k].from];
    return v;
  }
  double Pvv(const Positions& at) const {
    double sum = 0;
    for (const auto& [direction, distance] : Residuals(at)) {
      sum += direction * direction + distance * distance;
    }
    return sum;
  }

  // What an error of each observation as large as its standard error does to the positions.
  std::vector<Positions> Changes() const {
    std::vector<Positions> changes;
    for (std::size_t k = 0; k < 2 * lines.size(); ++k) {
      Network changed = *this;
      double& obs = changed.lines[k / 2].obs[k % 2];
      Job more, less;
      obs += lines[k / 2].errors[k % 2];
      Positions change = changed.Adjust(more);
      obs -= 2 * lines[k / 2].errors[k % 2];
      const Positions opposite = changed.Adjust(less);
      for (std::size_t i = 0; i < change.size(); ++i) change[i] = (change[i] - opposite[i]) / 2.0;
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
      const Vector turned = (change[to] - change[from]) * std::polar(1.0, -azimuth);
      along = std::hypot(along, turned.real());
      across = std::hypot(across, turned.imag());
      common += turned.real() * turned.imag();
    }
  }
};

// With the packed and, from 21 points on, with the sparse normal matrix.
TEST(GeneratedNetwork, IsAdjustedAsItsMeaningSays) {
  for (const std::size_t pointCount : {12u, 24u}) {
    SCOPED_TRACE(pointCount);
    const Network net(pointCount);
    Job job;
    const Positions adjusted = net.Adjust(job);
    const std::size_t unknowns = 2 * (pointCount - Network::kControl) + pointCount;
    const double m0 =
        std::sqrt(net.Pvv(adjusted) / static_cast<double>(2 * net.lines.size() - unknowns));
    const std::vector<Positions> changes = net.Changes();

    for (std::size_t i = Network::kControl; i < pointCount; ++i) {
      for (const Vector axis : {Vector(0.001, 0), Vector(0, 0.001)}) {
        const auto pvvAt = [&](double steps) {
          Positions moved = adjusted;
          moved[i] += steps * axis;
          return net.Pvv(moved);
        };
        // The lowest point of the parabola.
        EXPECT_NEAR((pvvAt(-1) - pvvAt(1)) / (pvvAt(-1) - 2 * pvvAt(0) + pvvAt(1)), 0, 2e-3);
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
      EXPECT_NEAR(Read(GetDirAngleResult, job, station, target).residual, v[k][0] * 2.5, 1e-3);
      EXPECT_NEAR(Read(GetLengthResult, job, station, target).residual, v[k][1] * errors[1], 1e-6);
      if (to < Network::kControl) continue;
      const Vector polar = adjusted[to] - adjusted[from];
      const Spread spread(changes, from, to, std::arg(polar));
      const LineResult line = ReadLine(job, station, target).value();
      EXPECT_NEAR(line.length, std::abs(polar), 1e-6);
      EXPECT_NEAR(line.lengthError / (m0 * spread.along), 1, 1e-3);
      EXPECT_NEAR(line.azimuthError / 3600 * kDegree * line.length / (m0 * spread.across), 1, 1e-3);
    }
  }
}

}  // namespace
}  // namespace brenu::testing
