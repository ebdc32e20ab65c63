#include "review/sentence.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <string_view>

#include "review/sentence_table.h"

namespace brenu {
namespace {

// What stands in braces, without the words in it.
std::multiset<std::string> PlaceholdersOf(std::string_view text) {
  std::multiset<std::string> all;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '{') continue;
    const std::size_t end = text.find_first_of(text[i + 1] == '&' ? "&" : "} ", i + 1);
    all.emplace(text.substr(i, end - i));
  }
  return all;
}

TEST(SentenceTable, BothLanguagesSayTheSame) {
  int count = 0;
  for (int code = 1; code < 1000; ++code) {
    const SentenceEntry* entry = FindSentence(code);
    if (entry == nullptr) continue;
    ++count;
    EXPECT_EQ(entry->code, code);
    const std::string_view english = entry->text.english;
    const std::string_view chinese = entry->text.chinese;
    EXPECT_EQ(PlaceholdersOf(english), PlaceholdersOf(chinese)) << entry->id;
    EXPECT_GT(english.size(), 10U);
    EXPECT_TRUE(std::any_of(chinese.begin(), chinese.end(), [](char c) {
      return static_cast<unsigned char>(c) >= 0xE4;
    })) << entry->id;
  }
  EXPECT_GT(count, 120);
}

TEST(Sentence, WordsOfBothLanguages) {
  const auto chinese = [](const Finding& f) { return SentenceOf(f, Language::kChinese); };
  Finding line = Error(BRENU_POINT_FIELDS);
  line.line = 3;
  line.excerpt = "B,00,,";
  EXPECT_EQ(
      SentenceOf(line),
      "line 3 \"B,00,,\": a point line has the five fields name,type,X,Y,H; correct this line");
  EXPECT_EQ(chinese(line), "第 3 行 \"B,00,,\"：点的行应有五项：点名,类型,X,Y,H；请改正此行");
  EXPECT_EQ(chinese(Warning(BRENU_POINT_LEFT_OUT, {"P"}, {2, 1})),
            "点 P 未参加平差：仅有方向 2 个、边长 1 个；请从另一个已知点观测该点，或加测一条边长");
  EXPECT_EQ(chinese(Warning(BRENU_POINTS_WEAK, {"A", "B", "C"})),
            "检核不足：点 A、B、C；请从别处再观测一次");
  EXPECT_EQ(chinese(Warning(BRENU_OBSERVATION_SUSPECT, {"A", "B"}, {1, 5.26, 3.5, -0.0123})),
            "边长 A - B 不符：检验值为 5.3，临界值为 3.50；若增大 12.3 mm 则相符；请检查");
  EXPECT_EQ(chinese(Warning(BRENU_LINES_SKIPPED, {}, {4})).find("此行（另有 4 处）在各节之外"), 0U);
}

}  // namespace
}  // namespace brenu
