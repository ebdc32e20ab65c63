#include "report/dxf_writer.h"

#include <cstdint>
#include <utility>

#include "core/text_number.h"
#include "report/utf8.h"

namespace brenu {

namespace {

constexpr int kRed = 1, kByBlock = 0;

void AppendEscape(std::string& out, std::uint32_t unit) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  out += "\\U+";
  for (int shift = 12; shift >= 0; shift -= 4) out += kDigits[unit >> shift & 0xfU];
}

// One line of ASCII; what is beyond the first plane becomes a surrogate pair.
std::string Escaped(std::string_view text) {
  std::string out;
  while (!text.empty()) {
    const Utf8Character character = FirstCharacter(text);
    const std::uint32_t code = character.code;
    if (code < 0x80) {
      out += static_cast<char>(code);
    } else if (code < 0x10000) {
      AppendEscape(out, code);
    } else {
      AppendEscape(out, 0xd7c0U + (code >> 10U));
      AppendEscape(out, 0xdc00U + (code & 0x3ffU));
    }
    text.remove_prefix(character.length);
  }
  return out;
}

}  // namespace

void DxfWriter::Group(int code, std::string_view value) {
  AppendInt(m_out, code);
  m_out += '\n';
  m_out += value;
  m_out += '\n';
}

void DxfWriter::Group(int code, int value) {
  std::string text;
  AppendInt(text, value);
  Group(code, text);
}

void DxfWriter::Group(int code, double value) {
  std::string text;
  AppendFixed(text, value, 4);
  Group(code, text);
}

void DxfWriter::Place(int code, const SketchPlace& place) {
  Group(code, place.y);
  Group(code + 10, place.x);
  Group(code + 20, 0.0);
}

void DxfWriter::Begin(const SketchExtent& extent, double dash, const std::vector<Layer>& layers) {
  Group(0, "SECTION");
  Group(2, "HEADER");
  Group(9, "$ACADVER");
  Group(1, "AC1009");
  Group(9, "$EXTMIN");
  Place(10, {extent.xMin, extent.yMin});
  Group(9, "$EXTMAX");
  Place(10, {extent.xMax, extent.yMax});
  Group(0, "ENDSEC");

  Group(0, "SECTION");
  Group(2, "TABLES");
  // Programs open the drawing on the whole of it.
  Group(0, "TABLE");
  Group(2, "VPORT");
  Group(70, 1);
  Group(0, "VPORT");
  Group(2, "*ACTIVE");
  Group(70, 0);
  Group(10, 0.0);
  Group(20, 0.0);
  Group(11, 1.0);
  Group(21, 1.0);
  Group(12, (extent.yMin + extent.yMax) / 2.0);
  Group(22, (extent.xMin + extent.xMax) / 2.0);
  Group(40, 1.1 * std::max({extent.Height(), extent.Width(), dash}));
  Group(41, 1.5);
  Group(0, "ENDTAB");
  Group(0, "TABLE");
  Group(2, "LTYPE");
  Group(70, 2);
  Group(0, "LTYPE");
  Group(2, "CONTINUOUS");
  Group(70, 0);
  Group(3, "Solid line");
  Group(72, 65);
  Group(73, 0);
  Group(40, 0.0);
  Group(0, "LTYPE");
  Group(2, "DASHED");
  Group(70, 0);
  Group(3, "Dashed line");
  Group(72, 65);
  Group(73, 2);
  Group(40, 1.8 * dash);
  Group(49, dash);
  Group(49, -0.8 * dash);
  Group(0, "ENDTAB");
  Group(0, "TABLE");
  Group(2, "LAYER");
  Group(70, static_cast<int>(layers.size()));
  for (const Layer& layer : layers) {
    Group(0, "LAYER");
    Group(2, layer.name);
    Group(70, 0);
    Group(62, layer.colour);
    Group(6, "CONTINUOUS");
  }
  Group(0, "ENDTAB");
  Group(0, "TABLE");
  Group(2, "STYLE");
  Group(70, 1);
  Group(0, "STYLE");
  Group(2, "STANDARD");
  Group(70, 0);
  Group(40, 0.0);
  Group(41, 1.0);
  Group(50, 0.0);
  Group(71, 0);
  Group(42, 1.0);
  Group(3, "arial.ttf");
  Group(4, "");
  Group(0, "ENDTAB");
  Group(0, "ENDSEC");
}

void DxfWriter::BeginBlocks() {
  Group(0, "SECTION");
  Group(2, "BLOCKS");
}

void DxfWriter::BeginBlock(std::string_view name) {
  Group(0, "BLOCK");
  Group(8, "0");
  Group(2, name);
  Group(70, 0);
  Place(10, {0.0, 0.0});
  Group(3, name);
}

void DxfWriter::EndBlock() {
  Group(0, "ENDBLK");
  Group(8, "0");
}

void DxfWriter::BeginEntities() {
  Group(0, "ENDSEC");
  Group(0, "SECTION");
  Group(2, "ENTITIES");
}

std::string DxfWriter::Finish() {
  Group(0, "ENDSEC");
  Group(0, "EOF");
  return std::move(m_out);
}

void DxfWriter::Begin(std::string_view entity, const DxfLook& look) {
  Group(0, entity);
  Group(8, look.layer);
  if (look.layer == kOfBlock.layer) {
    Group(6, "BYBLOCK");
    Group(62, kByBlock);
  }
  if (look.isDashed) Group(6, "DASHED");
  if (look.isRed) Group(62, kRed);
}

void DxfWriter::AddLine(const DxfLook& look, const SketchPlace& a, const SketchPlace& b) {
  Begin("LINE", look);
  Place(10, a);
  Place(11, b);
}

void DxfWriter::AddCircle(const DxfLook& look, const SketchPlace& middle, double radius) {
  Begin("CIRCLE", look);
  Place(10, middle);
  Group(40, radius);
}

// Two half circles of half the radius, as wide as it.
void DxfWriter::AddDisc(const DxfLook& look, const SketchPlace& middle, double radius) {
  Begin("POLYLINE", look);
  Group(66, 1);
  Place(10, {0.0, 0.0});
  Group(70, 1);
  Group(40, radius);
  Group(41, radius);
  for (const double side : {-0.5, 0.5}) {
    Begin("VERTEX", look);
    Place(10, {middle.x, middle.y + side * radius});
    Group(42, 1.0);
  }
  Group(0, "SEQEND");
  Group(8, look.layer);
}

void DxfWriter::AddTriangle(const DxfLook& look, const SketchPlace (&corners)[3]) {
  Begin("SOLID", look);
  for (int i = 0; i < 3; ++i) Place(10 + i, corners[i]);
  Place(13, corners[2]);
}

void DxfWriter::AddPolygon(const DxfLook& look, const std::vector<SketchPlace>& corners) {
  Begin("POLYLINE", look);
  Group(66, 1);
  Place(10, {0.0, 0.0});
  Group(70, 1);
  for (const SketchPlace& corner : corners) {
    Begin("VERTEX", look);
    Place(10, corner);
  }
  Group(0, "SEQEND");
  Group(8, look.layer);
}

void DxfWriter::AddInsert(const DxfLook& look, std::string_view block, const SketchPlace& at) {
  Begin("INSERT", look);
  Group(2, block);
  Place(10, at);
}

void DxfWriter::AddText(const DxfLook& look, const SketchPlace& at, double height,
                        std::string_view text, Align align) {
  Begin("TEXT", look);
  Place(10, at);
  Group(40, height);
  Group(1, Escaped(text));
  if (align == Align::kLeft) return;
  Group(72, static_cast<int>(align));
  Place(11, at);
}

}  // namespace brenu
