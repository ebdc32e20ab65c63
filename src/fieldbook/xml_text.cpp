#include "fieldbook/xml_text.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "core/text_number.h"
#include "fieldbook/book_lines.h"

namespace brenu {

namespace {

// How the characters of a text are stored.
enum class Characters : std::uint8_t { kBytes, kLatin, kLittle16, kBig16 };

Characters CharactersOf(std::string_view text) {
  const bool hasLittleMark = text.starts_with("\xFF\xFE");
  const bool hasBigMark = text.starts_with("\xFE\xFF");
  if (hasLittleMark || text.substr(0, 2) == std::string_view("<\0", 2))
    return Characters::kLittle16;
  if (hasBigMark || text.substr(0, 2) == std::string_view("\0<", 2)) return Characters::kBig16;
  const std::string_view declaration = text.substr(0, text.find('>'));
  const bool isLatin = declaration.find("8859-1\"") != declaration.npos ||
                       declaration.find("latin1") != declaration.npos;
  return isLatin ? Characters::kLatin : Characters::kBytes;
}

std::ptrdiff_t Utf8Size(unsigned character) {
  return character < 0x80 ? 1 : character < 0x800 ? 2 : 3;
}

// The parser gives places in the text as UTF-8, without a byte order mark.
std::vector<std::ptrdiff_t> LineEndsOf(std::string_view text) {
  const Characters kind = CharactersOf(text);
  const bool isWide = kind == Characters::kLittle16 || kind == Characters::kBig16;
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF")) text.remove_prefix(2);
  std::vector<std::ptrdiff_t> ends;
  std::ptrdiff_t place = 0;
  const std::size_t step = isWide ? 2 : 1;
  for (std::size_t i = 0; i + step <= text.size(); i += step) {
    const unsigned first = static_cast<unsigned char>(text[i]);
    const unsigned second = isWide ? static_cast<unsigned char>(text[i + 1]) : 0;
    const unsigned character =
        kind == Characters::kBig16 ? first * 256 + second : second * 256 + first;
    if (character == '\n') ends.push_back(place);
    place += kind == Characters::kBytes ? 1 : Utf8Size(character);
  }
  return ends;
}

}  // namespace

XmlText::XmlText(std::string_view text, BookBuilder& book) : m_lineEnds(LineEndsOf(text)) {
  m_lastLine = static_cast<std::int32_t>(m_lineEnds.size()) + (text.ends_with('\n') ? 0 : 1);
  constexpr std::string_view kInFront(" \t\r\n\0\x02", 6);
  const bool isWide = CharactersOf(text) == Characters::kBig16;
  const std::size_t start = isWide ? 0 : std::min(text.find_first_not_of(kInFront), text.size());
  const pugi::xml_parse_result parsed =
      m_document.load_buffer(text.data() + start, text.size() - start);
  for (std::ptrdiff_t& end : m_lineEnds) end -= static_cast<std::ptrdiff_t>(start);
  m_isDamaged = !parsed;
  if (m_isDamaged) {
    book.StartLine(LineAt(parsed.offset));
    book.Doubt(BRENU_FIELD_BOOK_DAMAGED, {parsed.description()});
    return;
  }
  const std::size_t end = text.find('>', text.find(std::string("</") + Root().name()));
  const std::size_t behind = text.find_first_not_of(std::string_view(" \t\r\n\0\x1A>", 7), end);
  if (end == text.npos || behind == text.npos) return;
  const std::string_view before = text.substr(0, behind);
  book.StartLine(static_cast<std::int32_t>(std::count(before.begin(), before.end(), '\n')) + 1);
  book.LeaveOut(BRENU_RECORD_NOT_USED, {"what stands behind the XML"});
}

std::int32_t XmlText::LineAt(std::ptrdiff_t offset) const {
  const auto end = std::lower_bound(m_lineEnds.begin(), m_lineEnds.end(), offset);
  return static_cast<std::int32_t>(end - m_lineEnds.begin()) + 1;
}

std::string_view TextOf(const pugi::xml_node& node, const char* child) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const std::string_view text = node.child(child).text().get();
  const std::size_t start = text.find_first_not_of(kBlanks);
  if (start == text.npos) return {};
  return text.substr(start, text.find_last_not_of(kBlanks) - start + 1);
}

std::string_view AttributeOf(const pugi::xml_node& node, const char* name) {
  return Trimmed(node.attribute(name).value());
}

std::optional<double> XmlNumber(BookBuilder& book, std::string_view text, const char* what) {
  if (text.empty()) return std::nullopt;
  const ParsedDouble number = ParseWholeDouble(text);
  if (number.isWhole && std::isfinite(number.value)) return number.value;
  book.Doubt(BRENU_VALUE_NOT_READ, {what}, text);
  return std::nullopt;
}

}  // namespace brenu
