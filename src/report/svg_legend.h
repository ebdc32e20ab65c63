// What stands around the map: title and north arrow above, scale bars and legend below.
#pragma once

#include <string>

#include "report/sketch_scene.h"

namespace brenu {

inline constexpr double kSvgHeader = 48.0;  // height above the map

// Appends title and north arrow; the map begins kSvgHeader below the top.
void AppendSvgHeader(std::string& out, const Sketch& sketch, const SketchScene& scene);

// Appends scale bars and legend from `top` on; gives the y below them.
double AppendSvgFooter(std::string& out, const Sketch& sketch, const SketchScene& scene,
                       double top);

}  // namespace brenu
