#include "report/sketch.h"

namespace brenu {

SketchTexts EnglishSketchTexts() {
  return {.control = "control point",
          .benchMark = "bench mark",
          .newPoint = "new point",
          .noCoordinates = "place not to scale",
          .both = "direction and distance",
          .distance = "distance",
          .direction = "direction",
          .levelled = "levelled",
          .oneWay = "observed one way",
          .flagged = "in doubt",
          .notChecked = "not checked",
          .ellipse = "error ellipse",
          .schematic = "schematic, not to scale",
          .north = "N"};
}

SketchTexts ChineseSketchTexts() {
  return {.control = "控制点",
          .benchMark = "水准点",
          .newPoint = "待定点",
          .noCoordinates = "位置为示意",
          .both = "方向和边长",
          .distance = "边长",
          .direction = "方向",
          .levelled = "水准路线",
          .oneWay = "单向观测",
          .flagged = "可疑",
          .notChecked = "无多余观测",
          .ellipse = "误差椭圆",
          .schematic = "示意图，不按比例",
          .north = "北"};
}

}  // namespace brenu
