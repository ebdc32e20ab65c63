#include "exercise.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <nlohmann/json.hpp>

#include "scratch_file.h"

namespace brenu::fuzz {

namespace {

// Where indices end: the file readers number their points 0, 1, 2...; hosts may choose larger ones.
std::int32_t EndOfIndices(AdjustmentContext* context) {
  return static_cast<std::int32_t>(std::clamp(GetPointCount(context), 12U, kMostPoints)) + 4;
}
// Indices this far apart are close.
constexpr std::int32_t kReach = 12;

void ReadLine(AdjustmentContext* context, std::int32_t station, const char* target) {
  double d[4];
  std::int32_t n = 0;
  ObsData obs;
  GetObsData(context, station, target, &obs);
  GetDirAngleResult(context, station, target, &d[0], &d[1], &d[2]);
  GetLengthResult(context, station, target, &d[0], &d[1], &d[2]);
  GetAzimuthResult(context, station, target, &d[0], &d[1], &d[2]);
  GetAzAndLenPrecision(context, station, target, &d[0], &d[1], &d[2], &d[3], &n);
  GetHeightObsResult(context, station, target, &d[0], &d[1], &d[2], &d[3]);
}

void Report(AdjustmentContext* context, const char* scratch) {
  ReadFindings(context);
  ReadResults(context);
  ExportResultFile(context, scratch);
  ExportCloseErrorFile(context, scratch);
}

void ReadTakenOut(AdjustmentContext* context) {
  brenu_taken_out out;
  brenu_observation other;
  brenu_control_fit fit;
  const std::int32_t count = brenu_taken_out_count(context);
  for (std::int32_t i = -1; i <= count; ++i) {
    if (brenu_get_taken_out(context, i, &out) != (i >= 0 && i < count)) std::abort();
    brenu_get_alternative(context, i, 0, &other);
  }
  brenu_untested_count(context, BRENU_HEIGHTS);
  brenu_untested_count(context, BRENU_PLANE);
  for (std::int32_t i = -1; i < EndOfIndices(context); ++i) brenu_get_control_fit(context, i, &fit);
}

// By the rules of textbooks.
void ExerciseTextbook(AdjustmentContext* context, const char* scratch) {
  brenu_options options{};
  brenu_approximate(context, &options);
  Report(context, scratch);
  brenu_compute_closures(context, &options);
  Report(context, scratch);
  for (const brenu_test test : {BRENU_NO_TEST, BRENU_W_TEST, BRENU_TAU_TEST}) {
    options.test = test;
    brenu_adjust(context, &options);
    Report(context, scratch);
  }
  ReadReports(context);
}

// Places what can be placed, on alternating sides.
void Trilaterate(AdjustmentContext* context) {
  if (!JudgeTrilateration(context)) return;
  InitializeDataTrilateration(context);
  for (unsigned step = 0; step <= kMostPoints; ++step) {
    CircleRecord first;
    CircleRecord second;
    char text[255] = {};
    if (GetTrilaterationDirection(context, &first, &second, text) != 1) break;
    char name[128] = {};
    for (unsigned i = 0; i < 127 && text[i] != '\0' && text[i] != ':'; ++i) name[i] = text[i];
    std::uint32_t remaining = 0;
    CalcTrilaterationpPoint(context, step % 2, first, second, name, &remaining);
  }
  TrilaterationDirection(context);
}

}  // namespace

void CheckStore(AdjustmentContext* context) {
  for (std::int32_t i = 0; i < EndOfIndices(context); ++i) {
    PointData point;
    if (GetPoint(context, i, &point) != i) continue;
    // Asking for results may have added a point under any index, a negative one too.
    const std::int32_t found = GetPointNum(context, point.name);
    PointData same;
    if (found > i || GetPoint(context, found, &same) != found) std::abort();
    if (std::strcmp(point.name, same.name) != 0) std::abort();
  }
  brenu_pair pair{};
  ObsData obs;
  while (brenu_next_observation(context, &pair)) {
    const std::int32_t station = GetPointNum(context, pair.station);
    // A renaming may have left the station without point.
    if (station >= 0 && GetObsData(context, station, pair.target, &obs) != station) std::abort();
  }
}

void ReadFindings(AdjustmentContext* context) {
  brenu_finding finding;
  for (std::int32_t i = -1; i <= brenu_finding_count(context); ++i) {
    if (!brenu_get_finding(context, i, &finding)) continue;
    char text[100];
    const std::int32_t length = brenu_finding_text(context, i, text, sizeof text);
    if (length <= 0 || std::strlen(text) != static_cast<std::size_t>(std::min(length, 99))) {
      std::abort();
    }
    brenu_finding_excerpt(context, i, text, 3);
    double value = 0.0;
    for (std::int32_t n = 0; n <= finding.nameCount; ++n) {
      brenu_finding_name(context, i, n, text, sizeof text);
    }
    for (std::int32_t n = 0; n <= finding.valueCount; ++n) {
      brenu_finding_value(context, i, n, &value);
    }
  }
}

void ReadResults(AdjustmentContext* context) {
  brenu_figures figures;
  brenu_get_figures(context, BRENU_HEIGHTS, &figures);
  brenu_get_figures(context, BRENU_PLANE, &figures);
  ReadTakenOut(context);
  GetAdjParam(context);
  GetCloseErrorMark(context);
  for (std::int32_t i = -1; i <= GetCloseErrorCount(context); ++i) {
    CloseError record;
    GetCloseError(context, i, &record);
  }
  for (std::int32_t i = -1; i < EndOfIndices(context); ++i) {
    PointData point;
    GetApproxResult(context, i, &point);
    PlaneResult plane;
    GetPlaneResult(context, i, &plane);
    double d[12];
    std::int32_t n = 0;
    GetTraverseResult(context, i, &d[0], &d[1], &d[2], &d[3], &d[4], &d[5], &d[6], &d[7], &d[8],
                      &d[9], &d[10], &d[11], &n);
    if (i < 0 || GetOriginalPoint(context, i, &point) != i) continue;
    VerticalResult height;
    GetVerticalResult(context, i, &height);
    if (GetObsDataCount(context, i) == 0) continue;
    for (std::int32_t k = std::max(i - kReach, 0); k <= i + kReach; ++k) {
      if (GetPoint(context, k, &point) == k) ReadLine(context, i, point.name);
    }
  }
}

void ReadReports(AdjustmentContext* context) {
  for (const std::int32_t language : {BRENU_ENGLISH, BRENU_CHINESE}) {
    for (const std::int32_t form : {BRENU_REPORT_JSON, BRENU_REPORT_HTML, BRENU_REPORT_SVG,
                                    BRENU_REPORT_DXF, BRENU_REPORT_TEXT}) {
      const char* const text = brenu_report(context, form, language, "<any> \"title\"");
      if (text == nullptr) std::abort();
      if (form == BRENU_REPORT_JSON && !nlohmann::json::accept(text)) std::abort();
    }
  }
}

void Exercise(AdjustmentContext* context, const char* scratch) {
  CheckStore(context);
  SaveBrenuAdjustFile(context, scratch);
  if (GetPointCount(context) > kMostPoints) return;
  const auto type = static_cast<std::uint32_t>(GetNetType(context));
  ApproxCalc(context);
  Report(context, scratch);
  CalculateCloseError(context);
  Report(context, scratch);
  LeastSquareAdj(context);
  Report(context, scratch);
  DataSnooping(context, type, 0.001, 0.001);
  Report(context, scratch);
  ExerciseTextbook(context, scratch);
  AdjParam param = GetAdjParam(context);
  param.format = 1;
  SetAdjParam(context, param);
  NonDirectionAdj(context);
  Report(context, scratch);
  param.format = 3;
  SetAdjParam(context, param);
  const brenu_options usual{};
  brenu_adjust(context, &usual);
  Report(context, scratch);
  ReadReports(context);
  Trilaterate(context);
  LeastSquareAdj(context);
  Report(context, scratch);
  CheckStore(context);
}

void ExerciseFile(bool (*open)(AdjustmentContext*, const char*), const std::uint8_t* data,
                  std::size_t size) {
  static const ScratchFile file;
  file.Write(data, size);
  AdjustmentContext* const context = StartAdjustment();
  open(context, file.Path());
  Exercise(context, file.Path());
  EndAdjustment(context);
  AdjustmentContext* const byContent = StartAdjustment();
  brenu_read_memory(byContent, reinterpret_cast<const char*>(data), size);
  ReadFindings(byContent);
  brenu_check_data(byContent);
  ReadFindings(byContent);
  CheckStore(byContent);
  EndAdjustment(byContent);
}

}  // namespace brenu::fuzz
