// A context for a test, with short ways to fill it and to read from it.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "brenu/brenu.h"

namespace brenu::testing {

// That numbers agree in pairs.
inline ::testing::AssertionResult Near(const std::vector<double>& actual,
                                       const std::vector<double>& expected, double tolerance) {
  if (actual.size() != expected.size()) return ::testing::AssertionFailure() << "other count";
  for (std::size_t i = 0; i < actual.size(); ++i) {
    if (std::fabs(actual[i] - expected[i]) <= tolerance) continue;
    return ::testing::AssertionFailure()
           << "number " << i << " is " << actual[i] << ", not " << expected[i];
  }
  return ::testing::AssertionSuccess();
}

// Copies at most the 128 bytes of the field, without a NUL when the name fills it.
inline PointData MakePoint(std::string_view name, std::int32_t type = 0, double x = 0.0,
                           double y = 0.0, double h = 0.0) {
  PointData point{{}, type, 0, x, y, h};
  name.copy(point.name, sizeof(point.name));
  return point;
}

inline ObsData Levelled(double length, double heightDiff) {
  return {length, -1.0, heightDiff, -1.0};
}
inline ObsData Direction(double dms, double distance = 0.0) { return {distance, dms, 0.0, -1.0}; }
inline ObsData Distance(double metres) { return {metres, -1.0, 0.0, -1.0}; }
inline constexpr ObsData kNothing = {0.0, -1.0, 0.0, -1.0};
inline ObsData Azimuth(double dms) { return {0.0, -1.0, 0.0, dms}; }

// Parameters with the standard errors given (arc-seconds, metres, metres a metre).
inline AdjParam Errors(double direction, double constant, double proportional = 0.0,
                       std::int32_t format = 0) {
  return {direction, constant, proportional, 4, 20, 4, 5, 3, format};
}

// A record as the bytes that cross the interface.
template <typename Record>
std::string Bytes(const Record& record) {
  return {reinterpret_cast<const char*>(&record), sizeof record};
}

// Owns a context; converts to it, so that it stands wherever a context is asked for.
class Job {
 public:
  struct NewPoint {
    std::string name;
    std::int32_t type = 0;
    double x = 0.0, y = 0.0, h = 0.0;
  };
  struct NewSight {
    std::string target;
    ObsData obs;
  };
  // A page of a field book: what was observed at one station.
  struct Page {
    std::string station;
    std::vector<NewSight> sights;
  };

  explicit Job(const std::vector<NewPoint>& points = {}, const std::vector<Page>& pages = {},
               const std::optional<AdjParam>& param = {})
      : m_context(StartAdjustment(), &EndAdjustment) {
    for (const NewPoint& p : points) Add(p.name, p.type, p.x, p.y, p.h);
    ObserveAll(pages);
    if (param) SetAdjParam(*this, *param);
  }
  operator AdjustmentContext*() const { return m_context.get(); }

  // Adds a point under the next index, which it returns (-1 when refused).
  std::int32_t Add(const std::string& name, std::int32_t type = 0, double x = 0.0, double y = 0.0,
                   double h = 0.0) {
    return AddPoint(*this, static_cast<std::int32_t>(GetPointCount(*this)),
                    MakePoint(name, type, x, y, h));
  }
  std::int32_t Observe(const std::string& station, const std::string& target, ObsData obs) {
    return AddObsData(*this, Index(station), target.c_str(), obs);
  }
  void ObserveAll(const std::vector<Page>& pages) {
    for (const auto& [station, sights] : pages) {
      for (const auto& [target, obs] : sights) Observe(station, target, obs);
    }
  }
  // Puts other values into a point or an observation that is stored.
  void Change(const std::string& name, std::int32_t type, double x = 0.0, double y = 0.0,
              double h = 0.0) const {
    EXPECT_NE(SetPoint(*this, Index(name), MakePoint(name, type, x, y, h)), -1);
  }
  void Change(const std::string& station, const std::string& target, ObsData obs) const {
    EXPECT_NE(SetObsData(*this, Index(station), target.c_str(), obs), -1);
  }
  std::int32_t Index(const std::string& name) const { return GetPointNum(*this, name.c_str()); }
  // The name stored under an index; "none" when there is no point.
  std::string NameAt(std::int32_t index) const {
    PointData point{};
    return GetPoint(*this, index, &point) == index ? point.name : "none";
  }

 private:
  std::unique_ptr<AdjustmentContext, void (*)(AdjustmentContext*)> m_context;
};

// What one of the three getters of plane observations gives; a test failure when it gives nothing.
struct ObsResult {
  double residual, adjusted, apriori;
};
using ObsGetter = bool (*)(AdjustmentContext*, std::int32_t, const char*, double*, double*,
                           double*);
inline ObsResult Read(ObsGetter getter, const Job& job, const std::string& station,
                      const std::string& target) {
  ObsResult r{};
  EXPECT_TRUE(getter(job, job.Index(station), target.c_str(), &r.residual, &r.adjusted, &r.apriori))
      << station << " - " << target;
  return r;
}

// Azimuth and length of a line with their precision; nothing when they are refused.
struct LineResult {
  double azimuth, azimuthError, length, lengthError;
  std::int32_t relative;
};
inline std::optional<LineResult> ReadLine(const Job& job, const std::string& station,
                                          const std::string& target) {
  LineResult r{};
  const bool found = GetAzAndLenPrecision(job, job.Index(station), target.c_str(), &r.azimuth,
                                          &r.azimuthError, &r.length, &r.lengthError, &r.relative);
  return found ? std::optional(r) : std::nullopt;
}

inline PlaneResult ReadPlane(const Job& job, const std::string& name) {
  PlaneResult r{};
  EXPECT_TRUE(GetPlaneResult(job, job.Index(name), &r)) << name;
  return r;
}

inline VerticalResult ReadHeight(const Job& job, const std::string& name) {
  VerticalResult r{};
  EXPECT_TRUE(GetVerticalResult(job, job.Index(name), &r)) << name;
  return r;
}

struct HeightObs {
  double residual, adjusted, sigma, weight;
};
inline std::optional<HeightObs> ReadHeightObs(const Job& job, const std::string& station,
                                              const std::string& target) {
  HeightObs r{};
  const bool found = GetHeightObsResult(job, job.Index(station), target.c_str(), &r.residual,
                                        &r.adjusted, &r.sigma, &r.weight);
  return found ? std::optional(r) : std::nullopt;
}

// The approximate position of a point, wherever it stands in the network.
inline PointData ReadApproximate(const Job& job, const std::string& name) {
  PointData point{};
  for (std::int32_t i = 0; GetApproxResult(job, i, &point); ++i) {
    if (point.name == name) return point;
  }
  ADD_FAILURE() << "no " << name;
  return {};
}

// An observation as it is stored.
inline ObsData Stored(const Job& job, const std::string& station, const std::string& target) {
  ObsData obs{};
  EXPECT_NE(GetObsData(job, job.Index(station), target.c_str(), &obs), -1) << station << target;
  return obs;
}

// The closures after a computation.
inline std::vector<CloseError> Closures(const Job& job) {
  EXPECT_TRUE(CalculateCloseError(job));
  std::vector<CloseError> records(static_cast<std::size_t>(GetCloseErrorCount(job)));
  for (std::size_t i = 0; i < records.size(); ++i) {
    EXPECT_TRUE(GetCloseError(job, static_cast<std::int32_t>(i), &records[i]));
  }
  return records;
}
using Strings = std::vector<std::string>;
inline Strings Routes(const std::vector<CloseError>& records) {
  Strings routes;
  for (const CloseError& record : records) routes.emplace_back(record.route);
  return routes;
}

}  // namespace brenu::testing
