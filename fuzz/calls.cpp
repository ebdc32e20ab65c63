// Decodes the input into calls of the functions of the interface, in any order, with any arguments.
#include <array>
#include <filesystem>
#include <string>
#include <string_view>

#include "byte_source.h"
#include "exercise.h"
#include "scratch_file.h"

namespace {

using brenu::fuzz::ByteSource;

// What the calls of an input work on.
struct Session {
  Session(const std::uint8_t* data, std::size_t size, const char* file)
      : in(data, size), input(reinterpret_cast<const char*>(data), size), scratch(file) {}

  ByteSource in;
  std::string_view input;  // all of it
  const char* scratch;
  AdjustmentContext* job = StartAdjustment();
  std::array<double, 13> d{};  // outputs
  std::int32_t n = 0;
  std::string name1, name2;  // of circles, as long as the session
  CircleRecord first{"", 0, 0, 0}, second{"", 0, 0, 0};
  brenu_pair pair{};

  const char* Path() {
    static const std::string kFolder = std::filesystem::temp_directory_path().string();
    static const std::string kMissing = kFolder + "/missing/file";
    const std::uint8_t b = in.Byte();
    if (b < 240) return scratch;
    return b < 246 ? kFolder.c_str() : b < 252 ? kMissing.c_str() : "";
  }
  bool IsFull() const { return GetPointCount(job) >= brenu::fuzz::kMostPoints; }
};

using Call = void (*)(Session&);

template <typename Getter>
void ReadObs(Session& s, Getter getter) {
  const std::int32_t station = s.in.Index();
  getter(s.job, station, s.in.Name().c_str(), s.d.data(), &s.d[1], &s.d[2]);
}

// By function in the order of the header, without the reductions.
constexpr Call kCalls[] = {
    [](Session& s) {
      EndAdjustment(s.job);
      s.job = StartAdjustment();
    },
    [](Session& s) { SetAdjParam(s.job, s.in.Param()); }, [](Session& s) { GetAdjParam(s.job); },
    [](Session& s) {
      if (!s.IsFull()) OpenBrenuAdjustFile(s.job, s.Path());
    },
    [](Session& s) { SaveBrenuAdjustFile(s.job, s.Path()); },
    [](Session& s) {
      if (!s.IsFull()) LoadKorvelAdjustFile(s.job, s.Path());
    },
    [](Session& s) { GetPointCount(s.job); },
    [](Session& s) {
      const std::int32_t index = s.in.Index();
      if (!s.IsFull()) AddPoint(s.job, index, s.in.Point());
    },
    [](Session& s) { DeletePoint(s.job, s.in.Index()); },
    [](Session& s) {
      PointData point;
      GetPoint(s.job, s.in.Index(), &point);
    },
    [](Session& s) {
      PointData point;
      GetOriginalPoint(s.job, s.in.Index(), &point);
    },
    [](Session& s) {
      const std::int32_t index = s.in.Index();
      SetPoint(s.job, index, s.in.Point());
    },
    [](Session& s) { GetPointNum(s.job, s.in.Name().c_str()); },
    [](Session& s) { GetObsDataCount(s.job, s.in.Index()); },
    [](Session& s) {
      const std::int32_t station = s.in.Index();
      const std::string target = s.in.Name();
      AddObsData(s.job, station, target.c_str(), s.in.Obs());
    },
    [](Session& s) {
      const std::int32_t station = s.in.Index();
      const std::string target1 = s.in.Name();
      const std::string target2 = s.in.Name();
      const ObsData obs1 = s.in.Obs();
      const ObsData obs2 = s.in.Obs();
      AddObsData2(s.job, station, target1.c_str(), target2.c_str(), obs1, obs2, s.in.Byte());
    },
    [](Session& s) {
      const std::int32_t station = s.in.Index();
      DeleteObsData(s.job, station, s.in.Name().c_str());
    },
    [](Session& s) {
      const std::int32_t station = s.in.Index();
      ObsData obs;
      GetObsData(s.job, station, s.in.Name().c_str(), &obs);
    },
    [](Session& s) {
      const std::int32_t station = s.in.Index();
      const std::string target = s.in.Name();
      SetObsData(s.job, station, target.c_str(), s.in.Obs());
    },
    [](Session& s) { GetNetType(s.job); }, [](Session& s) { ApproxCalc(s.job); },
    [](Session& s) {
      PointData point;
      GetApproxResult(s.job, s.in.Index(), &point);
    },
    [](Session& s) { LeastSquareAdj(s.job); }, [](Session& s) { NonDirectionAdj(s.job); },
    [](Session& s) {
      const std::uint8_t b = s.in.Byte();
      const auto type = static_cast<std::uint32_t>(GetNetType(s.job));
      const double levelAlpha = s.in.Number();
      DataSnooping(s.job, b < 240 ? type : b, b % 2 == 0 ? 0.001 : levelAlpha, s.in.Number());
    },
    [](Session& s) {
      PlaneResult result;
      GetPlaneResult(s.job, s.in.Index(), &result);
    },
    [](Session& s) { ReadObs(s, GetDirAngleResult); },
    [](Session& s) { ReadObs(s, GetLengthResult); },
    [](Session& s) { ReadObs(s, GetAzimuthResult); },
    [](Session& s) {
      const std::int32_t station = s.in.Index();
      GetAzAndLenPrecision(s.job, station, s.in.Name().c_str(), s.d.data(), &s.d[1], &s.d[2],
                           &s.d[3], &s.n);
    },
    [](Session& s) {
      VerticalResult result;
      const std::int32_t index = s.in.Index();
      if (!s.IsFull()) GetVerticalResult(s.job, index, &result);  // it may add a point
    },
    [](Session& s) {
      const std::int32_t station = s.in.Index();
      const std::string target = s.in.Name();
      if (s.IsFull()) return;
      GetHeightObsResult(s.job, station, target.c_str(), s.d.data(), &s.d[1], &s.d[2], &s.d[3]);
    },
    [](Session& s) { CalculateCloseError(s.job); }, [](Session& s) { GetCloseErrorCount(s.job); },
    [](Session& s) {
      CloseError record;
      GetCloseError(s.job, s.in.Index(), &record);
    },
    [](Session& s) { GetCloseErrorMark(s.job); },
    [](Session& s) { ExportResultFile(s.job, s.Path()); },
    [](Session& s) { ExportCloseErrorFile(s.job, s.Path()); },
    [](Session& s) { JudgeTrilateration(s.job); },
    [](Session& s) { InitializeDataTrilateration(s.job); },
    [](Session& s) { TrilaterationDirection(s.job); },
    [](Session& s) {
      char text[255];
      std::memset(text, 'x', sizeof text);  // a host may forget to clear it
      const std::string name = s.in.Byte() < 128 ? std::string() : s.in.Name();
      std::memcpy(text, name.c_str(), name.size() + 1);
      if (GetTrilaterationDirection(s.job, &s.first, &s.second, text) != 1) return;
      // Valid until the next call only.
      s.name1 = s.first.name;
      s.name2 = s.second.name;
      s.first.name = s.name1.c_str();
      s.second.name = s.name2.c_str();
    },
    [](Session& s) {
      const std::uint8_t b = s.in.Byte();
      if (b >= 192) {
        s.name1 = s.in.Name();
        s.name2 = s.in.Name();
        s.first = {s.name1.c_str(), s.in.Number(), s.in.Number(), s.in.Number()};
        s.second = {s.name2.c_str(), s.in.Number(), s.in.Number(), s.in.Number()};
      }
      std::uint32_t remaining = 0;
      CalcTrilaterationpPoint(s.job, b % 2, s.first, s.second, s.in.Name().c_str(), &remaining);
    },
    [](Session& s) {
      auto& d = s.d;
      GetTraverseResult(s.job, s.in.Index(), d.data(), &d[1], &d[2], &d[3], &d[4], &d[5], &d[6],
                        &d[7], &d[8], &d[9], &d[10], &d[11], &s.n);
    },
    // The reductions have no state: all at once, with the same numbers.
    [](Session& s) {
      std::array<double, 11> a;
      for (double& value : a) value = s.in.Number();
      double* const out = s.d.data();
      CentreCorrect(a[0], a[1], a[2], a[3], out, out + 1);
      DovCorrect(a[0], a[1], a[2], a[3]);
      HeightMarkCorrect(a[0], a[1], a[2], a[3], a[4]);
      SectionCorrect(a[0], a[1], a[2], a[3], a[4]);
      DistanceReduction(a[0], a[1], a[2], a[3], a[4], a[5], a[6]);
      AstronomicalAzimuthReduction(a[0], a[1], a[2], a[3]);
      DirectionCorrect(a[0], a[1], a[2], a[3], a[4]);
      DistanceCorrect(a[0], a[1], a[2], a[3]);
      PlaneAzimuthCorrect(a[0], a[1], a[2], a[3], a[4], a[5], a[6], a[7], a[8]);
      MeteorologicalCorrect(a[0], a[1], a[2], a[3], a[4], a[5], a[6], a[7], a[8], a[9], out);
      MeteorologicalCorrect2(a[0], a[1], a[2], a[3], a[4], a[5], a[6], a[7], out);
      ConstAddMultiplyCorrect(a[0], a[1], a[2], out);
      ProjectionCorrect(a[0], a[1], a[2], a[3], a[4], a[5], out);
      GaussCorrect(a[0], a[1], a[2], a[3], a[4], a[5], a[6], a[7], a[8], out, out + 1);
      GetRm(a[0], a[1], a[2], a[3]);
      GetRn(a[0], a[1], a[2], a[3], a[4]);
    },
    [](Session& s) { brenu::fuzz::ReadResults(s.job); },
    // What goes beyond them.
    [](Session& s) {
      brenu::fuzz::ReadFindings(s.job);
      brenu::fuzz::ReadReports(s.job);
    },
    [](Session& s) {
      if (!s.IsFull()) brenu_read_file(s.job, s.Path());
    },
    [](Session& s) {
      if (!s.IsFull()) brenu_read_memory(s.job, s.input.data(), s.input.size());
    },
    [](Session& s) { brenu_check_data(s.job); },
    [](Session& s) {
      std::int32_t index = s.in.Index();
      brenu_next_point(s.job, &index);
    },
    [](Session& s) { brenu_next_observation(s.job, &s.pair); },
    [](Session& s) {
      s.pair = s.in.Raw<brenu_pair>();  // names without end
      brenu_next_observation(s.job, &s.pair);
    },
    [](Session& s) {
      const auto code = s.in.Raw<std::int32_t>();
      brenu_code_id(code);
      // With options that there may be.
      const brenu_options options = {code % 3, code / 3 % 4, code / 12 % 5 / 4.0, 0, 0};
      (code % 7 == 0   ? brenu_approximate
       : code % 7 == 1 ? brenu_compute_closures
                       : brenu_adjust)(s.job, &options);
    }};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const brenu::fuzz::ScratchFile file;
  file.Write(data, size);
  constexpr int kMostCalls = 300;
  Session session(data, size, file.Path());
  for (int i = 0; i < kMostCalls && !session.in.IsEmpty(); ++i) {
    kCalls[session.in.Byte() % std::size(kCalls)](session);
  }
  brenu::fuzz::CheckStore(session.job);
  EndAdjustment(session.job);
  return 0;
}
