#include "core/double_chars.h"

#ifdef __EMSCRIPTEN__

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace brenu {

namespace {

const char* SkipDigits(const char* at, const char* last) {
  while (at != last && *at >= '0' && *at <= '9') ++at;
  return at;
}

// The end of the longest piece that is a decimal number without a plus sign; `first` for none.
const char* EndOfDecimal(const char* first, const char* last) {
  const char* at = first;
  if (at != last && *at == '-') ++at;
  const char* const whole = at;
  at = SkipDigits(at, last);
  std::ptrdiff_t digits = at - whole;
  if (at != last && *at == '.') {
    const char* const end = SkipDigits(at + 1, last);
    digits += end - at - 1;
    at = end;
  }
  if (digits == 0) return first;
  if (at == last || (*at != 'e' && *at != 'E')) return at;
  const char* exponent = at + 1;
  if (exponent != last && (*exponent == '-' || *exponent == '+')) ++exponent;
  const char* const end = SkipDigits(exponent, last);
  return end == exponent ? at : end;
}

// "inf", "infinity" and "nan", the words that from_chars knows.
const char* EndOfWord(const char* first, const char* last) {
  std::string_view text(first, static_cast<std::size_t>(last - first));
  if (text.starts_with('-')) text.remove_prefix(1);
  for (const std::string_view word : {"infinity", "inf", "nan"}) {
    bool is = text.size() >= word.size();
    for (std::size_t i = 0; is && i < word.size(); ++i) is = (text[i] | 0x20) == word[i];
    if (is) return text.data() + word.size();
  }
  return first;
}

char* Written(char* first, char* last, int length) {
  const std::ptrdiff_t room = last - first - 1;
  return first + (length < room ? length : room);
}

std::size_t Room(const char* first, const char* last) {
  return static_cast<std::size_t>(last - first);
}

}  // namespace

std::from_chars_result FromChars(const char* first, const char* last, double& value) {
  const char* end = EndOfDecimal(first, last);
  const bool isDecimal = end != first;
  if (!isDecimal) end = EndOfWord(first, last);
  if (end == first) return {first, std::errc::invalid_argument};
  const std::string text(first, end);
  const double read = std::strtod(text.c_str(), nullptr);
  const bool isZero = read == 0.0 && text.find_first_of("123456789") < text.find_first_of("eE");
  if (isDecimal && (std::isinf(read) || isZero)) return {end, std::errc::result_out_of_range};
  value = read;
  return {end, std::errc()};
}

char* ShortestChars(char* first, char* last, double value) {
  int length = 0;
  for (int digits = 15; digits <= 17; ++digits) {
    length = std::snprintf(first, Room(first, last), "%.*g", digits, value);
    if (std::strtod(first, nullptr) == value) break;
  }
  return Written(first, last, length);
}

char* FixedChars(char* first, char* last, double value, int decimals) {
  return Written(first, last, std::snprintf(first, Room(first, last), "%.*f", decimals, value));
}

char* GeneralChars(char* first, char* last, double value, int digits) {
  return Written(first, last, std::snprintf(first, Room(first, last), "%.*g", digits, value));
}

}  // namespace brenu

#endif
