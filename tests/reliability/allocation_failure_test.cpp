// Memory ends at every single allocation of a small but complete job, and of the computations of a
// network large enough for the sparse solver: each call reports it, and once there is memory again
// the job goes on to the same results.
#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <cstdlib>
#include <new>
#include <string>
#include <string_view>

#include "bench/grid_network.h"
#include "brenu/survey.h"
#include "core/normal_equations.h"
#include "fuzz/exercise.h"
#include "support/job.h"
#include "support/patterns.h"
#include "support/temp_file.h"

namespace {

// Counts down while armed; the allocation at 0 fails.
bool armed = false;
bool failed = false;
long countdown = 0;
std::atomic<long> blocks = 0;  // not freed yet; other tests have threads

void* Allocate(std::size_t size) {
  void* const block = std::malloc(size);
  if (block != nullptr) ++blocks;
  return block;
}
void Release(void* block) {
  if (block != nullptr) --blocks;
  std::free(block);
}

}  // namespace

void* operator new(std::size_t size) {
  const bool fails = armed && countdown-- == 0;
  failed = failed || fails;
  void* const block = fails ? nullptr : Allocate(size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}
// Algorithms ask this one for memory that they can do without.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void operator delete(void* block) noexcept { Release(block); }
void operator delete(void* block, std::size_t) noexcept { Release(block); }

namespace brenu::testing {
namespace {

// Names longer than strings hold without memory of their own.
constexpr const char* kNames[] = {"control point one", "control point two", "new point number one",
                                  "new point number two"};
constexpr const char* kAside = "to be deleted, from an index in between";
constexpr char kInput[] =
    "[PARAM]\nMO:2.5\nMS:0.005\nMR:0.000005\n\n"
    "[PT]\ncontrol point one,11,1000,1000,10\ncontrol point two,11,1000,1400,12\n"
    "new point number one,00,,,\nnew point number two,00,,,\n\n"
    "[OBS]\ncontrol point one,control point two,0,400,2.001,\n"
    "control point one,new point number one,270,300,1.0,\n"
    "control point two,control point one,0,,,\n"
    "control point two,new point number one,36.5212,500,-1.0,\n"
    "new point number one,new point number two,90,400,1.002,\n"
    "new point number one,control point one,180.00003,,,\n";

struct Paths {
  const char *project, *report, *closures, *scratch;
} paths;

// A step takes no memory itself, and can be repeated after it has failed: what was done stays done,
// what failed changed nothing.
using Step = bool (*)(AdjustmentContext*);

bool AddPairs(AdjustmentContext* job) {
  ObsData stored{};  // a refusal would take memory to say why, and be one without it, too
  for (const int target : {0, 1, 2}) {
    if (GetObsData(job, 3, kNames[target], &stored) == 3) DeleteObsData(job, 3, kNames[target]);
  }
  return AddObsData2(job, 3, kNames[1], kNames[2], {300, 0, -0.001, -1}, {400, 90, 0, -1}, 0) ==
             1 &&
         AddObsData2(job, 3, kNames[1], kNames[0], {0, 10, 0, -1}, {0, 63.0748, 0, -1}, 1) == 1;
}

bool Rename(AdjustmentContext* job) {
  return SetPoint(job, 3, MakePoint("another name of that point")) == 3 &&
         GetObsDataCount(job, 3) == 3 && SetPoint(job, 3, MakePoint(kNames[3])) == 3;
}

bool AddAndDelete(AdjustmentContext* job) {
  const bool isAdded = GetPointNum(job, kAside) == 9 || AddPoint(job, 9, MakePoint(kAside)) == 9;
  EXPECT_EQ(GetPointNum(job, kAside) == 9, isAdded);
  const bool isObserved =
      GetObsDataCount(job, 9) == 1 || AddObsData(job, 9, kNames[0], Distance(1)) == 9;
  EXPECT_EQ(GetObsDataCount(job, 9) == 1, isObserved);
  return isObserved && DeletePoint(job, 9) == 9;
}

bool Trilaterate(AdjustmentContext* job) {
  SetAdjParam(job, Errors(2.5, 0.005, 0.000005, 3));
  if (!JudgeTrilateration(job) || !InitializeDataTrilateration(job)) return false;
  std::uint32_t remaining = 0;
  for (const char* name : {kNames[2], kNames[3]}) {
    CircleRecord first, second;
    char text[255] = {};
    std::string_view(name).copy(text, sizeof text - 1);
    if (GetTrilaterationDirection(job, &first, &second, text) != 1) return false;
    CalcTrilaterationpPoint(job, 1, first, second, name, &remaining);
  }
  return remaining == 0 && TrilaterationDirection(job);
}

bool Snoop(AdjustmentContext* job) {
  return DataSnooping(job, static_cast<std::uint32_t>(GetNetType(job)), 0.001, 0.001) == 1;
}

// A file with doubts, their text and the check of its data.
bool ReadAndTell(AdjustmentContext*) {
  constexpr std::string_view kText = "[PT]\na point of this long name,02,,,inf\n";
  AdjustmentContext* const job = StartAdjustment();
  char text[100];
  const bool told = brenu_read_memory(job, kText.data(), kText.size()) == BRENU_PROJECT_FILE &&
                    brenu_finding_text(job, 0, text, sizeof text) > 0;
  const bool done = told && !brenu_check_data(job) && brenu_finding_name(job, 0, 0, text, 3) > 0;
  EndAdjustment(job);
  return done;
}

bool SnoopAsTextbook(AdjustmentContext* job) {
  const brenu_options options = {BRENU_TEXTBOOK, BRENU_W_TEST, 0, 0, 0};
  brenu_taken_out out;
  return brenu_adjust(job, &options) &&
         brenu_get_taken_out(job, 0, &out) == (brenu_taken_out_count(job) > 0);
}

constexpr Step kSteps[] = {
    ReadAndTell,
    AddPairs,
    Rename,
    AddAndDelete,
    ApproxCalc,
    CalculateCloseError,
    [](AdjustmentContext* job) { return ExportCloseErrorFile(job, paths.closures); },
    SnoopAsTextbook,
    Snoop,
    LeastSquareAdj,
    [](AdjustmentContext* job) { return ExportResultFile(job, paths.report); },
    [](AdjustmentContext* job) { return SaveBrenuAdjustFile(job, paths.project) == 1; },
    Trilaterate,
    LeastSquareAdj};

// With memory ending once on the way the step fails, and then succeeds.
void Perform(Step step, AdjustmentContext* job) {
  const bool earlier = failed;
  armed = true;
  const bool done = step(job);
  armed = false;
  ASSERT_EQ(done, earlier || !failed);
  if (done) return;
  // Uses whatever the failure has left: nothing may be read beyond its end.
  fuzz::CheckStore(job);
  fuzz::ReadResults(job);
  ExportResultFile(job, paths.scratch);
  ASSERT_TRUE(step(job));
}

// Does the same again and again, first with all the memory it wants, then failing at allocation 0,
// 1, 2...; what it gives back must not change.
template <typename Attempt>
void FailEverywhere(Attempt attempt) {
  std::string expected;
  failed = true;
  for (long n = -1; failed; ++n) {
    SCOPED_TRACE(n);
    countdown = n;
    failed = n < 0;
    const long before = blocks;
    {
      const std::string written = attempt();
      if (n < 0) expected = written;
      ASSERT_EQ(written, expected);
    }
    ASSERT_TRUE(n < 0 || blocks == before);
    if (::testing::Test::HasFailure()) return;
  }
}

TEST(AllocationFailure, IsReportedAndForgotten) {
  const TempFile input(kInput), project, report, closures, scratch;
  paths = {project.Path(), report.Path(), closures.Path(), scratch.Path()};
  FailEverywhere([&] {
    AdjustmentContext* job = nullptr;
    bool isRead = false;
    for (int i = 0; i < 2 && !isRead; ++i) {
      EndAdjustment(job);
      armed = true;
      job = StartAdjustment();
      isRead = OpenBrenuAdjustFile(job, input.Path());
      armed = false;
      EXPECT_TRUE(isRead || failed);
      fuzz::CheckStore(job);
    }
    for (const Step step : kSteps) Perform(step, job);
    EndAdjustment(job);
    return project.Text() + report.Text() + closures.Text();
  });
}

// The computations of networks large enough for the sparse solver.
TEST(AllocationFailure, IsForgottenInLargeNetworks) {
  const TempFile report, scratch;
  paths = {nullptr, report.Path(), nullptr, scratch.Path()};
  for (const auto& network : {GridNetwork(4, 6, PointOrder::kShuffled).Plane(),
                              GridNetwork(8, 8, PointOrder::kShuffled).Levelling()}) {
    const Job job;
    Enter(network, job);
    for (const Step step : {LeastSquareAdj, Snoop, SnoopAsTextbook}) {
      FailEverywhere([&] {
        Perform(step, job);
        EXPECT_TRUE(ExportResultFile(job, paths.report));
        return report.Text();
      });
    }
  }
}

// Cofactors come from the whole inverse or are no numbers.
TEST(AllocationFailure, LeavesNoHalfInverse) {
  const UnknownPattern pattern = GridPattern(9, 9, 1);
  FailEverywhere([&] {
    NormalEquations normal(0);
    normal.SetPattern(pattern);
    normal.Reset();
    for (const auto& [a, b] : pattern.connections) {
      const Term equation[] = {{a, -1.0}, {b, 1.0}};
      normal.Add(equation, 1.0, 0.0);
    }
    normal.Hold(0, 1.0);
    EXPECT_TRUE(normal.Solve());
    bool ended = false;
    armed = true;
    try {
      normal.Cofactor(0, 1);
    } catch (const std::bad_alloc&) {
      ended = true;
    }
    armed = false;
    EXPECT_EQ(std::isnan(normal.Cofactor(0, 1)), ended);
    return std::string();
  });
}

}  // namespace
}  // namespace brenu::testing
