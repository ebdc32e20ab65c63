// The C interface of jobs: what is stored, read, written and computed.  Every function checks its
// pointers, calls plain C++ and turns whatever goes wrong into its failure value.
#include <cstring>
#include <optional>
#include <utility>

#include "api/barrier.h"
#include "io/closure_report.h"
#include "io/project_file.h"
#include "io/read_file.h"
#include "io/result_report.h"
#include "job/closure_list.h"
#include "job/computations.h"
#include "job/network_build.h"
#include "job/trilateration_dialogue.h"

namespace {

using Context = AdjustmentContext;
using brenu::Guarded;
using brenu::Outcome;
using brenu::Reported;

// Up to the NUL, or the room.
std::size_t TextLength(const char* text, std::size_t room) {
  const void* end = std::memchr(text, '\0', room);
  return end == nullptr ? room : static_cast<std::size_t>(static_cast<const char*>(end) - text);
}

// Whether the file could be opened; that not all of it was written is a finding only.
template <typename Write>
bool Written(Context* context, const char* path, Write write) {
  bool opened = false;
  const auto report = [&]() -> Outcome {
    const brenu::Replaced written = write();
    opened = written != brenu::Replaced::kNotOpened;
    if (written != brenu::Replaced::kDone) return brenu::Error(BRENU_FILE_NOT_WRITTEN, {path});
    return {};
  };
  Reported(context, report, path);
  return opened;
}

}  // namespace

extern "C" {

// ---- Life of a context, parameters ----

Context* StartAdjustment(void) {
  return Guarded<Context*>(nullptr, [] { return new Context; });
}

void EndAdjustment(Context* context) { delete context; }

void SetAdjParam(Context* context, AdjParam param) {
  if (context != nullptr) context->param = param;
}

AdjParam GetAdjParam(Context* context) { return context == nullptr ? AdjParam{} : context->param; }

// ---- Files ----

bool OpenBrenuAdjustFile(Context* context, const char* path) {
  return Reported(
      context,
      [=] {
        brenu::LineReader file(brenu::NarrowPath(path));
        Outcome outcome =
            brenu::ReadAs(brenu::ProjectGrammar(), context->param, context->store, file);
        if (outcome.ok) brenu::KeepOriginalPoints(*context);
        return outcome;
      },
      path);
}

int32_t SaveBrenuAdjustFile(Context* context, const char* path) {
  const auto write = [=] {
    return brenu::WriteProjectFile(context->param, context->store, brenu::NarrowPath(path));
  };
  return Written(context, path, write) ? 1 : 0;
}

bool LoadKorvelAdjustFile(Context* context, const char* path) {
  return Reported(
      context,
      [=] {
        brenu::LineReader file(brenu::NarrowPath(path));
        return brenu::ReadAs(brenu::StationGrammar(), context->param, context->store, file);
      },
      path);
}

// ---- Points ----

uint32_t GetPointCount(Context* context) {
  return context == nullptr ? 0 : static_cast<uint32_t>(context->store.Points().size());
}

int32_t AddPoint(Context* context, int32_t index, PointData point) {
  return Reported(context, [&] { return context->store.AddPoint(index, point); }) ? index : -1;
}

int32_t DeletePoint(Context* context, int32_t index) {
  return Reported(context, [&] { return context->store.DeletePoint(index); }) ? index : -1;
}

int32_t GetPoint(Context* context, int32_t index, PointData* out) {
  return Guarded(
      -1,
      [=] {
        const PointData* point = context->store.FindPoint(index);
        if (point == nullptr) return -1;
        *out = *point;
        return index;
      },
      context, out);
}

int32_t GetOriginalPoint(Context* context, int32_t index, PointData* out) {
  return GetPoint(context, index, out);
}

int32_t SetPoint(Context* context, int32_t index, PointData point) {
  return Reported(context, [&] { return context->store.SetPoint(index, point); }) ? index : -1;
}

int32_t GetPointNum(Context* context, const char* name) {
  return Guarded(
      -1, [=] { return context->store.IndexOfName(name); }, context, name);
}

// ---- Observations ----

int32_t GetObsDataCount(Context* context, int32_t station) {
  return Guarded(
      0, [=] { return context->store.ObsCount(station); }, context);
}

int32_t AddObsData(Context* context, int32_t station, const char* target, ObsData observation) {
  const auto add = [&] { return context->store.AddObs(station, target, observation); };
  return Reported(context, add, target) ? station : -1;
}

int32_t AddObsData2(Context* context, int32_t station, const char* target1, const char* target2,
                    ObsData observation1, ObsData observation2, uint8_t reconcile) {
  bool reconciled = false;
  const bool added = Reported(
      context,
      [&] {
        brenu::Store& store = context->store;
        const bool stored = std::as_const(store).FindObs(station, target1) != nullptr ||
                            std::as_const(store).FindObs(station, target2) != nullptr;
        if (reconcile == 0 || !stored) {
          return store.AddObsPair(station, target1, target2, observation1, observation2);
        }
        Outcome outcome =
            store.AddReconciledObs(station, target1, target2, observation1, observation2);
        reconciled = outcome.ok || outcome.findings.front().code != BRENU_NO_REFERENCE_DIRECTION;
        return outcome;
      },
      target1, target2);
  if (!reconciled) return added ? 1 : -1;
  // Any result but 0 counts as success, a refusal too; station 0 counts as failure
  // (docs/computations.md, "Readings of several sets at a station").
  return (added ? station : -1) != 0 ? 1 : -1;
}

int32_t DeleteObsData(Context* context, int32_t station, const char* target) {
  const auto remove = [=] { return context->store.DeleteObs(station, target); };
  return Reported(context, remove, target) ? station : -1;
}

int32_t GetObsData(Context* context, int32_t station, const char* target, ObsData* out) {
  return Guarded(
      -1,
      [=] {
        const ObsData* obs = std::as_const(context->store).FindObs(station, target);
        if (obs == nullptr) return -1;
        *out = *obs;
        return station;
      },
      context, target, out);
}

int32_t SetObsData(Context* context, int32_t station, const char* target, ObsData observation) {
  const auto set = [&] { return context->store.SetObs(station, target, observation); };
  return Reported(context, set, target) ? station : -1;
}

// ---- Computations ----

int32_t GetNetType(Context* context) {
  return Guarded(
      0, [=] { return brenu::ClassifyNetwork(*context); }, context);
}

bool ApproxCalc(Context* context) {
  return Reported(context, [=] { return brenu::RunApproxCalc(*context); });
}

bool LeastSquareAdj(Context* context) {
  return Reported(context, [=] { return brenu::RunLeastSquareAdj(*context); });
}

bool NonDirectionAdj(Context* context) {
  return Reported(context, [=] { return brenu::RunNonDirectionAdj(*context); });
}

int32_t DataSnooping(Context* context, uint32_t kind, double levelAlpha, double planeAlpha) {
  const auto snoop = [=] { return brenu::RunDataSnooping(*context, kind, levelAlpha, planeAlpha); };
  return Reported(context, snoop) ? 1 : 0;
}

// ---- Closure errors and reports ----

bool CalculateCloseError(Context* context) {
  return Reported(context, [=] { return brenu::CalculateClosures(*context); });
}

int32_t GetCloseErrorCount(Context* context) {
  return context == nullptr ? 0 : static_cast<int32_t>(context->closeErrors.size());
}

bool GetCloseError(Context* context, int32_t index, CloseError* out) {
  return Guarded(
      false,
      [=] {
        if (index < 0 || index >= GetCloseErrorCount(context)) return false;
        *out = context->closeErrors[static_cast<std::size_t>(index)];
        return true;
      },
      context, out);
}

int32_t GetCloseErrorMark(Context* context) {
  return Guarded(
      0, [=] { return brenu::AllClosuresPass(*context) ? 1 : 0; }, context);
}

bool ExportResultFile(Context* context, const char* path) {
  const auto write = [=] {
    Outcome outcome = brenu::WriteResultReport(*context, brenu::NarrowPath(path));
    if (!outcome.ok) outcome.findings.front().names = {path};
    return outcome;
  };
  return Reported(context, write, path);
}

bool ExportCloseErrorFile(Context* context, const char* path) {
  if (context != nullptr && path != nullptr && context->closeErrors.empty()) {
    return Reported(context, [] { return Outcome(brenu::Error(BRENU_NO_CLOSURES)); });
  }
  return Written(context, path, [=] {
    return brenu::WriteClosureReport(context->closeErrors, brenu::NarrowPath(path));
  });
}

// ---- Trilateration ----

bool JudgeTrilateration(Context* context) {
  return Reported(context, [=] { return brenu::BeginTrilateration(*context); });
}

bool InitializeDataTrilateration(Context* context) {
  return Reported(context, [=] { return brenu::PreparePlane(*context); });
}

bool TrilaterationDirection(Context* context) {
  return Reported(context, [=] { return brenu::FinishTrilateration(*context); });
}

int32_t GetTrilaterationDirection(Context* context, CircleRecord* first, CircleRecord* second,
                                  char direction[255]) {
  return Guarded(
      0,
      [=] {
        constexpr std::size_t kRoom = 254;
        const std::string_view name(direction, TextLength(direction, kRoom));
        const auto step = brenu::NextTrilaterationStep(*context, name);
        if (!step) return 0;
        *first = step->first;
        *second = step->second;
        std::memset(direction, 0, kRoom + 1);
        step->text.copy(direction, kRoom);
        return 1;
      },
      context, first, second, direction);
}

bool CalcTrilaterationpPoint(Context* context, uint8_t side, CircleRecord first,
                             CircleRecord second, const char* name, uint32_t* remaining) {
  bool answered = false;  // what could not be placed is a finding, but no failure
  Reported(
      context,
      [&] {
        Outcome outcome =
            brenu::PlaceByTrilateration(*context, side != 0, first, second, name, *remaining);
        answered = true;
        return outcome;
      },
      first.name, second.name, name, remaining);
  return answered;
}

}  // extern "C"
