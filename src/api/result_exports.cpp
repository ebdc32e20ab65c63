// The C interface of results, read by the index of a point and the name of a target.
#include <optional>

#include "api/barrier.h"
#include "core/angles.h"
#include "job/result_lookup.h"

namespace {

using Context = AdjustmentContext;
using brenu::Deliver;
using brenu::Guarded;

bool DeliverObs(const std::optional<brenu::PlaneObsResult>& result, double* residual,
                double* adjusted, double* apriori) {
  if (!result) return false;
  *residual = result->residual;
  *adjusted = result->adjusted;
  *apriori = result->apriori;
  return true;
}

}  // namespace

extern "C" {

bool GetApproxResult(Context* context, int32_t number, PointData* out) {
  return Guarded(
      false, [=] { return Deliver(brenu::ApproxResult(*context, number), out); }, context, out);
}

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

}  // extern "C"
