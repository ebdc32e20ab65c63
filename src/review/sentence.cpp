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

std::string ValueText(double value, std::string_view format) {
  if (format != "g") return Fixed(value, format.empty() ? 0 : format.front() - '0');
  std::string text;
  AppendGeneral(text, value);
  return text;
}

std::size_t NumberIn(std::string_view placeholder, std::size_t place) {
  return place < placeholder.size() ? static_cast<std::size_t>(placeholder[place] - '0') : 0;
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

// Puts one finding into the words of one language.
class Wording {
 public:
  Wording(const Finding& finding, Language language) : m_finding(finding), m_language(language) {}

  std::string Fill(std::string_view text) const;
  std::string Where() const;

 private:
  const char* In(const Words& words) const { return words.In(m_language); }
  bool IsEnglish() const { return m_language == Language::kEnglish; }

  std::string NameAt(std::size_t number) const;
  double ValueAt(std::size_t number) const;
  ObsKind KindIn(std::string_view placeholder) const;
  std::string Replacement(std::string_view placeholder) const;
  std::string Count(double count, std::string_view what) const;
  std::string OnlyThese(std::string_view kinds) const;
  std::string More(double more) const;
  std::string Changed(const std::string& amount, bool isGreater) const;
  std::string Correction(ObsKind kind, double error) const;

  const Finding& m_finding;
  Language m_language;
};

std::string Wording::NameAt(std::size_t number) const {
  const bool has = number >= 1 && number <= m_finding.names.size();
  return has ? Printable(m_finding.names[number - 1]) : "?";
}

double Wording::ValueAt(std::size_t number) const {
  const bool has = number >= 1 && number <= m_finding.values.size();
  return has ? m_finding.values[number - 1] : 0.0;
}

ObsKind Wording::KindIn(std::string_view placeholder) const {
  const double number = ValueAt(NumberIn(placeholder, 1));
  return static_cast<ObsKind>(std::clamp(number, 0.0, kObsKindCount - 1.0));
}

// "2 distances"
std::string Wording::Count(double count, std::string_view what) const {
  std::string text(what);
  if (IsEnglish()) return Fixed(count, 0) + ' ' + text + (count == 1.0 ? "" : "s");
  return text + ' ' + Fixed(count, 0) + " 个";
}

// Two kinds of things, "direction|distance", counted by the first two values.
std::string Wording::OnlyThese(std::string_view kinds) const {
  const std::size_t bar = kinds.find('|');
  std::string counts;
  for (const std::size_t number : {1U, 2U}) {
    const double count = ValueAt(number);
    if (count == 0.0) continue;
    if (!counts.empty()) counts += In({" and ", "、"});
    counts += Count(count, number == 1 ? kinds.substr(0, bar) : kinds.substr(bar + 1));
  }
  if (counts.empty()) return In({"no observation", "没有观测值"});
  return IsEnglish() ? counts + " only" : "仅有" + counts;
}

std::string Wording::More(double more) const {
  if (!(more > 0.0)) return "";
  return In({" and ", "（另有 "}) + Fixed(more, 0) + In({" more", " 处）"});
}

// "3.2 mm smaller"
std::string Wording::Changed(const std::string& amount, bool isGreater) const {
  if (IsEnglish()) return amount + (isGreater ? " greater" : " smaller");
  return (isGreater ? "增大 " : "减小 ") + amount;
}

// The opposite of an error of that kind.
std::string Wording::Correction(ObsKind kind, double error) const {
  const bool isAngle = IsAngle(kind);
  const double amount = std::fabs(error) * (isAngle ? 1.0 : 1000.0);
  return Changed(Fixed(amount, 1) + (isAngle ? In({"\"", "″"}) : " mm"), error < 0.0);
}

std::string Wording::Replacement(std::string_view placeholder) const {
  if (placeholder == "x") return Quoted(m_finding.excerpt);
  if (placeholder == "points") {
    return Points(std::vector<std::string_view>(m_finding.names.begin(), m_finding.names.end()),
                  m_language);
  }
  const double value = ValueAt(NumberIn(placeholder, 1));
  switch (placeholder.front()) {
    case 'v':
      return ValueText(value, placeholder.size() > 3 ? placeholder.substr(3) : "");
    case 'n':
      return In(value == 0.0 ? Words{"heights", "高程网"} : Words{"plane", "平面网"});
    case 'k':
      return In(WordsOf(KindIn(placeholder)));
    case 'p':
      return In(PluralOf(KindIn(placeholder)));
    case 'u':
      return Correction(KindIn(placeholder), ValueAt(NumberIn(placeholder, 2)));
    case '+':
      return More(value);
    case '&':
      return OnlyThese(placeholder.substr(1));
    case '=':
      return Changed(ValueText(std::fabs(value), placeholder.substr(3, 1)) +
                         std::string(placeholder.substr(4)),
                     !(value < 0.0));
    case '?':
      return value != 0.0 ? Fill(placeholder.substr(3)) : "";
    default:
      return NameAt(NumberIn(placeholder, 0));
  }
}

std::string Wording::Fill(std::string_view text) const {
  std::string filled;
  while (!text.empty()) {
    const std::size_t open = text.find('{');
    filled += text.substr(0, open);
    if (open == std::string_view::npos) break;
    const std::size_t close = Closing(text, open);
    filled += Replacement(text.substr(open + 1, close - open - 1));
    text.remove_prefix(close + 1);
  }
  return filled;
}

// "line 3"
std::string Wording::Where() const {
  return In({"line ", "第 "}) + std::to_string(m_finding.line) + In({"", " 行"});
}

}  // namespace

std::string SentenceOf(const Finding& finding, Language language) {
  const SentenceEntry* entry = FindSentence(finding.code);
  if (entry == nullptr) return "finding " + std::to_string(static_cast<int>(finding.code));
  const Wording wording(finding, language);
  std::string sentence = wording.Fill(entry->text.In(language));
  if (finding.line == 0) return sentence;
  std::string where = wording.Where();
  constexpr Words kPause = {";", "；"};
  if (QuotesLine(finding.code)) {
    where += ' ' + Quoted(finding.excerpt);
    if (sentence.find(kPause.In(language)) == std::string::npos) {
      sentence += Words{"; correct this line", "；请改正此行"}.In(language);
    }
  }
  return where + Words{": ", "："}.In(language) + sentence;
}

const char* IdOf(std::int32_t code) {
  const SentenceEntry* entry = FindSentence(code);
  return entry == nullptr ? "nothing" : entry->id;
}

}  // namespace brenu
