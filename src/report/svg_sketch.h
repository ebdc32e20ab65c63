// The sketch as a picture.
#pragma once

#include <string>

#include "report/sketch.h"

namespace brenu {

struct SvgOptions {
  bool isEmbedded = false;  // part of a page: without the XML declaration
  double width = 0.0;       // in units of text 12 high; 0: by the number of points
};

// An SVG picture that stands alone or in a page.  A page links to it by the attributes
//   data-point="i"  the symbol of point i, data-ellipse="i" its ellipse, data-label="i" its name
//   data-line="i"   line i
// and the class "selected", which makes any of them stand out.  It may set the variables
// --sketch-paper, -ink, -both, -distance, -direction, -levelled, -flag, -ellipse and -selection,
// for a dark page.  Names that find no room have no label; each symbol has its name as its title.
std::string Svg(const Sketch& sketch, const SvgOptions& options = {});

}  // namespace brenu
