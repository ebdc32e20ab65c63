// A sketch laid out on a page: what both the picture and the drawing for CAD show.
#pragma once

#include <vector>

#include "report/sketch.h"
#include "report/sketch_labels.h"
#include "report/sketch_layout.h"

namespace brenu {

struct SketchScene {
  double width, height;  // of the map without title and legend, units of the page
  SketchLayout layout;
  double scale;  // units of the page for a metre
  std::vector<PagePoint> points;
  double symbolRadius, lineWidth, fontSize;
  double exaggeration = 0.0;  // of the error ellipses, a number of the 1-2-5 series; 0 without them
  std::vector<SketchLabel> labels;

  // An ellipse that the exaggeration makes large enough to be seen.
  bool ShowsEllipse(const SketchPoint& point) const;
  SketchPlace OnGround(const PagePoint& page) const;
};

// `width` in units of the page; 0 chooses one by the number of points.
SketchScene MakeScene(const Sketch& sketch, double width);

}  // namespace brenu
