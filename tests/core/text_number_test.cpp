#include "core/text_number.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>
#include <string>
#include <utility>

namespace brenu {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::string Fixed(double value) {
  std::string text;
  AppendFixed(text, value, 6);
  return text;
}

std::string General(double value) {
  std::string text;
  AppendGeneral(text, value);
  return text;
}

TEST(TextNumber, DoublesAreReadFromTheLongestValidPrefix) {
  const struct {
    const char* text;
    double value;
  } cases[] = {
      {"12.5", 12.5},    {" \t+12.5", 12.5}, {"-.5", -0.5},
      {"5.", 5.0},       {"1e3", 1000.0},    {"1E+3", 1e3},
      {"2.5e-1m", 0.25}, {"7e", 7.0},        {"7e+", 7.0},
      {"1.5.2", 1.5},    {"3,7", 3.0},       {"", 0.0},
      {"  ", 0.0},       {"x1", 0.0},        {"+", 0.0},
      {"+-1", 0.0},      {"--1", 0.0},       {"-+1", 0.0},
      {". 5", 0.0},      {"e5", 0.0},        {"00012", 12},
      {"1\r", 1.0},      {"0.1", 0.1},       {"- 1", 0.0},
      {"1 2", 1.0},      {"-0", -0.0},       {"123456789012345678901", 123456789012345678901.0},
  };
  for (const auto& c : cases) EXPECT_EQ(ParseDouble(c.text), c.value) << '"' << c.text << '"';
}

TEST(TextNumber, DoublesOutOfRangeGiveInfinityOrZero) {
  EXPECT_EQ(ParseDouble("1e400"), kInfinity);
  EXPECT_EQ(ParseDouble("-1e400"), -kInfinity);
  EXPECT_EQ(ParseDouble("0.00001e400"), kInfinity);
  EXPECT_EQ(ParseDouble("1" + std::string(400, '0')), kInfinity);
  EXPECT_EQ(ParseDouble("1e99999999999"), kInfinity);
  EXPECT_EQ(ParseDouble("1e-400"), 0.0);
  EXPECT_EQ(ParseDouble("1000e-400"), 0.0);
  EXPECT_EQ(ParseDouble("1e-99999999999"), 0.0);
  EXPECT_EQ(ParseDouble("0." + std::string(400, '0') + "1"), 0.0);
  EXPECT_EQ(ParseDouble("0e999"), 0.0);
  EXPECT_EQ(ParseDouble("1" + std::string(400, '0') + "e-400"), 1.0);
}

TEST(TextNumber, WholeNumbersStopAtTheirLimits) {
  constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
  constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
  const std::pair<const char*, std::int32_t> cases[] = {{"12", 12},
                                                        {" -7x", -7},
                                                        {"+4", 4},
                                                        {"3.9", 3},
                                                        {"010", 10},
                                                        {"", 0},
                                                        {"x", 0},
                                                        {"--1", 0},
                                                        {"- 1", 0},
                                                        {"1e3", 1},
                                                        {"2147483647", kMost},
                                                        {"-2147483648", kLeast},
                                                        {"2147483648", kMost},
                                                        {"99999999999999999999", kMost},
                                                        {"-99999999999999999999", kLeast}};
  for (const auto& [text, value] : cases) EXPECT_EQ(ParseInt(text), value) << text;
}

TEST(TextNumber, FixedNotationRoundsTheExactBinaryValue) {
  EXPECT_EQ(Fixed(3512345.1234), "3512345.123400");
  EXPECT_EQ(Fixed(-0.5), "-0.500000");
  EXPECT_EQ(Fixed(0.0000005), "0.000000");  // stored just below the half
  EXPECT_EQ(Fixed(0.0000015), "0.000002");  // stored just above it: 1.50000000000000003e-06
  EXPECT_EQ(Fixed(0.5e-7 + 1.0), "1.000000");
  EXPECT_EQ(Fixed(1e22), "10000000000000000000000.000000");
  EXPECT_EQ(Fixed(-std::numeric_limits<double>::max()).size(), 1 + 309 + 7U);
}

TEST(TextNumber, GeneralNotationHasSixDigits) {
  EXPECT_EQ(General(2.5), "2.5");
  EXPECT_EQ(General(5.0), "5");
  EXPECT_EQ(General(0.00123456789), "0.00123457");
  EXPECT_EQ(General(5e-6), "5e-06");
  EXPECT_EQ(General(123456.5), "123456");  // a tie goes to the even digit
  EXPECT_EQ(General(1234567.0), "1.23457e+06");
  EXPECT_EQ(General(-1e100), "-1e+100");
}

// The locale of the host stays out of files: neither a comma nor a thousands mark.
TEST(TextNumber, IgnoresTheLocaleOfTheHost) {
  const std::string before = std::setlocale(LC_ALL, nullptr);
  const char* german = nullptr;
  for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "de_DE", "de-DE", "German_Germany"}) {
    if (german == nullptr) german = std::setlocale(LC_ALL, name);
  }
  if (german == nullptr) GTEST_SKIP() << "no locale with a decimal comma";
  EXPECT_EQ(std::to_string(0.5)[1], ',');
  EXPECT_EQ(ParseDouble("1234.5"), 1234.5);
  EXPECT_EQ(ParseDouble("1234,5"), 1234.0);
  EXPECT_EQ(Fixed(1234.5), "1234.500000");
  EXPECT_EQ(General(1234.5), "1234.5");
  std::string text;
  AppendInt(text, -1234567);
  EXPECT_EQ(text, "-1234567");
  std::setlocale(LC_ALL, before.c_str());
}

}  // namespace
}  // namespace brenu
