#include "review/text.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/angles.h"
#include "core/text_number.h"
#include "review/encoding.h"

namespace brenu {

namespace {
std::string TwoDigits(long value) {
  return std::string(value < 10 ? 1 : 0, '0') + std::to_string(value);
}
}  // namespace

std::string Fixed(double value, int decimals) {
  if (!std::isfinite(value)) return "-";
  std::string text;
  AppendFixed(text, value, decimals);
  if (text.starts_with('-') && text.find_first_of("123456789") == std::string::npos)
    text.erase(0, 1);
  return text;
}

std::string DegreesMinutes(double dms) {
  if (!std::isfinite(dms)) return "-";
  const auto minutes = static_cast<int>(std::lround(DmsToRad(dms) * 60.0 * 180.0 / kPi));
  return std::to_string(minutes / 60) + ' ' + TwoDigits(minutes % 60);
}

std::string DegreesMinutesSeconds(double rad) {
  if (!(rad >= 0.0 && rad < kTwoPi)) return "-";
  constexpr long kFullCircle = 360L * 36000L;
  const long tenths = std::lround(rad * kRho * 10.0) % kFullCircle;
  std::string text = TwoDigits(tenths / 36000) + ' ' + TwoDigits(tenths / 600 % 60) + ' ';
  return text + TwoDigits(tenths / 10 % 60) + '.' + std::to_string(tenths % 10);
}

std::string Ratio(std::int32_t n) {
  return n == std::numeric_limits<std::int32_t>::max() ? "-" : "1:" + std::to_string(n);
}

std::size_t WidthOf(std::string_view text) {
  std::size_t width = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if ((byte & 0xC0) == 0x80) continue;  // in the middle of a character
    width += byte >= 0xE3 && byte <= 0xED ? 2 : 1;
  }
  return width;
}

std::string Printable(std::string_view text) {
  std::string shown = ToUtf8(text);
  std::replace_if(
      shown.begin(), shown.end(), [](unsigned char c) { return c < 0x20 || c == 0x7f; }, '?');
  return shown;
}

std::string Quoted(std::string_view text) {
  constexpr std::size_t kLongest = 80;
  const std::string shown = Printable(text);
  if (shown.size() <= kLongest) return '"' + shown + '"';
  std::size_t end = kLongest;
  const auto continues = [&](std::size_t at) {
    return (static_cast<unsigned char>(shown[at]) & 0xC0U) == 0x80U;
  };
  while (end > 0 && continues(end)) --end;
  return '"' + shown.substr(0, end) + "...\"";
}

std::string Counted(std::size_t count, Language language, const Words& one, const char* several) {
  const bool isPlural = language == Language::kEnglish && count != 1;
  return std::to_string(count) + ' ' + (isPlural ? several : one.In(language));
}

std::string Line(std::string_view station, std::string_view target) {
  return Printable(station) + " - " + Printable(target);
}

std::string Points(std::span<const std::string_view> names, Language language) {
  constexpr std::size_t kMost = 10;
  const std::size_t shown = std::min(names.size(), kMost);
  const char* const comma = Words{", ", "、"}.In(language);
  const char* const last = Words{" and ", "、"}.In(language);
  std::string list =
      (names.size() == 1 ? Words{"the point ", "点 "} : Words{"the points ", "点 "}).In(language);
  for (std::size_t i = 0; i < shown; ++i) {
    const bool isLast = i + 1 == names.size();
    if (i > 0) list += isLast ? last : comma;
    list += Printable(names[i]);
  }
  if (shown < names.size()) {
    list += Words{" and ", " 等，另有 "}.In(language) + std::to_string(names.size() - shown) +
            Words{" more", " 个"}.In(language);
  }
  return list;
}

}  // namespace brenu
