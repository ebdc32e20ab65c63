/* A whole job through the C interface: reads a project file, adjusts it, prints all points. */
#include <stdio.h>

#include "brenu/brenu.h"

int main(int argc, char** argv) {
  AdjustmentContext* job = StartAdjustment();
  if (argc != 2 || !OpenBrenuAdjustFile(job, argv[1]) || !LeastSquareAdj(job)) {
    fprintf(stderr, "usage: job PROJECT-FILE, a network that can be adjusted\n");
    EndAdjustment(job);
    return 1;
  }
  const int32_t count = (int32_t)GetPointCount(job);
  for (int32_t i = 0; i < count; ++i) { /* a project file gives the indices 0, 1, 2... */
    PointData point;
    PlaneResult plane;
    VerticalResult height;
    GetPoint(job, i, &point);
    if (GetPlaneResult(job, i, &plane))
      printf("%-8s X %.4f Y %.4f +- %.4f m\n", point.name, plane.x, plane.y, plane.mp);
    if (GetVerticalResult(job, i, &height))
      printf("%-8s H %.4f +- %.4f m\n", point.name, height.height, height.sigma);
  }
  EndAdjustment(job);
  return 0;
}
