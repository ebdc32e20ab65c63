// Numbers in text, the same under any locale of the host.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace brenu {

// Leading blanks, a sign, then the longest prefix that is a number; 0 when there is none.  Values
// out of range give an infinity, zero, or the nearest whole number.  Decimal notation only.
double ParseDouble(std::string_view text);
// The same, and whether the number makes up the whole text but for blanks around it.
struct ParsedDouble {
  double value;
  bool isWhole;
};
ParsedDouble ParseWholeDouble(std::string_view text);
std::int32_t ParseInt(std::string_view text);

// Fixed notation with `decimals` places, rounded to nearest from the exact binary value.
void AppendFixed(std::string& out, double value, int decimals);
// The shorter of fixed and exponent notation with 6 significant digits, no trailing zeros.
void AppendGeneral(std::string& out, double value);
// The shortest text that reads as the same double.
void AppendShortest(std::string& out, double value);
void AppendInt(std::string& out, std::int32_t value);

}  // namespace brenu
