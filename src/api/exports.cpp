// The C interface: the only file that knows it.  Every function checks its pointers, calls plain
// C++ and turns whatever goes wrong into its failure value.
#include <cstring>
#include <optional>
#include <utility>

#include "api/barrier.h"
#include "core/angles.h"
#include "geodesy/atmosphere.h"
#include "geodesy/curvature.h"
#include "geodesy/direction_reductions.h"
#include "geodesy/distance_reductions.h"
#include "geodesy/gauss_projection.h"
#include "io/closure_report.h"
#include "io/project_file.h"
#include "io/read_file.h"
#include "io/result_report.h"
#include "job/closure_list.h"
#include "job/computations.h"
#include "job/network_build.h"
#include "job/result_lookup.h"
#include "job/trilateration_dialogue.h"

namespace {

using Context = AdjustmentContext;
using brenu::Deliver;
using brenu::Guarded;
using brenu::Outcome;
using brenu::Reported;

// Up to the NUL, or the room.
std::size_t TextLength(const char* text, std::size_t room) {
  const void* end = std::memchr(text, '\0', room);
  return end == nullptr ? room : static_cast<std::size_t>(static_cast<const char*>(end) - text);
}

bool DeliverObs(const std::optional<brenu::PlaneObsResult>& result, double* residual,
                double* adjusted, double* apriori) {
  if (!result) return false;
  *residual = result->residual;
  *adjusted = result->adjusted;
  *apriori = result->apriori;
  return true;
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

bool GetApproxResult(Context* context, int32_t number, PointData* out) {
  return Guarded(
      false, [=] { return Deliver(brenu::ApproxResult(*context, number), out); }, context, out);
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

// ---- Results ----

bool GetPlaneResult(Context* context, int32_t index, PlaneResult* out) {
  return Guarded(
      false, [=] { return Deliver(brenu::PlanePointResult(*context, index), out); }, context, out);
}

bool GetDirAngleResult(Context* context, int32_t station, const char* target, double* residual,
                       double* adjusted, double* apriori) {
  return Guarded(
      false,
      [=] {
        const auto result = brenu::DirectionResult(*context, station, target);
        return DeliverObs(result, residual, adjusted, apriori);
      },
      context, target, residual, adjusted, apriori);
}

bool GetLengthResult(Context* context, int32_t station, const char* target, double* residual,
                     double* adjusted, double* apriori) {
  return Guarded(
      false,
      [=] {
        const auto result = brenu::DistanceResult(*context, station, target);
        return DeliverObs(result, residual, adjusted, apriori);
      },
      context, target, residual, adjusted, apriori);
}

bool GetAzimuthResult(Context* context, int32_t station, const char* target, double* residual,
                      double* adjusted, double* apriori) {
  return Guarded(
      false,
      [=] {
        const auto result = brenu::AzimuthResult(*context, station, target);
        return DeliverObs(result, residual, adjusted, apriori);
      },
      context, target, residual, adjusted, apriori);
}

bool GetAzAndLenPrecision(Context* context, int32_t station, const char* target, double* azimuth,
                          double* azimuthError, double* length, double* lengthError,
                          int32_t* relativePrecision) {
  return Guarded(
      false,
      [=] {
        const auto line = brenu::LineResult(*context, station, target);
        if (!line) return false;
        *azimuth = line->azimuth;
        *azimuthError = line->azimuthError;
        *length = line->length;
        *lengthError = line->lengthError;
        *relativePrecision = line->relativePrecision;
        return true;
      },
      context, target, azimuth, azimuthError, length, lengthError, relativePrecision);
}

bool GetVerticalResult(Context* context, int32_t index, VerticalResult* out) {
  return Guarded(
      false, [=] { return Deliver(brenu::HeightResult(*context, index), out); }, context, out);
}

bool GetHeightObsResult(Context* context, int32_t station, const char* target, double* residual,
                        double* adjusted, double* sigma, double* weight) {
  return Guarded(
      false,
      [=] {
        const auto result = brenu::HeightDiffResult(*context, station, target);
        if (!result) return false;
        *residual = result->residual;
        *adjusted = result->adjusted;
        *sigma = result->sigma;
        *weight = result->weight;
        return true;
      },
      context, target, residual, adjusted, sigma, weight);
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

// ---- Trilateration and traverses ----

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

int32_t GetTraverseResult(Context* context, int32_t index, double* angle, double* angleCorrection,
                          double* azimuth, double* length, double* dx, double* dy,
                          double* dxCorrection, double* dyCorrection, double* x, double* y,
                          double* angleMisclosure, double* lengthMisclosure,
                          int32_t* relativePrecision) {
  return Guarded(
      0,
      [=] {
        const auto row = brenu::TraverseRow(*context, index);
        if (row.point == nullptr) return 0;
        const auto toDms = [](double rad) { return rad < 0.0 ? -1.0 : brenu::RadToDms(rad); };
        *angle = toDms(row.point->angle);
        *angleCorrection = row.point->angleCorrection;
        *azimuth = toDms(row.point->azimuth);
        *length = row.point->length;
        *dx = row.point->dx;
        *dy = row.point->dy;
        *dxCorrection = row.point->dxCorrection;
        *dyCorrection = row.point->dyCorrection;
        *x = row.point->x;
        *y = row.point->y;
        *angleMisclosure = row.traverse->angleMisclosure;
        *lengthMisclosure = row.traverse->lengthMisclosure;
        *relativePrecision = row.traverse->relativePrecision;
        return 1;
      },
      context, angle, angleCorrection, azimuth, length, dx, dy, dxCorrection, dyCorrection, x, y,
      angleMisclosure, lengthMisclosure, relativePrecision);
}

// ---- Reductions: closed formulas that cannot fail; a and b are the semi-axes ----

void CentreCorrect(double e1, double angle1, double e2, double angle2, double* distance,
                   double* direction) {
  if (distance == nullptr || direction == nullptr) return;
  const auto centred = brenu::CentreSight({e1, angle1}, {e2, angle2}, {*distance, *direction});
  *distance = centred.distance;
  *direction = centred.direction;
}
double DovCorrect(double xi, double eta, double azimuth, double elevation) {
  return brenu::DeflectionCorrection(xi, eta, azimuth, elevation);
}
double HeightMarkCorrect(double a, double b, double height, double latitude, double azimuth) {
  return brenu::TargetHeightCorrection({a, b}, height, latitude, azimuth);
}
double SectionCorrect(double a, double b, double distance, double latitude, double azimuth) {
  return brenu::NormalSectionCorrection({a, b}, distance, latitude, azimuth);
}
double DistanceReduction(double h1, double instrument, double h2, double target, double slope,
                         double latitude, double azimuth) {
  return brenu::SlopeToEllipsoid({h1, instrument}, {h2, target}, slope, latitude, azimuth);
}
double AstronomicalAzimuthReduction(double alpha, double lambda, double latitude,
                                    double longitude) {
  return brenu::LaplaceAzimuth(alpha, lambda, latitude, longitude);
}
double DirectionCorrect(double x1, double y1, double x2, double y2, double radius) {
  return brenu::ArcMinusChordDirection({x1, y1}, {x2, y2}, radius);
}
double DistanceCorrect(double y1, double y2, double distance, double radius) {
  return brenu::GridDistanceCorrection(y1, y2, distance, radius);
}
double PlaneAzimuthCorrect(double azimuth, double latitude, double x1, double y1, double x2,
                           double y2, double a, double b, double radius) {
  return brenu::GridAzimuth(azimuth, latitude, {x1, y1}, {x2, y2}, {a, b}, radius);
}
void MeteorologicalCorrect(double p1, double dry1, double wet1, double, double wavelength,
                           double p2, double dry2, double wet2, double, double distance,
                           double* out) {
  if (out == nullptr) return;
  *out = brenu::PsychrometricCorrection({p1, dry1, wet1}, {p2, dry2, wet2}, wavelength, distance);
}
void MeteorologicalCorrect2(double p1, double t1, double a1, double wavelength, double p2,
                            double t2, double a2, double distance, double* out) {
  if (out == nullptr) return;
  *out = brenu::HygrometricCorrection({p1, t1, a1}, {p2, t2, a2}, wavelength, distance);
}
void ConstAddMultiplyCorrect(double constant, double scale, double distance, double* out) {
  if (out != nullptr) *out = brenu::ApplyConstants(constant, scale, distance);
}
void ProjectionCorrect(double h, double undulation, double radius, double lineHeight, double mode,
                       double distance, double* out) {
  if (out == nullptr) return;
  Deliver(brenu::ProjectDistance(h, undulation, radius, lineHeight, mode, distance), out);
}
void GaussCorrect(double h, double undulation, double radius, double lineHeight, double mode,
                  double distance, double y1, double y2, double meanRadius, double* out,
                  double* grid) {
  if (out == nullptr || grid == nullptr) return;
  ProjectionCorrect(h, undulation, radius, lineHeight, mode, distance, out);
  *grid = brenu::GridDistance(y1, y2, *out, meanRadius);
}
double GetRm(double latitude, double equator, double polar, double e) {
  return brenu::MeanRadius(latitude, equator, polar, e);
}
double GetRn(double, double, double polar, double e, double azimuth) {
  return brenu::NormalSectionRadius(polar, e, azimuth);
}

}  // extern "C"
