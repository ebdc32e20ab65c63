/* Adjusts a file, lists the points with their error ellipses and writes the report. */
#include <stdio.h>

#include "brenu/survey.h"

/* What was wrong with the last call. */
static void PrintFindings(AdjustmentContext* job) {
  char text[500];
  for (int32_t i = 0; i < brenu_finding_count(job); ++i) {
    brenu_finding_text(job, i, text, sizeof text);
    fprintf(stderr, "%s\n", text);
  }
}

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
  bool done = false;
  if (argc != 3) {
    fprintf(stderr, "usage: job FILE REPORT\n");
  } else {
    done = brenu_read_file(job, argv[1]) != BRENU_NO_FILE && LeastSquareAdj(job) &&
           ExportResultFile(job, argv[2]);
    if (!done) PrintFindings(job);
  }
  for (int32_t index = -1; done && brenu_next_point(job, &index);) PrintPoint(job, index);
  EndAdjustment(job);
  return done ? 0 : 1;
}
