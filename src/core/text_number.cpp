#include "core/text_number.h"

#include <limits>

#include "core/double_chars.h"

namespace brenu {

namespace {

std::string_view SkipBlanks(std::string_view text) {
  const std::size_t start = text.find_first_not_of(" \t\n\v\f\r");
  return start == std::string_view::npos ? std::string_view{} : text.substr(start);
}

// Takes a sign off the front.
bool TakeMinus(std::string_view& text) {
  if (text.empty() || (text.front() != '-' && text.front() != '+')) return false;
  const bool minus = text.front() == '-';
  text.remove_prefix(1);
  return minus;
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Whether a decimal number that does not fit a double is too large, not too small: the exponent of
// its leading digit decides.
bool IsTooLarge(std::string_view number) {
  std::int64_t leading = 0;  // power of ten of the first nonzero digit, plus one
  bool point = false;
  bool nonzero = false;
  std::size_t i = 0;
  for (; i < number.size() && (IsDigit(number[i]) || number[i] == '.'); ++i) {
    if (number[i] == '.') {
      point = true;
      continue;
    }
    nonzero = nonzero || number[i] != '0';
    if (!point && nonzero) ++leading;
    if (point && !nonzero) --leading;
  }
  const std::string_view exponent = i < number.size() ? number.substr(i + 1) : std::string_view{};
  return leading + ParseInt(exponent) > 0;
}

}  // namespace

ParsedDouble ParseWholeDouble(std::string_view text) {
  text = SkipBlanks(text);
  const bool minus = TakeMinus(text);
  if (text.empty() || text.front() == '-') return {0.0, false};
  double value = 0.0;
  const char* const end = text.data() + text.size();
  const auto result = FromChars(text.data(), end, value);
  const auto length = static_cast<std::size_t>(result.ptr - text.data());
  if (result.ec == std::errc::result_out_of_range) {
    const bool large = IsTooLarge(text.substr(0, length));
    value = large ? std::numeric_limits<double>::infinity() : 0.0;
  }
  const bool isWhole = length > 0 && SkipBlanks(text.substr(length)).empty();
  return {minus ? -value : value, isWhole};
}

double ParseDouble(std::string_view text) { return ParseWholeDouble(text).value; }

std::int32_t ParseInt(std::string_view text) {
  text = SkipBlanks(text);
  const bool minus = TakeMinus(text);
  std::int64_t value = 0;
  constexpr std::int64_t kLimit = std::numeric_limits<std::int32_t>::max();
  for (const char c : text) {
    if (!IsDigit(c)) break;
    value = value * 10 + (c - '0');
    if (value > kLimit + 1) value = kLimit + 1;
  }
  if (minus) return static_cast<std::int32_t>(-value);
  return static_cast<std::int32_t>(value > kLimit ? kLimit : value);
}

void AppendFixed(std::string& out, double value, int decimals) {
  char buffer[kDoubleRoom];
  out.append(buffer, FixedChars(buffer, buffer + kDoubleRoom, value, decimals));
}

void AppendGeneral(std::string& out, double value) {
  char buffer[kDoubleRoom];
  out.append(buffer, GeneralChars(buffer, buffer + kDoubleRoom, value, 6));
}

void AppendShortest(std::string& out, double value) {
  char buffer[kDoubleRoom];
  out.append(buffer, ShortestChars(buffer, buffer + kDoubleRoom, value));
}

void AppendInt(std::string& out, std::int32_t value) { out += std::to_string(value); }

}  // namespace brenu
