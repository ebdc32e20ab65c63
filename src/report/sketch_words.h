// The words of the sketch.
#pragma once

#include "review/language.h"

namespace brenu::sketch_words {

inline constexpr Words kControl = {"control point", "控制点"};
inline constexpr Words kBenchMark = {"bench mark", "水准点"};
inline constexpr Words kNewPoint = {"new point", "待定点"};
inline constexpr Words kNoCoordinates = {"place not to scale", "位置为示意"};
inline constexpr Words kBoth = {"direction and distance", "方向和边长"};
inline constexpr Words kDistance = {"distance", "边长"};
inline constexpr Words kDirection = {"direction", "方向"};
inline constexpr Words kLevelled = {"levelled", "水准路线"};
inline constexpr Words kOneWay = {"observed one way", "单向观测"};
inline constexpr Words kFlagged = {"in doubt", "可疑"};
inline constexpr Words kNotChecked = {"not checked", "无多余观测"};
inline constexpr Words kStandardEllipse = {"standard error ellipse", "误差椭圆"};
inline constexpr Words kEllipse95 = {"95 % error ellipse", "95 % 误差椭圆"};
inline constexpr Words kSchematic = {"schematic, not to scale", "示意图，不按比例"};
inline constexpr Words kNorth = {"N", "北"};

}  // namespace brenu::sketch_words
