// A network of 16 points with directions and distances, compared in all its results with an
// independent adjustment.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "support/job.h"
#include "support/least_squares.h"
#include "support/random.h"

namespace brenu::testing {
namespace {

constexpr long double kPi = 3.14159265358979323846L;
constexpr long double kRho = 648000 / kPi;
constexpr std::size_t kControl = 3;

long double Norm(long double angle) { return std::remainder(angle, 2 * kPi); }

// Packed sexagesimal notation of an angle in whole hundredths of arc-seconds.
double Packed(long long hundredths) {
  const long long degrees = hundredths / 360000;
  const long long minutes = hundredths / 6000 % 60;
  const long long rest = hundredths % 6000;
  return static_cast<double>(degrees * 1000000 + minutes * 10000 + rest) / 1e6;
}
long double Unpacked(double dms) {
  const long long units = std::llround(dms * 1e6);
  const long long degrees = units / 1000000;
  const long long minutes = units / 10000 % 100;
  const long long hundredths = degrees * 360000 + minutes * 6000 + units % 10000;
  return static_cast<long double>(hundredths) / (100 * kRho);
}

struct Obs {
  std::size_t from, to;
  bool isDirection;
  long double value, error;  // radians or metres
};

// Points on a disturbed grid, the first three known; every point sights its neighbours.  The
// orientations stay away from the full circle.
struct Network {
  Job job;
  std::vector<std::pair<long double, long double>> points;
  std::vector<Obs> observations;

  static std::string Name(std::size_t i) { return {static_cast<char>('A' + i)}; }
  // X of point i, Y one after it; orientations of the stations after all points.
  std::size_t Unknown(std::size_t i) const { return 2 * (i - kControl); }
  std::size_t Orientation(std::size_t i) const { return Unknown(points.size()) + i; }
  std::size_t UnknownCount() const { return Orientation(points.size()); }

  Network() {
    SetAdjParam(job, Errors(2.5, 0.003, 2e-6));
    Random random(7);
    for (std::size_t i = 0; i < 16; ++i) {
      const std::size_t row = i / 4;
      const std::size_t column = i % 4;
      const double x = static_cast<double>(row) * 400 + random.Uniform(-60, 60);
      const double y = static_cast<double>(column) * 400 + random.Uniform(-60, 60);
      points.emplace_back(x, y);
      const bool known = i < kControl;
      job.Add(Name(i), known ? 10 : 0, known ? x : 0, known ? y : 0);
    }
    for (std::size_t i = 0; i < points.size(); ++i) {
      for (std::size_t k = 0; k < points.size(); ++k) Sight(random, i, k);
    }
  }

  void Sight(Random& random, std::size_t i, std::size_t k) {
    const Line line = Between(i, k);
    if (i == k || line.length > 650) return;
    const long double seconds = (line.azimuth + 2 * kPi - ZeroOf(i)) * kRho + random.Uniform(-4, 4);
    const double reading = Packed(std::llround(seconds * 100) % 129600000);
    const auto distance = static_cast<double>(line.length) + random.Uniform(-0.007, 0.007);
    job.Observe(Name(i), Name(k), Direction(reading, i < k ? distance : 0.0));
    observations.push_back({i, k, true, Unpacked(reading), 2.5});
    if (i < k) observations.push_back({i, k, false, distance, 0.003 + 2e-6 * distance});
  }

  struct Line {
    long double dx, dy, length, azimuth;
  };
  Line Between(std::size_t from, std::size_t to) const {
    const long double dx = points[to].first - points[from].first;
    const long double dy = points[to].second - points[from].second;
    return {dx, dy, std::hypot(dx, dy), std::atan2(dy, dx)};
  }
  // The azimuth of the zero of a circle.
  static long double ZeroOf(std::size_t station) {
    return (40 + 20 * static_cast<long double>(station)) * 3600 / kRho;
  }

  // Derivatives of azimuth (arc-seconds) or length by the unknowns.
  Vector Gradient(std::size_t from, std::size_t to, bool azimuth) const {
    const auto [dx, dy, s, direction] = Between(from, to);
    const long double gx = azimuth ? -dy / (s * s) * kRho : dx / s;
    const long double gy = azimuth ? dx / (s * s) * kRho : dy / s;
    Vector gradient(UnknownCount());
    const auto add = [&](std::size_t point, long double sign) {
      if (point < kControl) return;
      gradient[Unknown(point)] = sign * gx;
      gradient[Unknown(point) + 1] = sign * gy;
    };
    add(from, -1);
    add(to, 1);
    return gradient;
  }

  // One pass from the present points; moves them and gives the residuals by observation.
  LeastSquares Adjust(Vector& residuals) {
    std::vector<Vector> columns(UnknownCount(), Vector(observations.size()));
    Vector l;
    for (const Obs& o : observations) {
      Vector row = Gradient(o.from, o.to, o.isDirection);
      if (o.isDirection) row[Orientation(o.from)] = -1;
      for (std::size_t j = 0; j < row.size(); ++j) columns[j][l.size()] = row[j] / o.error;
      const Line line = Between(o.from, o.to);
      const long double misfit = o.isDirection
                                     ? Norm(line.azimuth - o.value - ZeroOf(o.from)) * kRho
                                     : line.length - o.value;
      l.push_back(misfit / o.error);
    }
    LeastSquares solution(columns, l);
    residuals.clear();
    for (std::size_t k = 0; k < l.size(); ++k) {
      long double v = l[k];
      for (std::size_t j = 0; j < columns.size(); ++j) v += columns[j][k] * solution.x[j];
      residuals.push_back(v * observations[k].error);
    }
    for (std::size_t i = kControl; i < points.size(); ++i) {
      points[i].first += solution.x[Unknown(i)];
      points[i].second += solution.x[Unknown(i) + 1];
    }
    return solution;
  }
};

TEST(GeneratedNetwork, AgreesWithAnIndependentAdjustment) {
  Network net;
  ASSERT_TRUE(LeastSquareAdj(net.job));
  Vector residuals;
  net.Adjust(residuals);
  net.Adjust(residuals);
  const LeastSquares solution = net.Adjust(residuals);
  const auto redundancy = static_cast<double>(net.observations.size() - net.UnknownCount());
  const auto m0 = std::sqrt(static_cast<double>(solution.Pvv()) / redundancy);
  const auto covariance = [&](const Vector& f, const Vector& g) {
    return m0 * m0 * static_cast<double>(solution.Covariance(f, g));
  };

  for (std::size_t i = kControl; i < net.points.size(); ++i) {
    const PlaneResult p = ReadPlane(net.job, Network::Name(i));
    EXPECT_NEAR(p.x, static_cast<double>(net.points[i].first), 1e-6);
    EXPECT_NEAR(p.y, static_cast<double>(net.points[i].second), 1e-6);
    Vector x(net.UnknownCount());
    Vector y(net.UnknownCount());
    x[net.Unknown(i)] = 1;
    y[net.Unknown(i) + 1] = 1;
    const double xx = covariance(x, x);
    const double yy = covariance(y, y);
    const double xy = covariance(x, y);
    EXPECT_TRUE(Near({p.mx, p.my, p.mp}, {std::sqrt(xx), std::sqrt(yy), std::sqrt(xx + yy)}, 1e-7));
    // The ellipse from the direction of its major axis, tan 2t = 2 xy / (xx - yy): the variances
    // along and across it.
    const double t = 0.5 * std::atan2(2 * xy, xx - yy);
    const auto along = [&](double c, double s) {
      return std::sqrt(c * c * xx + s * s * yy + 2 * c * s * xy);
    };
    EXPECT_NEAR(p.e, along(std::cos(t), std::sin(t)), 1e-7);
    EXPECT_NEAR(p.f, along(-std::sin(t), std::cos(t)), 1e-7);
    EXPECT_GE(p.t, 0);
    EXPECT_LT(p.t, 180);
    const auto turn = static_cast<double>(Unpacked(p.t)) - t;
    EXPECT_NEAR(std::sin(turn), 0, 1e-4) << Network::Name(i);
  }

  for (std::size_t k = 0; k < net.observations.size(); ++k) {
    const Obs& o = net.observations[k];
    const ObsResult r = Read(o.isDirection ? GetDirAngleResult : GetLengthResult, net.job,
                             Network::Name(o.from), Network::Name(o.to));
    EXPECT_NEAR(r.residual, static_cast<double>(residuals[k]), o.isDirection ? 1e-3 : 1e-6);
    EXPECT_NEAR(r.apriori, static_cast<double>(o.error), 1e-12);
    if (!o.isDirection || o.to < kControl) continue;
    const auto line = ReadLine(net.job, Network::Name(o.from), Network::Name(o.to));
    ASSERT_TRUE(line);
    const Vector a = net.Gradient(o.from, o.to, true);
    const Vector s = net.Gradient(o.from, o.to, false);
    EXPECT_NEAR(line->azimuthError, std::sqrt(covariance(a, a)), 1e-4);
    EXPECT_NEAR(line->lengthError, std::sqrt(covariance(s, s)), 1e-7);
    EXPECT_NEAR(line->length, static_cast<double>(net.Between(o.from, o.to).length), 1e-6);
    EXPECT_EQ(line->relative, static_cast<int32_t>(line->length / line->lengthError));
  }
}

}  // namespace
}  // namespace brenu::testing
