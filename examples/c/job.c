/* Adjusts a project file, lists the points with their error ellipses and writes the report. */
#include <stdio.h>

#include "brenu/brenu.h"

static void PrintPoint(AdjustmentContext* job, int32_t index) {
  PointData point;
  PlaneResult plane;
  VerticalResult height;
  GetPoint(job, index, &point);
  printf("%-8s", point.name);
  if (GetPlaneResult(job, index, &plane))
    printf("  X %.4f Y %.4f  ellipse %.1f x %.1f mm at %.4f", plane.x, plane.y, 1000 * plane.e,
           1000 * plane.f, plane.t);
  if (GetVerticalResult(job, index, &height))
    printf("  H %.4f +- %.1f mm", height.height, 1000 * height.sigma);
  printf("\n");
}

int main(int argc, char** argv) {
  AdjustmentContext* job = StartAdjustment();
  const char* fault = NULL;
  if (argc != 3)
    fault = "usage: job PROJECT-FILE REPORT";
  else if (!OpenBrenuAdjustFile(job, argv[1]))
    fault = "the project file cannot be read";
  else if (!LeastSquareAdj(job))
    fault = "the network cannot be adjusted";
  else if (!ExportResultFile(job, argv[2]))
    fault = "the report cannot be written";
  if (fault == NULL) {
    const int32_t count = (int32_t)GetPointCount(job);
    for (int32_t i = 0; i < count; ++i) PrintPoint(job, i); /* a file gives the indices 0, 1... */
  } else {
    fprintf(stderr, "%s\n", fault);
  }
  EndAdjustment(job);
  return fault == NULL ? 0 : 1;
}
