// Memory ends at every single allocation of a small but complete job: each call reports it, and
// once there is memory again the job goes on to the same results.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <iterator>
#include <new>
#include <string>

#include "brenu/brenu.h"
#include "support/job.h"
#include "support/temp_file.h"

namespace {

// Counts down while armed; the allocation at 0 fails.
bool armed = false;
bool failed = false;
long countdown = 0;
std::atomic<long> blocks = 0;  // not freed yet; other tests have threads

void Release(void* block) {
  if (block != nullptr) --blocks;
  std::free(block);
}

}  // namespace

void* operator new(std::size_t size) {
  if (armed && countdown-- == 0) {
    failed = true;
    throw std::bad_alloc();
  }
  void* const block = std::malloc(size);
  if (block == nullptr) throw std::bad_alloc();
  ++blocks;
  return block;
}
// Algorithms ask this one for memory that they can do without.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  void* const block = std::malloc(size);
  if (block != nullptr) ++blocks;
  return block;
}
void operator delete(void* block) noexcept { Release(block); }
void operator delete(void* block, std::size_t) noexcept { Release(block); }

namespace brenu::testing {
namespace {

// Longer than strings hold without memory of their own.
constexpr const char* kNames[] = {"the first control point", "the second control point",
                                  "the first of the new points", "the second of the new points"};
const char* input;
const char* project;
const char* report;
const char* closures;
const char* scratch;

bool Add(AdjustmentContext* job, int i, int type, double x, double y, double h) {
  return AddPoint(job, i, MakePoint(kNames[i], type, x, y, h)) == i;
}
bool Obs(AdjustmentContext* job, int from, int to, ObsData obs) {
  return AddObsData(job, from, kNames[to], obs) == from;
}

// The steps take no memory themselves.  Each can be repeated after it has failed.
using Step = bool (*)(AdjustmentContext*);
constexpr Step kSteps[] = {
    [](AdjustmentContext* job) {
      SetAdjParam(job, {2.5, 0.005, 5e-6, 4, 20, 4, 5, 3, 0});
      return Add(job, 0, 11, 1000, 1000, 10);
    },
    [](AdjustmentContext* job) { return Add(job, 1, 11, 1000, 1400, 12); },
    [](AdjustmentContext* job) { return Add(job, 2, 0, 0, 0, 0); },
    [](AdjustmentContext* job) { return Add(job, 3, 0, 0, 0, 0); },
    [](AdjustmentContext* job) {
      return Obs(job, 0, 1, {400, 0, 2.001, -1});
    },
    [](AdjustmentContext* job) {
      return Obs(job, 0, 2, {300, 270, 1.0, -1});
    },
    [](AdjustmentContext* job) {
      return Obs(job, 1, 0, {0, 0, 0, -1});
    },
    [](AdjustmentContext* job) {
      return Obs(job, 1, 2, {500, 36.5212, -1.0, -1});
    },
    [](AdjustmentContext* job) {
      return Obs(job, 2, 3, {400, 90, 1.002, -1});
    },
    [](AdjustmentContext* job) {
      return Obs(job, 2, 0, {0, 180.00003, 0, -1});
    },
    [](AdjustmentContext* job) {
      for (const int target : {1, 2}) DeleteObsData(job, 3, kNames[target]);
      return AddObsData2(job, 3, kNames[1], kNames[2], {300, 0, -0.001, -1}, {400, 90, 0, -1}, 0) ==
             1;
    },
    [](AdjustmentContext* job) {
      DeleteObsData(job, 3, kNames[0]);
      return AddObsData2(job, 3, kNames[1], kNames[0], {0, 10, 0, -1}, {0, 63.0748, 0, -1}, 1) == 1;
    },
    [](AdjustmentContext* job) {
      return SetPoint(job, 3, MakePoint("another name of that point")) == 3 &&
             GetObsDataCount(job, 3) == 3;
    },
    [](AdjustmentContext* job) { return SetPoint(job, 3, MakePoint(kNames[3])) == 3; },
    [](AdjustmentContext* job) {
      if (GetPointNum(job, "to be deleted, from an index in between") < 0 &&
          AddPoint(job, 9, MakePoint("to be deleted, from an index in between")) != 9) {
        return false;
      }
      return DeletePoint(job, 9) == 9;
    },
    [](AdjustmentContext* job) { return ApproxCalc(job); },
    [](AdjustmentContext* job) { return CalculateCloseError(job); },
    [](AdjustmentContext* job) { return ExportCloseErrorFile(job, closures); },
    [](AdjustmentContext* job) { return DataSnooping(job, 3, 0.001, 0.001) == 1; },
    [](AdjustmentContext* job) { return LeastSquareAdj(job); },
    [](AdjustmentContext* job) { return ExportResultFile(job, report); },
    [](AdjustmentContext* job) { return SaveBrenuAdjustFile(job, project) == 1; },
    [](AdjustmentContext*) {
      AdjustmentContext* const other = StartAdjustment();
      const bool read = OpenBrenuAdjustFile(other, input);
      EndAdjustment(other);
      return read;
    },
    [](AdjustmentContext* job) {
      AdjParam param = GetAdjParam(job);
      param.format = 3;
      SetAdjParam(job, param);
      CircleRecord first;
      CircleRecord second;
      char text[255] = {};
      std::uint32_t remaining = 0;
      if (!JudgeTrilateration(job) || !InitializeDataTrilateration(job)) return false;
      for (const char* name : {kNames[2], kNames[3]}) {
        std::string_view(name).copy(text, sizeof text);
        text[std::string_view(name).size()] = '\0';
        if (GetTrilaterationDirection(job, &first, &second, text) != 1) return false;
        CalcTrilaterationpPoint(job, 1, first, second, name, &remaining);
      }
      return remaining == 0 && TrilaterationDirection(job);
    },
    [](AdjustmentContext* job) { return LeastSquareAdj(job); },
};

// Uses whatever a failure has left: nothing may be read beyond its end.
void ReadResults(AdjustmentContext* job) {
  for (int i = 0; i < 4; ++i) {
    PointData point;
    PlaneResult plane;
    VerticalResult height;
    double d[4];
    std::int32_t n = 0;
    if (GetPoint(job, i, &point) != i) continue;
    EXPECT_EQ(GetPointNum(job, point.name), i);
    GetApproxResult(job, i, &point);
    GetPlaneResult(job, i, &plane);
    GetVerticalResult(job, i, &height);
    for (const char* target : kNames) {
      GetDirAngleResult(job, i, target, d, d + 1, d + 2);
      GetLengthResult(job, i, target, d, d + 1, d + 2);
      GetAzAndLenPrecision(job, i, target, d, d + 1, d + 2, d + 3, &n);
      GetHeightObsResult(job, i, target, d, d + 1, d + 2, d + 3);
    }
  }
  ExportResultFile(job, scratch);
}

AdjustmentContext* Start() {
  armed = true;
  AdjustmentContext* const job = StartAdjustment();
  armed = false;
  return job;
}

TEST(AllocationFailure, IsReportedAndForgotten) {
  const TempFile files[] = {TempFile("[PT]\na name that needs memory,11,1,1,1\nB,00,,,\n\n[OBS]\n"
                                     "a name that needs memory,B,0.0,5.0,1.0,\n"),
                            TempFile(), TempFile(), TempFile(), TempFile()};
  input = files[0].Path();
  project = files[1].Path();
  report = files[2].Path();
  closures = files[3].Path();
  scratch = files[4].Path();
  std::string expected[3];
  // The first job has all the memory it wants; then job n fails at allocation n.
  bool more = true;
  for (long n = -1; more; ++n) {
    countdown = n;
    failed = false;
    const long before = blocks;
    AdjustmentContext* job = Start();
    EXPECT_EQ(job == nullptr, failed);
    if (job == nullptr) job = Start();
    for (const Step& step : kSteps) {
      const bool earlier = failed;
      armed = true;
      const bool done = step(job);
      armed = false;
      ASSERT_EQ(done, earlier || !failed) << "step " << &step - kSteps << ", allocation " << n;
      if (done) continue;
      ReadResults(job);
      ASSERT_TRUE(step(job)) << "step " << &step - kSteps << ", allocation " << n;
    }
    EndAdjustment(job);
    ASSERT_EQ(blocks, before) << "allocation " << n;
    for (int i = 0; i < 3; ++i) {
      if (n < 0) expected[i] = files[i + 1].Text();
      ASSERT_EQ(files[i + 1].Text(), expected[i]) << "allocation " << n;
    }
    more = n < 0 || failed;
  }
}

}  // namespace
}  // namespace brenu::testing
