// Surveys of known truth by the rules of textbooks: what instruments set up anywhere bring home.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <functional>
#include <string>
#include <vector>

#include "bench/grid_network.h"
#include "brenu/brenu.hpp"

namespace brenu::testing {
namespace {

using Vector = std::complex<double>;  // X + iY: its argument is an azimuth
using Numbers = std::vector<int>;

constexpr double kDirectionError = 3.0;   // arc-seconds
constexpr double kDistanceError = 0.003;  // metres

std::string NameOf(int point) { return std::string("P").append(std::to_string(point)); }

// Points in the order of their indices, and what was measured with these errors.
struct Survey {
  struct Sight {
    int station, target;
    double reading, distance;  // radians; negative and 0 for none
  };
  std::vector<Vector> truth;
  std::vector<double> circles;  // readings to the north
  std::vector<Sight> sights;
  int known = 0;  // these come first
  Noise noise;

  explicit Survey(int seed) {
    for (int i = 0; i < 50 * seed; ++i) noise.Uniform();
  }

  // Around (5000, 8000).
  void Add(double x, double y) {
    truth.emplace_back(5000 + x, 8000 + y);
    circles.push_back(6.2 * noise.Uniform());
  }
  void Measure(int station, int target, bool direction, bool distance) {
    const Vector line = At(target) - At(station);
    Sight s = {station, target, -1, 0};
    if (direction) {
      const double noisy = noise.Normal() * kDirectionError / 206264.8;
      s.reading =
          std::fmod(std::arg(line) + At(circles, station) + noisy + 8 * kHalfTurn, 2 * kHalfTurn);
    }
    if (distance) s.distance = std::abs(line) + noise.Normal() * kDistanceError;
    sights.push_back(s);
  }
  // From the stations to all points that near.
  void MeasureAround(const Numbers& stations, double reach, bool direction, bool distance) {
    for (const int a : stations) {
      for (int b = 0; b < Size(); ++b) {
        if (a != b && std::abs(At(b) - At(a)) < reach) Measure(a, b, direction, distance);
      }
    }
  }

  int Size() const { return static_cast<int>(truth.size()); }
  Vector At(int point) const { return truth[static_cast<std::size_t>(point)]; }
  static double At(const std::vector<double>& values, int point) {
    return values[static_cast<std::size_t>(point)];
  }
  Numbers All() const {
    Numbers all(truth.size());
    std::iota(all.begin(), all.end(), 0);
    return all;
  }

  Context Job(int format = 0) const {
    Context job;
    job.SetParam(Errors(kDirectionError, kDistanceError, 0, format));
    for (int i = 0; i < Size(); ++i) {
      const bool isKnown = i < known;
      job.Add(i, brenu::MakePoint(NameOf(i), isKnown ? 10 : 0, isKnown ? At(i).real() : 0,
                                  isKnown ? At(i).imag() : 0));
    }
    for (const Sight& s : sights) {
      const double dms = s.reading < 0 ? -1 : PackedDegrees(s.reading);
      job.Add(s.station, NameOf(s.target), ObsData{s.distance, dms, 0, -1});
    }
    return job;
  }
};

// A square of points with this step, slightly out of place.
void AddSquare(Survey& survey, int side, double step, double disorder) {
  for (int i = 0; i < side * side; ++i) {
    survey.Add(i % side * step + disorder * survey.noise.Uniform(),
               i / side * step + disorder * survey.noise.Uniform());
  }
}

// Nine instruments anywhere among 25 points, four of which are known.
Survey FreeStations(int seed) {
  Survey survey(seed);
  survey.known = 4;
  for (const auto& [x, y] : {std::pair(-30, -30), {280, -20}, {-20, 270}, {260, 290}})
    survey.Add(x, y);
  AddSquare(survey, 5, 60, 30);
  Numbers stations;
  for (int i = 0; i < 9; ++i) {
    stations.push_back(survey.Size());
    survey.Add(i % 3 * 100 + 70 * survey.noise.Uniform(),
               i / 3 * 100 + 70 * survey.noise.Uniform());
  }
  survey.MeasureAround(stations, 170, true, true);
  return survey;
}

// Between two known points, none of which sees another.
Survey TiedTraverse(int seed) {
  Survey survey(seed);
  survey.known = 2;
  survey.Add(0, 0);
  survey.Add(1000, 90);
  for (int i = 1; i < 9; ++i) survey.Add(i * 110, 80 * survey.noise.Uniform());
  for (int i = 1; i <= 9; ++i) {
    const int from = i == 1 ? 0 : i;
    const int to = i == 9 ? 1 : i + 1;
    survey.Measure(from, to, true, true);
    survey.Measure(to, from, true, true);
  }
  return survey;
}

// Four points that were occupied and never sighted, by directions to seven known ones.
Survey Resections(int seed) {
  Survey survey(seed);
  survey.known = 7;
  for (int i = 0; i < 7; ++i) {
    const Vector place = std::polar(900.0 + 300 * survey.noise.Uniform(), 0.9 * i);
    survey.Add(place.real(), place.imag());
  }
  for (int i = 0; i < 4; ++i)
    survey.Add(500 * survey.noise.Uniform(), 500 * survey.noise.Uniform());
  for (int i = 7; i < 11; ++i) {
    for (int k = 0; k < 7; ++k) survey.Measure(i, k, true, false);
  }
  return survey;
}

Survey Distances(int seed) {
  Survey survey(seed);
  survey.known = 3;
  AddSquare(survey, 4, 100, 40);
  survey.MeasureAround(survey.All(), 240, false, true);
  return survey;
}

// Circles at grid north on a square in the directions of the grid: readings around 0 and 360
// degrees.
Survey GridNorth(int seed) {
  Survey survey(seed);
  survey.known = 2;
  AddSquare(survey, 4, 100, 0.001);
  for (double& circle : survey.circles) circle = 0;
  survey.MeasureAround(survey.All(), 150, true, true);
  return survey;
}

// Carried from one corner over twenty rows.
Survey FromOneCorner(int seed) {
  Survey survey(seed);
  survey.known = 2;
  AddSquare(survey, 20, 100, 30);
  survey.MeasureAround(survey.All(), 145, true, true);
  return survey;
}

struct Scores {
  double sum = 0.0;  // of the squares of errors by their a-priori standard errors
  int count = 0;
};

// Compares all new points with the truth.
void Score(const Survey& survey, const Context& job, Scores& scores) {
  const double m0 = job.Figures(BRENU_PLANE).value().m0;
  for (int i = survey.known; i < survey.Size(); ++i) {
    const auto p = job.Plane(i);
    ASSERT_TRUE(p) << NameOf(i);
    for (const double z :
         {(p->x - survey.At(i).real()) / p->mx, (p->y - survey.At(i).imag()) / p->my}) {
      ASSERT_LT(std::fabs(z), 6) << NameOf(i);
      scores.sum += z * z * m0 * m0;
      ++scores.count;
    }
  }
}

TEST(GeneratedSurveys, ReachTheTruth) {
  struct {
    const char* what;
    Survey (*make)(int);
    int format, runs;
  } const kinds[] = {
      {"free stations", FreeStations, 0, 12},  {"tied traverse", TiedTraverse, 0, 25},
      {"resections", Resections, 0, 25},       {"distances", Distances, 0, 15},
      {"format 3", Distances, 3, 15},          {"grid north", GridNorth, 0, 15},
      {"from one corner", FromOneCorner, 0, 2}};
  for (const auto& kind : kinds) {
    Scores scores;
    for (int seed = 0; seed < kind.runs; ++seed) {
      SCOPED_TRACE(std::string(kind.what) + " " + std::to_string(seed));
      const Survey survey = kind.make(seed);
      Context job = survey.Job(kind.format);
      job.Adjust();
      EXPECT_TRUE(job.Findings().empty()) << job.Findings()[0].sentence;
      Score(survey, job, scores);
      if (HasFatalFailure()) return;
    }
    EXPECT_NEAR(std::sqrt(scores.sum / scores.count), 1.0, 0.2) << kind.what;
  }
}

// Two in a hundred observations are off by minutes to degrees, or decimetres to metres.
TEST(GeneratedSurveys, GrossErrorsAreFound) {
  for (int seed = 0; seed < 12; ++seed) {
    SCOPED_TRACE(seed);
    Survey survey = FreeStations(seed);
    std::vector<std::pair<std::string, double>> wrong;  // station and target; radians or metres
    for (auto i = static_cast<std::size_t>(11 + seed % 7); i < survey.sights.size(); i += 50) {
      Survey::Sight& s = survey.sights[i];
      const bool isDistance = wrong.size() % 2 == 0;
      const double size = std::pow(10.0, -0.6 + survey.noise.Uniform());  // 0.25 to 2.5
      wrong.emplace_back(NameOf(s.station) + NameOf(s.target), isDistance ? size : size / 60);
      (isDistance ? s.distance : s.reading) += wrong.back().second;
      s.reading = std::fmod(s.reading, 2 * kHalfTurn);
    }
    Context job = survey.Job();
    job.Snoop(0.0001);
    const std::vector<TakenOut> all = job.AllTakenOut();
    EXPECT_LE(all.size(), wrong.size() + 1);
    for (const auto& [line, size] : wrong) {
      const auto found = std::find_if(all.begin(), all.end(), [&line = line](const TakenOut& out) {
        return out.observation.station + out.observation.target == line;
      });
      ASSERT_NE(found, all.end()) << line;
      const bool isDistance = found->observation.kind == BRENU_DISTANCE;
      EXPECT_NEAR(found->error / (isDistance ? 1 : 206264.8), size, isDistance ? 0.02 : 2e-4)
          << line;
    }
    Scores scores;
    Score(survey, job, scores);
  }
}

// The largest slip leaves no adjustment to converge.
TEST(GeneratedSurveys, WrongControlIsNamed) {
  for (const double slip : {-10.0, 100.0, 1000.0}) {
    const Survey survey = FreeStations(3);
    Context job = survey.Job();
    PointData point = job.Point(2).value();
    point.y += slip;
    job.Set(2, point);
    const brenu_options options = {BRENU_TEXTBOOK, BRENU_W_TEST, 0, 0, 0};
    EXPECT_EQ(brenu_adjust(job.Get(), &options), slip < 1000);
    const Finding misfit = job.Findings().back();
    EXPECT_EQ(misfit.id, "control-does-not-fit");
    EXPECT_EQ(misfit.names, (std::vector<std::string>{"P2", "Y"}));
    EXPECT_NEAR(misfit.values.at(0), -slip, 0.02);
    if (slip == 1000) continue;
    EXPECT_NEAR(job.ControlFit(2).value().y, -slip, 0.02);
  }
}

// One point is seen once, two hang together by a distance, one has a height difference only.
TEST(GeneratedSurveys, WhatIsNotDeterminedIsLeftOut) {
  Survey survey = FreeStations(1);
  const int first = survey.Size();
  for (int i = 0; i < 4; ++i) survey.Add(600 + 40 * i, 300);
  survey.Measure(first - 1, first, true, false);
  survey.Measure(first + 1, first + 2, false, true);
  Context job = survey.Job();
  job.Add(5, NameOf(first + 3), ObsData{0, -1, 1.5, -1});
  job.Adjust();
  std::string told;
  for (const Finding& f : job.Findings()) {
    told += f.id;
    for (const std::string& name : f.names) told += ' ' + name;
    for (const double value : f.values) told += ' ' + std::to_string(std::lround(value));
    told += "; ";
  }
  const std::string a = NameOf(first), b = NameOf(first + 1), c = NameOf(first + 2),
                    d = NameOf(first + 3);
  EXPECT_EQ(told, "point-left-out " + a + " 1 0; group-left-out " + b + ' ' + c + " 0 0; " +
                      "point-left-out " + d + " 0 0; ");
  EXPECT_EQ(job.Figures(BRENU_PLANE).value().leftOut, 4);
  EXPECT_FALSE(job.Plane(first));
  Scores scores;
  survey.truth.resize(static_cast<std::size_t>(first));
  Score(survey, job, scores);
}

}  // namespace
}  // namespace brenu::testing
