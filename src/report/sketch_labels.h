// Names beside the points, none on another one or on a symbol.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace brenu {

struct PagePoint {
  double x = 0.0, y = 0.0;  // units of the page, to the right and down
};

// The advance of a line of text in ems, on the safe side for the common fonts.
double TextWidth(std::string_view text);

struct SketchLabel {
  enum class Anchor : std::uint8_t { kStart, kMiddle, kEnd };

  std::int32_t point;
  PagePoint at;  // on the base line, at the anchor
  Anchor anchor;
};

// What covers the page, in squares of two units: the labels look for room in it.
class LabelField {
 public:
  LabelField(double width, double height);

  // A line of more weight keeps labels farther away.
  void AddLine(const PagePoint& a, const PagePoint& b, int weight);
  // Nothing may cover the symbol of a marked point.
  void AddSymbol(const PagePoint& middle, double radius, bool isMarked);

  struct Rectangle {
    double left, top, right, bottom;
  };
  // How much of the rectangle lines cover, 1 for one along all of it; from kOverSymbol on with the
  // symbol of a point in the way, from kBlocked on with a label, a marked point or the edge.
  static constexpr double kOverSymbol = 1e6, kBlocked = 1e12;
  double Cover(const Rectangle& rectangle) const;
  void Take(const Rectangle& rectangle);

 private:
  void Fill(const Rectangle& rectangle, std::uint8_t cover);
  std::size_t At(std::int32_t column, std::int32_t row) const {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(m_columns) +
           static_cast<std::size_t>(column);
  }

  std::int32_t m_columns, m_rows;
  std::vector<std::uint8_t> m_cover;  // lines through each square; 255: taken
};

struct LabelStyle {
  double fontSize;
  double symbolRadius;
  double mostCover;  // labels that would cover more are left out, but for those of marked points
};

// A label for each of `order` that finds room, the first ones first; in the order given.
std::vector<SketchLabel> PlaceLabels(LabelField& field, const std::vector<PagePoint>& points,
                                     const std::vector<std::string_view>& names,
                                     const std::vector<std::int32_t>& order,
                                     const std::vector<bool>& isMarked, const LabelStyle& style);

}  // namespace brenu
