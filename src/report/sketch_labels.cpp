#include "report/sketch_labels.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace brenu {

namespace {

constexpr double kSquare = 2.0;
constexpr std::uint8_t kTaken = 255, kSymbol = 254;

// Above and below the base line, in ems.
constexpr double kAscent = 0.78, kDescent = 0.24;

std::int32_t Square(double value) { return static_cast<std::int32_t>(std::floor(value / kSquare)); }

// The eight places around a symbol, the most readable first: `x` and `y` say on which side.
struct Side {
  int x, y;
  double cost;
};
constexpr std::array<Side, 8> kSides = {{{1, -1, 0.0},
                                         {1, 1, 0.02},
                                         {1, 0, 0.03},
                                         {-1, -1, 0.04},
                                         {-1, 1, 0.05},
                                         {-1, 0, 0.06},
                                         {0, -1, 0.05},
                                         {0, 1, 0.07}}};

struct Candidate {
  SketchLabel label;
  LabelField::Rectangle rectangle;
};

Candidate MakeCandidate(const PagePoint& point, double width, const Side& side,
                        const LabelStyle& style) {
  const double height = (kAscent + kDescent) * style.fontSize;
  // A corner comes closer to the symbol than a side.
  const double gap = style.symbolRadius + (side.x != 0 && side.y != 0 ? 0.5 : 3.0);
  const double left = side.x > 0   ? point.x + gap
                      : side.x < 0 ? point.x - gap - width
                                   : point.x - width / 2.0;
  const double top = side.y > 0 ? point.y + (side.x == 0 ? gap : 0.25 * style.symbolRadius)
                     : side.y < 0
                         ? point.y - height - (side.x == 0 ? gap : 0.25 * style.symbolRadius)
                         : point.y - height / 2.0;
  using enum SketchLabel::Anchor;
  const SketchLabel::Anchor anchor = side.x > 0 ? kStart : side.x < 0 ? kEnd : kMiddle;
  const double x = side.x > 0 ? left : side.x < 0 ? left + width : point.x;
  return {{-1, {x, top + kAscent * style.fontSize}, anchor},
          {left, top, left + width, top + height}};
}

}  // namespace

double TextWidth(std::string_view text) {
  double width = 0.0;
  for (const char ch : text) {
    const auto byte = static_cast<unsigned char>(ch);
    if (byte >= 0x80) {
      // The first byte of a character: two bytes are letters of alphabets, three mostly ideographs.
      if (byte >= 0xe0) width += 1.0;
      if (byte >= 0xc0 && byte < 0xe0) width += 0.7;
    } else if (ch == 'm' || ch == 'w' || ch == 'M' || ch == 'W' || ch == '@' || ch == '%') {
      width += 0.92;
    } else if (ch >= 'A' && ch <= 'Z') {
      width += 0.71;
    } else if (std::string_view("iljtfrI .,:;'|!()[]-").find(ch) != std::string_view::npos) {
      width += 0.36;
    } else {
      width += 0.58;
    }
  }
  return width;
}

LabelField::LabelField(double width, double height)
    : m_columns(std::max(1, Square(width))),
      m_rows(std::max(1, Square(height))),
      m_cover(static_cast<std::size_t>(m_columns) * static_cast<std::size_t>(m_rows), 0) {}

void LabelField::AddLine(const PagePoint& a, const PagePoint& b, int weight) {
  const double length = std::max(std::abs(b.x - a.x), std::abs(b.y - a.y));
  const int steps = static_cast<int>(length / kSquare) + 1;
  for (int i = 0; i <= steps; ++i) {
    const double t = static_cast<double>(i) / steps;
    const std::int32_t column = Square(a.x + t * (b.x - a.x)), row = Square(a.y + t * (b.y - a.y));
    if (column < 0 || row < 0 || column >= m_columns || row >= m_rows) continue;
    std::uint8_t& cover = m_cover[At(column, row)];
    if (cover < kSymbol) cover = static_cast<std::uint8_t>(std::min(cover + weight, kSymbol - 1));
  }
}

void LabelField::AddSymbol(const PagePoint& middle, double radius, bool isMarked) {
  Fill({middle.x - radius, middle.y - radius, middle.x + radius, middle.y + radius},
       isMarked ? kTaken : kSymbol);
}

double LabelField::Cover(const Rectangle& rectangle) const {
  const std::int32_t left = Square(rectangle.left), top = Square(rectangle.top);
  const std::int32_t right = Square(rectangle.right), bottom = Square(rectangle.bottom);
  if (left < 0 || top < 0 || right >= m_columns || bottom >= m_rows) return kBlocked;
  std::int32_t covered = 0;
  bool hasSymbol = false;
  for (std::int32_t row = top; row <= bottom; ++row) {
    for (std::int32_t column = left; column <= right; ++column) {
      const std::uint8_t cover = m_cover[At(column, row)];
      if (cover == kTaken) return kBlocked;
      hasSymbol = hasSymbol || cover == kSymbol;
      covered += cover;
    }
  }
  // A line straight along the text counts as all of it.
  const double share = static_cast<double>(covered) / static_cast<double>(right - left + 1);
  return hasSymbol ? kOverSymbol + share : share;
}

void LabelField::Take(const Rectangle& rectangle) { Fill(rectangle, kTaken); }

void LabelField::Fill(const Rectangle& rectangle, std::uint8_t cover) {
  const std::int32_t left = std::max(0, Square(rectangle.left));
  const std::int32_t top = std::max(0, Square(rectangle.top));
  const std::int32_t right = std::min(m_columns - 1, Square(rectangle.right));
  const std::int32_t bottom = std::min(m_rows - 1, Square(rectangle.bottom));
  for (std::int32_t row = top; row <= bottom; ++row) {
    for (std::int32_t column = left; column <= right; ++column) {
      std::uint8_t& square = m_cover[At(column, row)];
      square = std::max(square, cover);
    }
  }
}

std::vector<SketchLabel> PlaceLabels(LabelField& field, const std::vector<PagePoint>& points,
                                     const std::vector<std::string_view>& names,
                                     const std::vector<std::int32_t>& order,
                                     const std::vector<bool>& isMarked, const LabelStyle& style) {
  std::vector<SketchLabel> labels;
  for (const std::int32_t point : order) {
    const auto i = static_cast<std::size_t>(point);
    if (names[i].empty()) continue;
    const double width = TextWidth(names[i]) * style.fontSize;
    std::optional<Candidate> best;
    double bestCost = 0.0;
    for (const Side& side : kSides) {
      const Candidate candidate = MakeCandidate(points[i], width, side, style);
      const double cover = field.Cover(candidate.rectangle);
      if (cover > style.mostCover && (cover >= LabelField::kBlocked || !isMarked[i])) continue;
      if (best && cover + side.cost >= bestCost) continue;
      best = candidate;
      bestCost = cover + side.cost;
      if (cover == 0.0 && side.cost == 0.0) break;
    }
    if (!best) continue;
    best->label.point = point;
    field.Take(best->rectangle);
    labels.push_back(best->label);
  }
  return labels;
}

}  // namespace brenu
