// Adjusts a project file, lists the points with their error ellipses and writes the report.
#include <brenu/brenu.hpp>
#include <cstdint>
#include <cstdio>
#include <stdexcept>

namespace {

void PrintPoint(const brenu::Context& job, std::int32_t index) {
  std::printf("%-8s", brenu::Text(job.Point(index).value().name).c_str());
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
  if (argc != 3) throw std::invalid_argument("usage: job PROJECT-FILE REPORT");
  brenu::Context job;
  if (!job.OpenProject(argv[1])) throw std::runtime_error("the project file cannot be read");
  if (!job.Adjust()) throw std::runtime_error("the network cannot be adjusted");
  if (!job.WriteResults(argv[2])) throw std::runtime_error("the report cannot be written");
  const auto count = static_cast<std::int32_t>(job.PointCount());
  for (std::int32_t i = 0; i < count; ++i) PrintPoint(job, i);  // a file gives 0, 1, 2...
}

}  // namespace

int main(int argc, char** argv) {
  try {
    Run(argc, argv);
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
