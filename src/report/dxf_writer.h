// Entities of a drawing in DXF of release 12.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "report/sketch_place.h"

namespace brenu {

// The layer of an entity and what differs from it; entities of a block look as its insertion does.
struct DxfLook {
  std::string_view layer;
  bool isRed = false, isDashed = false;
};
inline constexpr DxfLook kOfBlock = {"0"};

class DxfWriter {
 public:
  struct Layer {
    std::string_view name;
    int colour;  // of the colour index
  };
  // The extent of the drawing, the length of a dash and the layers.
  void Begin(const SketchExtent& extent, double dash, const std::vector<Layer>& layers);
  // Blocks come before, the entities after; Finish gives the file.
  void BeginBlocks();
  void BeginBlock(std::string_view name);
  void EndBlock();
  void BeginEntities();
  std::string Finish();

  void AddLine(const DxfLook& look, const SketchPlace& a, const SketchPlace& b);
  void AddCircle(const DxfLook& look, const SketchPlace& middle, double radius);
  void AddDisc(const DxfLook& look, const SketchPlace& middle, double radius);  // filled
  void AddTriangle(const DxfLook& look, const SketchPlace (&corners)[3]);       // filled
  void AddPolygon(const DxfLook& look, const std::vector<SketchPlace>& corners);
  void AddInsert(const DxfLook& look, std::string_view block, const SketchPlace& at);

  enum class Align { kLeft, kCentre, kRight };
  // `at` is on the base line; UTF-8.
  void AddText(const DxfLook& look, const SketchPlace& at, double height, std::string_view text,
               Align align = Align::kLeft);

 private:
  void Group(int code, std::string_view value);
  void Group(int code, int value);
  void Group(int code, double value);
  void Place(int code, const SketchPlace& place);
  void Begin(std::string_view entity, const DxfLook& look);

  std::string m_out;
};

}  // namespace brenu
