#include "review/sentence.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <vector>

#include "core/text_number.h"
#include "review/observation_kind.h"
#include "review/sentence_table.h"
#include "review/text.h"

namespace brenu {

namespace {

// Refusals of the store and of lines say where when they come from a file.
bool QuotesLine(Code code) { return code < BRENU_HEADER_UNKNOWN; }

std::string NameAt(const Finding& finding, std::size_t number) {
  return number <= finding.names.size() ? Printable(finding.names[number - 1]) : "?";
}

double ValueAt(const Finding& finding, std::size_t number) {
  return number <= finding.values.size() ? finding.values[number - 1] : 0.0;
}

std::string ValueText(double value, std::string_view format) {
  if (format != "g") return Fixed(value, format.empty() ? 0 : format.front() - '0');
  std::string text;
  AppendGeneral(text, value);
  return text;
}

std::size_t NumberIn(std::string_view placeholder, std::size_t place) {
  return place < placeholder.size() ? static_cast<std::size_t>(placeholder[place] - '0') : 0;
}

std::string Count(double count, const std::string& what) {
  return Fixed(count, 0) + ' ' + what + (count == 1.0 ? "" : "s");
}

// Two kinds of things, "direction|distance", counted by the first two values.
std::string OnlyThese(std::string_view kinds, const Finding& finding) {
  const std::size_t bar = kinds.find('|');
  const std::string first = Count(ValueAt(finding, 1), std::string(kinds.substr(0, bar)));
  const std::string second = Count(ValueAt(finding, 2), std::string(kinds.substr(bar + 1)));
  if (ValueAt(finding, 1) + ValueAt(finding, 2) == 0.0) return "no observation";
  if (ValueAt(finding, 2) == 0.0) return first + " only";
  if (ValueAt(finding, 1) == 0.0) return second + " only";
  return first + " and " + second + " only";
}

ObsKind KindIn(const Finding& finding, std::string_view placeholder) {
  const double number = ValueAt(finding, NumberIn(placeholder, 1));
  return static_cast<ObsKind>(std::clamp(number, 0.0, kObsKindCount - 1.0));
}

// "3.2 mm smaller", the opposite of an error of that kind.
std::string Correction(ObsKind kind, double error) {
  const bool isAngle = IsAngle(kind);
  const double amount = std::fabs(error) * (isAngle ? 1.0 : 1000.0);
  return Fixed(amount, 1) + (isAngle ? "\"" : " mm") + (error < 0.0 ? " greater" : " smaller");
}

std::string Fill(std::string_view text, const Finding& finding);

std::string Replacement(std::string_view placeholder, const Finding& finding) {
  if (placeholder == "x") return Quoted(finding.excerpt);
  if (placeholder == "points") {
    return Points(std::vector<std::string_view>(finding.names.begin(), finding.names.end()));
  }
  switch (placeholder.front()) {
    case 'v':
      return ValueText(ValueAt(finding, NumberIn(placeholder, 1)),
                       placeholder.size() > 3 ? placeholder.substr(3) : "");
    case 'n':
      return ValueAt(finding, NumberIn(placeholder, 1)) == 0.0 ? "heights" : "plane";
    case 'k':
      return NameOf(KindIn(finding, placeholder));
    case 'p':
      return std::string(NameOf(KindIn(finding, placeholder))) + 's';
    case 'u':
      return Correction(KindIn(finding, placeholder), ValueAt(finding, NumberIn(placeholder, 2)));
    case '+': {
      const double more = ValueAt(finding, NumberIn(placeholder, 1));
      return more > 0.0 ? " and " + Fixed(more, 0) + " more" : "";
    }
    case '&':
      return OnlyThese(placeholder.substr(1), finding);
    case '=': {
      const double value = ValueAt(finding, NumberIn(placeholder, 1));
      return ValueText(std::fabs(value), placeholder.substr(3, 1)) +
             std::string(placeholder.substr(4)) + (value < 0.0 ? " smaller" : " greater");
    }
    case '?':
      return ValueAt(finding, NumberIn(placeholder, 1)) != 0.0
                 ? Fill(placeholder.substr(3), finding)
                 : "";
    default:
      return NameAt(finding, NumberIn(placeholder, 0));
  }
}

// The brace that closes the one at `open`.
std::size_t Closing(std::string_view text, std::size_t open) {
  std::size_t close = open;
  for (int depth = 0; close < text.size(); ++close) {
    if (text[close] == '{') ++depth;
    if (text[close] == '}' && --depth == 0) break;
  }
  return close;
}

std::string Fill(std::string_view text, const Finding& finding) {
  std::string filled;
  while (!text.empty()) {
    const std::size_t open = text.find('{');
    filled += text.substr(0, open);
    if (open == std::string_view::npos) break;
    const std::size_t close = Closing(text, open);
    filled += Replacement(text.substr(open + 1, close - open - 1), finding);
    text.remove_prefix(close + 1);
  }
  return filled;
}

}  // namespace

std::string SentenceOf(const Finding& finding, Language) {
  const SentenceEntry* entry = FindSentence(finding.code);
  if (entry == nullptr) return "finding " + std::to_string(static_cast<int>(finding.code));
  std::string sentence = Fill(entry->text, finding);
  if (finding.line == 0) return sentence;
  std::string where = "line " + std::to_string(finding.line);
  if (QuotesLine(finding.code)) {
    where += ' ' + Quoted(finding.excerpt);
    if (sentence.find(';') == std::string::npos) sentence += "; correct this line";
  }
  return where + ": " + sentence;
}

const char* IdOf(std::int32_t code) {
  const SentenceEntry* entry = FindSentence(code);
  return entry == nullptr ? "nothing" : entry->id;
}

}  // namespace brenu
