#include "report/verdict_text.h"

#include "review/sentence.h"

namespace brenu {

namespace {

constexpr Words kPassed = {"Passed", "通过"};
constexpr Words kNotPassed = {"Not passed", "未通过"};
constexpr Words kFirst = {"first look here: ", "首先检查："};
constexpr Words kNext = {"Next: ", "下一步："};

}  // namespace

VerdictWords WordsOf(const Verdict& verdict, Language language) {
  VerdictWords words;
  words.headline = (verdict.passed ? kPassed : kNotPassed).In(language);
  for (const Finding& finding : verdict.reasons) {
    const bool isFirstOfMany = words.reasons.empty() && verdict.reasons.size() > 1;
    words.reasons.push_back((isFirstOfMany ? kFirst.In(language) : "") +
                            SentenceOf(finding, language));
  }
  for (const Finding& finding : verdict.remarks) {
    words.remarks.push_back(SentenceOf(finding, language));
  }
  words.next = kNext.In(language) + verdict.next;
  return words;
}

std::string VerdictText(const Verdict& verdict, Language language) {
  const VerdictWords words = WordsOf(verdict, language);
  std::string text = words.headline + '\n';
  for (const std::string& reason : words.reasons) text += "  - " + reason + '\n';
  for (const std::string& remark : words.remarks) text += "  * " + remark + '\n';
  return text + words.next + '\n';
}

}  // namespace brenu
