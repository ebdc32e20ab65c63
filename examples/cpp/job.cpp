// Adjusts a file, lists the points with their error ellipses and writes the report.
#include <brenu/brenu.hpp>
#include <cstdint>
#include <cstdio>
#include <stdexcept>

namespace {

void PrintPoint(const brenu::Context& job, std::int32_t index, const PointData& point) {
  std::printf("%-8s", brenu::Text(point.name).c_str());
  if (const auto plane = job.Plane(index)) {
    std::printf("  X %.4f Y %.4f  ellipse %.1f x %.1f mm at %.4f", plane->x, plane->y,
                1000 * plane->e, 1000 * plane->f, plane->t);
  }
  if (const auto height = job.Height(index)) {
    std::printf("  H %.4f +- %.1f mm", height->height, 1000 * height->sigma);
  }
  std::printf("\n");
}

void Run(int argc, char** argv) {
  if (argc != 3) throw std::invalid_argument("usage: job FILE REPORT");
  brenu::Context job;
  job.Read(argv[1]);
  for (const auto& doubt : job.Findings()) std::fprintf(stderr, "%s\n", doubt.sentence.c_str());
  job.Adjust();
  job.WriteResults(argv[2]);
  for (const auto& [index, point] : job.Points()) PrintPoint(job, index, point);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    Run(argc, argv);
    return 0;
  } catch (const std::exception& error) {  // brenu::Error says why
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
