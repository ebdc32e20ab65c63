// Numbers in text; that the host's locale stays out, reliability/environment_test.cpp shows.
#include "core/text_number.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace brenu {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// By value, the texts that are read as it.
template <typename Number>
using Readings = std::vector<std::pair<Number, std::vector<std::string>>>;

TEST(TextNumber, DoublesAreReadFromTheLongestValidPrefix) {
  const std::string zeros(400, '0');
  const Readings<double> readings = {
      {12.5, {"12.5", " \t+12.5"}},
      {-0.5, {"-.5"}},
      {1000.0, {"1e3", "1E+3"}},
      {0.25, {"2.5e-1m"}},
      {7.0, {"7e", "7e+", "7.", "7.0.2", "7,5", "007", "7\r", "7 2"}},
      {0.1, {"0.1"}},
      {123456789012345678901.0, {"123456789012345678901"}},
      {0.0, {"", "  ", "x1", "+", "+-1", "--1", "-+1", ". 5", "e5", "- 1", "-0"}},
      // Out of range they are infinite or zero.
      {kInfinity, {"1e400", "0.00001e400", "1" + zeros, "1e99999999999"}},
      {-kInfinity, {"-1e400"}},
      {0.0, {"1e-400", "1000e-400", "1e-99999999999", "0." + zeros + "1", "0e999"}},
      {1.0, {"1" + zeros + "e-400"}}};
  for (const auto& [value, texts] : readings) {
    for (const std::string& text : texts) EXPECT_EQ(ParseDouble(text), value) << text;
  }
}

TEST(TextNumber, WholeNumbersStopAtTheirLimits) {
  constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
  constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
  const Readings<std::int32_t> readings = {
      {12, {"12", "012"}},
      {-7, {" -7x"}},
      {4, {"+4", "4.9", "4e3"}},
      {0, {"", "x", "--1", "- 1"}},
      {kMost, {"2147483647", "2147483648", "99999999999999999999"}},
      {kLeast, {"-2147483648", "-99999999999999999999"}}};
  for (const auto& [value, texts] : readings) {
    for (const std::string& text : texts) EXPECT_EQ(ParseInt(text), value) << text;
  }
}

TEST(TextNumber, FixedNotationRoundsTheExactBinaryValue) {
  const std::pair<double, const char*> texts[] = {
      {3512345.1234, "3512345.123400"}, {-0.5, "-0.500000"},
      {0.0000005, "0.000000"},  // stored just below the half
      {0.0000015, "0.000002"},  // stored just above it: 1.50000000000000003e-06
      {0.5e-7 + 1.0, "1.000000"},       {1e22, "10000000000000000000000.000000"}};
  for (const auto& [value, expected] : texts) {
    std::string text = "=";
    AppendFixed(text, value, 6);
    EXPECT_EQ(text, std::string("=") + expected);
  }
  std::string largest;
  AppendFixed(largest, -std::numeric_limits<double>::max(), 6);
  EXPECT_EQ(largest.size(), 1 + 309 + 7U);
}

TEST(TextNumber, GeneralNotationHasSixDigits) {
  std::string text;
  for (const double value : {2.5, 5.0, 0.00123456789, 5e-6, 123456.5, 1234567.0, -1e100}) {
    AppendGeneral(text, value);
    text += ' ';
  }
  // A tie goes to the even digit.
  EXPECT_EQ(text, "2.5 5 0.00123457 5e-06 123456 1.23457e+06 -1e+100 ");
}

}  // namespace
}  // namespace brenu
