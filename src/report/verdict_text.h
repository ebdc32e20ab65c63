#pragma once

#include <string>
#include <vector>

#include "report/report.h"
#include "review/language.h"

namespace brenu {

// The verdict as lines of text: passed or not, why, what helps on.
struct VerdictWords {
  std::string headline;              // "Passed" or "Not passed"
  std::vector<std::string> reasons;  // the first is what to look at first
  std::vector<std::string> remarks;
  std::string next;  // "Next: brenu ..."
};
VerdictWords WordsOf(const Verdict& verdict, Language language);

// The same as a text of several lines.
std::string VerdictText(const Verdict& verdict, Language language);

}  // namespace brenu
